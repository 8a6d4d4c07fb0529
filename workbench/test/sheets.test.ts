// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Cell, KeyValue } from '../src/protocol';
import { cellRow, kCellHead, noiseRatio, orderCells, parseValues, suggestValues } from '../src/sheetValues';
import { kWhole, panSheet, slideSheet, stepSheet, viewportOf, zoomSheet } from '../src/sheetView';
import { tableText } from '../src/table';

function key(more: Partial<KeyValue>): KeyValue {
  return {
    key: '00_K', base: 'K', type: 'number', text: null, fileText: null, value: 0, mark: '', line: null, default: '0', range: '',
    smallest: null, largest: null, shape: 'any', choices: null, hasEffect: true, meaning: '', look: '', ...more,
  };
}

function cell(index: number, more: Partial<Cell> = {}): Cell {
  return {
    cell: index, label: `K=${index}`, state: 'done', width: 4, height: 3, before: null, after: null, changedFromFirst: null,
    error: null, ...more,
  };
}

test('values stand with commas between them, as they were typed', () => {
  assert.deepEqual(parseValues(' 1, 1.50 ,,2 '), { values: ['1', '1.50', '2'], error: '' });
  assert.deepEqual(parseValues('7').values, ['7']);
});

test('steps lead from the first value to the last, with the decimals they were written with', () => {
  assert.deepEqual(parseValues('1:2:0.25').values, ['1.00', '1.25', '1.50', '1.75', '2.00']);
  assert.deepEqual(parseValues('3:1:-1').values, ['3', '2', '1']);
  assert.deepEqual(parseValues('0:0.3:0.1').values, ['0.0', '0.1', '0.2', '0.3']);
  assert.deepEqual(parseValues('1:2:0.4').values, ['1.0', '1.4', '1.8']);
  assert.deepEqual(parseValues('-2:2:2').values, ['-2', '0', '2']);
});

test('what is no list of values says why', () => {
  for (const [text, words] of [
    ['', /at least one/],
    [' , ', /at least one/],
    ['1:2', /FROM:TO:STEP/],
    ['1:2:3:4', /FROM:TO:STEP/],
    ['1::1', /FROM:TO:STEP/],
    ['a:2:1', /FROM:TO:STEP/],
    ['1:2:0', /does not lead/],
    ['1:2:-1', /does not lead/],
    ['0:1000:1', /more than 100/],
    [Array.from({ length: 101 }, (_, i) => i).join(','), /more than 100/],
  ] as const) {
    const { values, error } = parseValues(text);
    assert.deepEqual(values, [], text);
    assert.match(error, words, text);
  }
});

test('a hundred values are a sheet', () => {
  assert.equal(parseValues('1:100:1').values.length, 100);
});

test('values are suggested over the range, with what the key has among them', () => {
  assert.equal(suggestValues(key({ smallest: 0, largest: 10, text: '3', type: 'integer' })), '0,2,3,4,6,8,10');
  assert.equal(suggestValues(key({ smallest: 0, largest: 10, text: '4', type: 'integer' })), '0,2,4,6,8,10');
  assert.equal(suggestValues(key({ smallest: 64, largest: 256, shape: 'power-of-two', type: 'integer', text: '64' })), '64,128,256');
  assert.equal(suggestValues(key({ choices: [0, 1, 2], text: '1' })), '0,1,2');
  assert.equal(suggestValues(key({ text: '9' })), '9');
  assert.equal(suggestValues(key({ type: 'text', text: 'a name' })), 'a name');
  assert.equal(suggestValues(key({ smallest: 0, largest: 10, text: '', type: 'integer' })), '0,2,4,6,8,10');
});

test('cells are ordered by a figure, the greatest first, those without one behind', () => {
  const cells = [
    cell(0, { after: { median: 10, noise: 2 } }),
    cell(1),
    cell(2, { after: { median: 30, noise: 5 }, changedFromFirst: 0.5 }),
    cell(3, { after: { median: 20, noise: 5 }, changedFromFirst: 0.75 }),
  ];
  const numbers = (order: Parameters<typeof orderCells>[1]): number[] => orderCells(cells, order).map((each) => each.cell);
  assert.deepEqual(numbers('given'), [0, 1, 2, 3]);
  assert.deepEqual(numbers('noise'), [2, 3, 0, 1]);
  assert.deepEqual(numbers('median'), [2, 3, 0, 1]);
  assert.deepEqual(numbers('changed'), [3, 2, 0, 1]);
  assert.deepEqual(cells.map((each) => each.cell), [0, 1, 2, 3]);
});

test('noise is compared where both sides have it', () => {
  assert.equal(noiseRatio(cell(0, { before: { median: 1, noise: 20 }, after: { median: 1, noise: 30 } })), 1.5);
  assert.equal(noiseRatio(cell(0, { before: { median: 1, noise: 0 }, after: { median: 1, noise: 30 } })), null);
  assert.equal(noiseRatio(cell(0, { before: { median: 1, noise: null }, after: { median: 1, noise: 30 } })), null);
  assert.equal(noiseRatio(cell(0)), null);
});

test('a table has a field for each heading, and nothing where nothing is known', () => {
  const row = cellRow(cell(1, { after: { median: 7, noise: null } }));
  assert.equal(row.length, kCellHead.length);
  assert.equal(tableText(['a', 'b', 'c', 'd', 'e', 'f'], [row]), 'a\tb\tc\td\te\tf\nK=1\t\t7\t\t\t\n');
});

const kScreen = { width: 100, height: 80 };
const kFrame = { width: 400, height: 200 };

test('whole frames fit their cells, whatever their size', () => {
  assert.deepEqual(viewportOf(kWhole, kFrame, kScreen), { cx: 200, cy: 100, scale: 0.25 });
  assert.deepEqual(viewportOf(kWhole, { width: 50, height: 80 }, kScreen), { cx: 25, cy: 40, scale: 1 });
});

test('a part of the picture is the same part in a frame of another size', () => {
  const view = { u: 0.25, v: 0.5, scale: 2 };
  assert.deepEqual(viewportOf(view, kFrame, kScreen), { cx: 100, cy: 100, scale: 2 });
  assert.deepEqual(viewportOf(view, { width: 40, height: 80 }, kScreen), { cx: 10, cy: 40, scale: 2 });
});

test('the point under the pointer stays there when all cells are zoomed', () => {
  // (75, 40) shows the frame's (300, 100) at a quarter; at a half it must lie 25 / 0.5 = 50 right of the middle.
  assert.deepEqual(zoomSheet(kWhole, kFrame, kScreen, 75, 40, 2), { u: 250 / 400, v: 0.5, scale: 0.5 });
});

test('what is zoomed out to the whole frame is the whole frame', () => {
  assert.deepEqual(zoomSheet({ u: 0.1, v: 0.9, scale: 0.5 }, kFrame, kScreen, 0, 0, 0.5), kWhole);
});

test('a drag moves all cells by pixels of the one it is in; whole frames stay', () => {
  assert.deepEqual(panSheet({ u: 0.5, v: 0.5, scale: 2 }, kFrame, kScreen, 40, -20), { u: 0.45, v: 0.55, scale: 2 });
  assert.deepEqual(panSheet({ u: 0, v: 1, scale: 2 }, kFrame, kScreen, 40, -20), { u: 0, v: 1, scale: 2 });
  assert.deepEqual(panSheet(kWhole, kFrame, kScreen, 40, -20), kWhole);
  assert.deepEqual(slideSheet({ u: 0.5, v: 0.5, scale: 2 }, 40, -20, kFrame), { u: 0.45, v: 0.55, scale: 2 });
  assert.deepEqual(slideSheet({ u: 0, v: 1, scale: 2 }, 40, -20, kFrame), { u: 0, v: 1, scale: 2 });
  assert.deepEqual(slideSheet(kWhole, 40, -20, kFrame), kWhole);
});

test('keys step by halves and doubles, from the whole frames to 100 %', () => {
  assert.equal(stepSheet(kWhole, 1).scale, 1);
  assert.equal(stepSheet(kWhole, -1).scale, 0.5);
  assert.equal(stepSheet({ u: 0.5, v: 0.5, scale: 1 }, 1).scale, 2);
  assert.equal(stepSheet({ u: 0.5, v: 0.5, scale: 0.3 }, -1).scale, 0.25);
});
