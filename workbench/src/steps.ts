// SPDX-License-Identifier: Apache-2.0
import type { KeyValue } from './protocol';

// How a slider walks through the values of a key.
export interface Slider {
  count: number; // of steps; a position is 0 to count
  toValue(position: number): number;
  toPosition(value: number): number;
}

function isWhole(key: KeyValue): boolean {
  return key.type === 'integer' || key.type === 'cut-number';
}

// About a hundred steps of a round size: 1, 2 or 5 times a power of ten.
export function roundStep(range: number): number {
  const rough = range / 100;
  const power = 10 ** Math.floor(Math.log10(rough));
  const share = rough / power;
  return (share <= 1 ? 1 : share <= 2 ? 2 : share <= 5 ? 5 : 10) * power;
}

// Null for a key whose range is open, or that is no number.
export function sliderOf(key: KeyValue): Slider | null {
  if (key.type === 'text' || key.smallest === null || key.largest === null || !(key.smallest < key.largest)) return null;
  const least = key.smallest;
  const most = key.largest;
  if (key.shape === 'power-of-two') {
    const first = Math.ceil(Math.log2(Math.max(1, least)));
    const last = Math.floor(Math.log2(most));
    return {
      count: last - first,
      toValue: (position) => 2 ** (first + Math.round(position)),
      toPosition: (value) => Math.min(last, Math.max(first, Math.log2(Math.max(1, value)))) - first,
    };
  }
  let step = roundStep(most - least);
  let first = least;
  if (isWhole(key)) {
    step = Math.max(1, Math.round(step));
    if (key.shape === 'odd' || key.shape === 'even') {
      step = Math.max(2, 2 * Math.round(step / 2));
      if (Math.abs(first % 2) !== (key.shape === 'odd' ? 1 : 0)) first += 1;
    }
  }
  const count = Math.floor((most - first) / step + 1e-9);
  // As many decimals as the steps have: 0.1 + 0.2 is shown as 0.3.
  const decimals = Math.max(0, -Math.floor(Math.log10(step) + 1e-9), decimalsOf(first));
  return {
    count,
    toValue: (position) => Number((first + Math.round(position) * step).toFixed(Math.min(decimals, 12))),
    toPosition: (value) => Math.min(count, Math.max(0, (value - first) / step)),
  };
}

function decimalsOf(value: number): number {
  const text = String(value);
  const point = text.indexOf('.');
  return point < 0 || text.includes('e') ? 0 : text.length - point - 1;
}

// A number as a profile has it.
export function numberText(value: number): string {
  return String(value);
}
