// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { fit, keepInside, nextScale, pan, toFrame, toScreen, visiblePart, zoomAbout } from '../src/viewport';

const frame = { width: 100, height: 50 };
const screen = { width: 200, height: 200 };

test('a frame is fitted by its longer side', () => {
  assert.deepEqual(fit(frame, screen), { cx: 50, cy: 25, scale: 2 });
  assert.deepEqual(fit({ width: 10, height: 400 }, screen), { cx: 5, cy: 200, scale: 0.5 });
});

test('frame and screen are the inverse of each other', () => {
  const view = { cx: 30, cy: 20, scale: 4 };
  const at = toFrame(view, screen, 60, 140);
  assert.deepEqual(at, { x: 20, y: 30 });
  const rect = toScreen(view, screen, { x: at.x, y: at.y, w: 1, h: 2 });
  assert.deepEqual(rect, { x: 60, y: 140, w: 4, h: 8 });
});

test('whole scales put pixels on whole pixels of the screen', () => {
  assert.equal(toScreen({ cx: 30.3, cy: 20, scale: 1 }, screen, { x: 0, y: 0, w: 1, h: 1 }).x, 70);
  assert.equal(toScreen({ cx: 30.3, cy: 20, scale: 1.5 }, screen, { x: 0, y: 0, w: 1, h: 1 }).x, 100 - 30.3 * 1.5);
});

test('the pixel under the pointer is the one that is drawn there', () => {
  for (const cx of [30, 30.3, 30.5, 30.7]) {
    const view = { cx, cy: 20, scale: 1 };
    const left = toScreen(view, screen, { x: 7, y: 0, w: 1, h: 1 }).x;
    assert.equal(toFrame(view, screen, left, 100).x, 7, String(cx));
  }
});

test('what is under the pointer stays there when it is zoomed', () => {
  const view = { cx: 50, cy: 25, scale: 2 };
  const before = toFrame(view, screen, 31, 77);
  const after = toFrame(zoomAbout(view, screen, 31, 77, 3), screen, 31, 77);
  assert.ok(Math.abs(after.x - before.x) < 1e-9 && Math.abs(after.y - before.y) < 1e-9);
  assert.equal(zoomAbout(view, screen, 0, 0, 1e9).scale, 64);
  assert.equal(zoomAbout(view, screen, 0, 0, 1e-9).scale, 1 / 32);
});

test('a pan moves against the drag, and the middle stays within the frame', () => {
  assert.deepEqual(pan({ cx: 50, cy: 25, scale: 2 }, 10, -4), { cx: 45, cy: 27, scale: 2 });
  assert.deepEqual(keepInside({ cx: -5, cy: 70, scale: 1 }, frame), { cx: 0, cy: 50, scale: 1 });
});

test('the visible part is asked for at the size of the screen, never beyond the pixels of the frame', () => {
  assert.deepEqual(visiblePart({ cx: 50, cy: 25, scale: 2 }, screen, frame), { x: 0, y: 0, w: 100, h: 50, pw: 100, ph: 50 });
  assert.deepEqual(visiblePart({ cx: 50, cy: 25, scale: 8 }, screen, frame), { x: 37, y: 12, w: 26, h: 26, pw: 26, ph: 26 });
  const large = { width: 2000, height: 1000 };
  assert.deepEqual(visiblePart({ cx: 1000, cy: 500, scale: 0.1 }, screen, large), { x: 0, y: 0, w: 2000, h: 1000, pw: 200, ph: 100 });
  assert.equal(visiblePart({ cx: 500, cy: 25, scale: 8 }, screen, frame), null);
});

test('the usual scales are halves and doubles of 100 %', () => {
  assert.equal(nextScale(0.3, 1), 0.5);
  assert.equal(nextScale(0.5, 1), 1);
  assert.equal(nextScale(1, -1), 0.5);
  assert.equal(nextScale(0.7, -1), 0.5);
  assert.equal(nextScale(64, 1), 64);
});
