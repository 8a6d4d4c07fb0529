// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { areaBetween } from '../src/marks';
import { differenceWords, firstLook, sourcesOf, verdict } from '../src/pairs';
import type { Comparison, PointPair, Run } from '../src/protocol';
import { reportName, reportRuns } from '../src/reportName';

const kEqual: PointPair = {
  title: 'input', leftPoint: 0, rightPoint: 0, moved: false, shown: true, equal: true, differing: 0, largest: 0,
};
const kOther: PointPair = { ...kEqual, title: 'CLAHE', leftPoint: 1, rightPoint: 2, equal: false, differing: 1500, largest: 1 };

function comparison(more: Partial<Comparison>): Comparison {
  return {
    id: 1, kind: 'compare', done: 2, total: 2, state: 'done', error: null, left: 'l', right: 'r', keys: [], points: [],
    firstDifference: null, leftRun: 5, rightRun: 6, ...more,
  };
}

function run(id: number, more: Partial<Run> = {}): Run {
  const point = {
    kind: 'stage' as const, title: '', place: null, ms: null, changed: null, hasFrame: true, hasCurve: false, least: 0, median: 0,
    greatest: 0,
  };
  return {
    id, state: 'complete', frame: 0, section: 'S', change: '', when: '', before: null, elapsedMs: 1, code: 0, sha256: '', width: 4,
    height: 3, isLow: null, off: [], points: [{ ...point, point: 0 }, { ...point, point: 1 }, { ...point, point: 2 }], log: '',
    findings: [], error: null, aside: true, ...more,
  };
}

test('a comparison says where both sides part', () => {
  assert.equal(verdict(comparison({ points: [kEqual] })), 'Both give the same pixels after every stage.');
  assert.equal(
    verdict(comparison({ points: [kEqual, kOther], firstDifference: 1 })),
    'They part at CLAHE: 1,500 pixels differ, by up to 1 level.',
  );
  assert.equal(
    verdict(comparison({ points: [kOther, { ...kEqual, title: 'result' }], firstDifference: 0 })),
    'They part at CLAHE: 1,500 pixels differ, by up to 1 level. The result is the same all the same.',
  );
});

test('a comparison that has no end yet, or a bad one, says so', () => {
  assert.equal(verdict(comparison({ state: 'running', done: 1 })), '1 of 2 runs made');
  assert.equal(verdict(comparison({ state: 'cancelled' })), 'Stopped.');
  assert.equal(verdict(comparison({ state: 'failed', error: { where: '', what: 'No', remedy: 'Try' } })), 'No. Try');
});

test('a pair of points is told in words', () => {
  assert.equal(differenceWords(kEqual, 100), 'equal');
  assert.equal(differenceWords({ ...kEqual, moved: true }, 100), 'equal, in another order');
  assert.equal(differenceWords({ ...kEqual, leftPoint: null }, 100), 'only on the right');
  assert.equal(differenceWords({ ...kEqual, rightPoint: null }, 100), 'only on the left');
  assert.equal(differenceWords({ ...kOther, differing: 1, largest: 7 }, 4), '1 pixel differs (25.0 %), by up to 7 levels');
  assert.equal(differenceWords({ ...kOther, differing: null, shown: false }, 4), 'no frame of one size on both sides');
});

test('what is looked at first is where they part, else the result', () => {
  assert.equal(firstLook(comparison({ points: [kEqual, kOther, kOther], firstDifference: 1 })), 1);
  assert.equal(firstLook(comparison({ points: [kEqual, kEqual] })), 1);
  assert.equal(firstLook(comparison({})), 0);
});

test('both sides and their difference are asked for by their own runs', () => {
  const sources = sourcesOf(kOther, run(5), run(6), 8);
  assert.equal(sources.left?.path, 'api/runs/5/points/1/view');
  assert.equal(sources.right?.path, 'api/runs/6/points/2/view');
  assert.deepEqual(sources.difference, {
    path: 'api/difference', fields: { a: '5/1', b: '6/2', gain: 8 }, frame: { width: 4, height: 3 },
  });
});

test('frames of two sizes, and a side without a frame, have no difference', () => {
  assert.equal(sourcesOf(kOther, run(5), run(6, { width: 5 }), 8).difference, null);
  const half = sourcesOf({ ...kOther, leftPoint: null }, run(5), run(6), 8);
  assert.equal(half.left, null);
  assert.notEqual(half.right, null);
  assert.equal(half.difference, null);
  assert.equal(sourcesOf(kOther, null, null, 8).right, null);
});

test('a report is named by its profile and its runs, oldest first', () => {
  assert.equal(reportName('dental.ini', [3, 14]), 'dental-runs-3-14.html');
  assert.equal(reportName('a:b?.v2.ini', [1]), 'a_b_.v2-runs-1.html');
  assert.equal(reportName('.ini', [1]), 'workbench-runs-1.html');
  assert.deepEqual(reportRuns(new Set([14, 3, 9]), [14, 12, 3]), [3, 14]);
  assert.deepEqual(reportRuns(new Set(), [14]), []);
});

test('an area is whole pixels within the frame, whichever way it was drawn', () => {
  const frame = { width: 10, height: 8 };
  assert.deepEqual(areaBetween({ x: 5.2, y: 6.5 }, { x: 2.9, y: 1.1 }, frame), { x: 2, y: 1, w: 4, h: 6 });
  assert.deepEqual(areaBetween({ x: -5, y: -5 }, { x: 50, y: 50 }, frame), { x: 0, y: 0, w: 10, h: 8 });
  assert.equal(areaBetween({ x: 11, y: 1 }, { x: 15, y: 3 }, frame), null);
  assert.equal(areaBetween({ x: 3, y: 3 }, { x: 3, y: 3 }, frame), null);
});
