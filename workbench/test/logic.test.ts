// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { rebin } from '../src/bins';
import { choiceOf } from '../src/blind';
import { LatestPost } from '../src/client';
import { cleanWindow, dragWindow, expand, parseWindow } from '../src/greys';
import { findBinding, nameOf } from '../src/keyNames';
import { keyOf, replaceSpan, sectionLine } from '../src/profileText';
import { findTwin } from '../src/points';
import type { KeyValue, Point, Run } from '../src/protocol';
import { roundStep, sliderOf } from '../src/steps';
import { Gate, settle } from './until';

function key(more: Partial<KeyValue>): KeyValue {
  return {
    key: '00_K', base: 'K', type: 'number', text: null, fileText: null, value: 0, mark: '', line: null, default: '0', range: '',
    smallest: 0, largest: 1, shape: 'any', choices: null, hasEffect: true, meaning: '', look: '', ...more,
  };
}

test('a grey becomes an opaque pixel', () => {
  const pixels = new Uint32Array(3);
  expand(new Uint8Array([0, 18, 255]), pixels);
  assert.deepEqual([...pixels], [0xff000000, 0xff121212, 0xffffffff]);
});

test('a window is what the tool takes', () => {
  assert.deepEqual(parseWindow(' 5:90 '), { low: 5, high: 90 });
  for (const text of ['', '5', '5:', ':9', '9:5', '5:5', '0:65536', '-1:5', '0x1:5', '1.5:9']) assert.equal(parseWindow(text), null, text);
  assert.deepEqual(cleanWindow(-5, 70000), { low: 0, high: 65535 });
  assert.deepEqual(cleanWindow(65535, 65535), { low: 65534, high: 65535 });
  assert.deepEqual(dragWindow({ low: 100, high: 200 }, 0, 0, 4095), { low: 100, high: 200 });
  const wide = dragWindow({ low: 1000, high: 2000 }, 250, 0, 4095);
  assert.equal(wide.high - wide.low, Math.round(1500 + 500 * Math.E) - Math.round(1500 - 500 * Math.E));
});

test('a slider has about a hundred steps of a round size', () => {
  assert.equal(roundStep(1), 0.01);
  assert.equal(roundStep(1.8), 0.02);
  assert.equal(roundStep(4095), 50);
  const slope = sliderOf(key({ smallest: 1.2, largest: 3 }))!;
  assert.equal(slope.count, 90);
  assert.equal(slope.toValue(0), 1.2);
  assert.equal(slope.toValue(5), 1.3);
  assert.equal(slope.toValue(90), 3);
  assert.equal(Math.round(slope.toPosition(1.5)), 15);
  assert.equal(slope.toPosition(99), 90);
});

test('whole numbers stay whole, odd ones odd, powers powers', () => {
  const odd = sliderOf(key({ type: 'integer', shape: 'odd', smallest: 4, largest: 15 }))!;
  assert.deepEqual(Array.from({ length: odd.count + 1 }, (_, i) => odd.toValue(i)), [5, 7, 9, 11, 13, 15]);
  const power = sliderOf(key({ type: 'integer', shape: 'power-of-two', smallest: 64, largest: 256 }))!;
  assert.deepEqual([0, 1, 2].map((i) => power.toValue(i)), [64, 128, 256]);
  assert.equal(power.count, 2);
  assert.equal(power.toPosition(128), 1);
  assert.equal(sliderOf(key({ type: 'integer', smallest: 1, largest: 8000 }))!.toValue(1), 101);
});

test('open ranges and texts have no slider', () => {
  assert.equal(sliderOf(key({ largest: null })), null);
  assert.equal(sliderOf(key({ smallest: null })), null);
  assert.equal(sliderOf(key({ type: 'text' })), null);
  assert.equal(sliderOf(key({ smallest: 1, largest: 1 })), null);
});

test('bins have shares of a level whatever their width', () => {
  assert.deepEqual(rebin({ first: 1, counts: [2, 0, 6], total: 8 }, 3, 100), { width: 1, shares: [0, 25, 0, 75] });
  assert.deepEqual(rebin({ first: 1, counts: [2, 0, 6], total: 8 }, 3, 2), { width: 2, shares: [12.5, 37.5] });
  assert.deepEqual(rebin({ first: 9, counts: [8], total: 8 }, 3, 4), { width: 1, shares: [0, 0, 0, 100] });
});

test('a line tells its key', () => {
  assert.equal(keyOf('04_MAX_SLOPE = 1.5'), 'MAX_SLOPE');
  assert.equal(keyOf('PROCMODE'), 'PROCMODE');
  for (const line of ['', '; 04_A=1', ' [General]']) assert.equal(keyOf(line), '', line);
});

test('a text is replaced where it differs', () => {
  assert.equal(replaceSpan('abc', 'abc'), null);
  assert.deepEqual(replaceSpan('abc', 'axc'), { from: 1, to: 2, insert: 'x' });
  assert.deepEqual(replaceSpan('aa', 'aaa'), { from: 2, to: 2, insert: 'a' });
  assert.deepEqual(replaceSpan('abab', 'ab'), { from: 2, to: 4, insert: '' });
});

test('a blind choice counts for the run that stood there', () => {
  assert.deepEqual([choiceOf('left', false), choiceOf('right', false), choiceOf('left', true), choiceOf('right', true), choiceOf('same', true)],
    ['a', 'b', 'b', 'a', 'same']);
});

test('of many bodies the first and the last are sent, one at a time', async () => {
  const sent: object[] = [];
  const answers: Gate[] = [];
  const post = new LatestPost('x', assert.fail, async (_, body) => {
    sent.push(body);
    answers.push(new Gate());
    await answers.at(-1)!.passed;
  }, async () => {});
  let idle = 0;
  post.onIdle = () => ++idle;
  for (let i = 0; i < 5; ++i) post.push({ i });
  await settle();
  assert.deepEqual(sent, [{ i: 0 }]);
  answers[0]!.open();
  await settle();
  assert.deepEqual(sent, [{ i: 0 }, { i: 4 }]);
  assert.equal(idle, 0);
  answers[1]!.open();
  await settle();
  assert.equal(idle, 1);
  post.push({ i: 9 });
  assert.deepEqual(sent.at(-1), { i: 9 });
});

test('two of one thing are never sent within the least gap', async () => {
  const sent: object[] = [];
  const gaps: Gate[] = [];
  const post = new LatestPost('x', assert.fail, async (_, body) => void sent.push(body), () => {
    gaps.push(new Gate());
    return gaps.at(-1)!.passed;
  });
  for (let i = 0; i < 3; ++i) {
    post.push({ i });
    await settle();
  }
  assert.deepEqual(sent, [{ i: 0 }]);
  gaps[0]!.open();
  await settle();
  assert.deepEqual(sent, [{ i: 0 }, { i: 2 }]);
  assert.equal(gaps.length, 2);
});

test('a body that is refused is told, and the next one goes all the same', async () => {
  const told: unknown[] = [];
  const sent: object[] = [];
  const post = new LatestPost('x', (error) => told.push(error), async (_, body) => {
    sent.push(body);
    if (sent.length === 1) throw new Error('no');
  }, async () => {});
  post.push({ i: 1 });
  post.push({ i: 2 });
  await settle();
  assert.equal(told.length, 1);
  assert.deepEqual(sent, [{ i: 1 }, { i: 2 }]);
});

test('a key is named with Ctrl, and with Shift for letters alone', () => {
  const name = (key: string, more = {}): string =>
    nameOf({ key, ctrlKey: false, metaKey: false, shiftKey: false, altKey: false, ...more });
  assert.equal(name('a'), 'a');
  assert.equal(name('U', { shiftKey: true }), 'Shift+U');
  assert.equal(name('?', { shiftKey: true }), '?');
  assert.equal(name('s', { ctrlKey: true }), 'Ctrl+s');
  assert.equal(name('s', { metaKey: true }), 'Ctrl+s');
  assert.equal(name('1', { altKey: true }), 'Alt+1');
});

test('a plus needs no Shift', () => {
  const keys = [{ key: 'a' }, { key: '+' }];
  assert.equal(findBinding(keys, '='), keys[1]);
  assert.equal(findBinding(keys, 'a'), keys[0]);
  assert.equal(findBinding(keys, 'b'), undefined);
});

const pointOf = (point: number, kind: string, title: string, place: number | null): Point => ({
  point, kind, title, place, ms: null, changed: null, hasFrame: true, hasCurve: false, least: 0, median: 0, greatest: 0,
});
const runOf = (...points: Point[]): Run => ({ id: 1, state: 'complete', points }) as Run;

test('a stage is compared with the same stage only', () => {
  const clahe = runOf(pointOf(0, 'frame', 'frame', null), pointOf(1, 'stage', 'CLAHE', 6), pointOf(2, 'result', 'result', null));
  const off = runOf(pointOf(0, 'frame', 'frame', null), pointOf(1, 'result', 'result', null));
  const other = runOf(pointOf(0, 'frame', 'frame', null), pointOf(1, 'stage', 'Median', 6), pointOf(2, 'result', 'result', null));
  assert.equal(findTwin(clahe, clahe, { kind: 'place', place: 6 })?.point, 1);
  assert.equal(findTwin(off, clahe, { kind: 'place', place: 6 }), null);
  assert.equal(findTwin(other, clahe, { kind: 'place', place: 6 }), null);
  assert.equal(findTwin(off, clahe, { kind: 'result' })?.point, 1);
});

test('a section begins at the line of its name', () => {
  const text = '; [B]\n[A]\nK=[B]\n [ b ]\n[B]\n';
  assert.equal(sectionLine(text, 'A'), 2);
  assert.equal(sectionLine(text, 'B'), 4);
  assert.equal(sectionLine(text, 'C'), null);
});
