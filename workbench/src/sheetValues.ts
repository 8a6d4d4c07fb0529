// SPDX-License-Identifier: Apache-2.0
//
// What a sheet is made of, and in which order its cells stand.
import type { Cell, KeyValue } from './protocol';
import { numberText, sliderOf } from './steps';

export const kMostValues = 100;

function decimalsOf(text: string): number {
  return text.includes('.') ? text.trim().length - text.trim().indexOf('.') - 1 : 0;
}

// "1,1.5,2" or FROM:TO:STEP, as the tool's own sweep takes them; a reason in words for anything else.
export function parseValues(text: string): { values: string[]; error: string } {
  const none = (error: string): { values: string[]; error: string } => ({ values: [], error });
  const parts = text.split(':');
  if (parts.length === 1) {
    const values = text
      .split(',')
      .map((each) => each.trim())
      .filter((each) => each !== '');
    if (values.length === 0) return none('Give at least one value.');
    return values.length > kMostValues ? none(`A sheet of more than ${kMostValues} values is more than one can look at.`) : { values, error: '' };
  }
  const [from, to, step] = parts.map(Number);
  if (parts.length !== 3 || parts.some((each) => each.trim() === '') || ![from, to, step].every(Number.isFinite))
    return none('Steps are written FROM:TO:STEP, such as 1:3:0.5.');
  if (step === 0 || (to! - from!) / step! < 0) return none('The step does not lead from the first value to the last one.');
  const count = Math.floor((to! - from!) / step! + 1e-9) + 1;
  if (count > kMostValues) return none(`A sheet of more than ${kMostValues} values is more than one can look at.`);
  const decimals = Math.max(decimalsOf(parts[0]!), decimalsOf(parts[2]!));
  return { values: Array.from({ length: count }, (_, index) => (from! + index * step!).toFixed(decimals)), error: '' };
}

const kSuggested = 6;

// Values to begin with: all choices, or some over the slider's range, with what the key has now among them.
export function suggestValues(key: KeyValue): string {
  const now = key.text ?? String(key.value);
  if (key.choices && key.choices.length > 0) return key.choices.join(',');
  const slider = sliderOf(key);
  if (!slider) return now;
  const count = Math.min(kSuggested, slider.count + 1);
  const values = Array.from({ length: count }, (_, index) =>
    slider.toValue(count === 1 ? 0 : Math.round((index * slider.count) / (count - 1))),
  );
  const own = Number(now);
  if (Number.isFinite(own) && now.trim() !== '' && !values.includes(own)) values.push(own);
  return values
    .sort((one, other) => one - other)
    .map(numberText)
    .join(',');
}

export type CellOrder = 'given' | 'noise' | 'median' | 'changed';

// How much more grain the result has than the frame had, as a factor; null where one is not known, or the frame has none.
export function noiseRatio(cell: Cell): number | null {
  const before = cell.before?.noise ?? null;
  const after = cell.after?.noise ?? null;
  return before === null || after === null || before === 0 ? null : after / before;
}

function rankOf(cell: Cell, order: CellOrder): number | null {
  if (order === 'noise') return cell.after?.noise ?? null;
  if (order === 'median') return cell.after?.median ?? null;
  return order === 'changed' ? cell.changedFromFirst : cell.cell;
}

// The greatest first; cells without a figure stand behind, and cells of one figure in their own order.
export function orderCells(cells: readonly Cell[], order: CellOrder): Cell[] {
  if (order === 'given') return [...cells];
  return [...cells].sort((one, other) => {
    const left = rankOf(one, order);
    const right = rankOf(other, order);
    if (left === right) return one.cell - other.cell;
    if (left === null) return 1;
    return right === null ? -1 : right - left;
  });
}

export const kCellHead = ['cell', 'median before', 'median after', 'noise before', 'noise after', 'changed from first'];

export function cellRow(cell: Cell): (string | number | null)[] {
  return [
    cell.label,
    cell.before?.median ?? null,
    cell.after?.median ?? null,
    cell.before?.noise ?? null,
    cell.after?.noise ?? null,
    cell.changedFromFirst,
  ];
}
