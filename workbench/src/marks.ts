// SPDX-License-Identifier: Apache-2.0
//
// What is measured on the picture: probes, one line, one area. They stay where they are on the frame.
import { signal } from '@preact/signals';
import { getJson } from './client';
import type { Mark } from './picture';
import type { Run } from './protocol';
import type { Numbers } from './store';

export interface Probe {
  id: number;
  x: number; // of the pixel
  y: number;
}

export const probes = signal<Probe[]>([]);
export const line = signal<{ x0: number; y0: number; x1: number; y1: number } | null>(null);
export const area = signal<{ x: number; y: number; w: number; h: number } | null>(null);
export const hover = signal<{ x: number; y: number; side: 'left' | 'right' } | null>(null); // the pixel, and whose

let lastProbe = 0;

export function addProbe(x: number, y: number): void {
  probes.value = [...probes.value, { id: ++lastProbe, x: Math.floor(x), y: Math.floor(y) }];
}

export function removeProbe(id: number): void {
  probes.value = probes.value.filter((each) => each.id !== id);
}

export function marksOf(): Mark[] {
  const marks: Mark[] = probes.value.map((probe) => ({
    kind: 'probe',
    label: String(probe.id),
    x0: probe.x + 0.5,
    y0: probe.y + 0.5,
    x1: probe.x + 0.5,
    y1: probe.y + 0.5,
  }));
  const own = line.value;
  if (own) marks.push({ kind: 'line', label: 'line', ...own });
  const part = area.value;
  if (part) marks.push({ kind: 'area', label: 'area', x0: part.x, y0: part.y, x1: part.x + part.w, y1: part.y + part.h });
  return marks;
}

// The numbers that whoever set a mark wants to see.
export function numbersOf(kind: Mark['kind'], open: Numbers): Numbers {
  if (kind === 'probe') return 'probes';
  if (kind === 'line') return 'line';
  return open === 'edge' ? 'edge' : 'noise';
}

export async function probe(run: Run, x: number, y: number, signal?: AbortSignal): Promise<(number | null)[]> {
  return (await getJson<{ values: (number | null)[] }>(`api/runs/${run.id}/probe`, { x, y }, signal)).values;
}

// The area between two points, as whole pixels within the frame; null for less than one.
export function areaBetween(
  one: { x: number; y: number },
  other: { x: number; y: number },
  frame: { width: number; height: number },
): { x: number; y: number; w: number; h: number } | null {
  const x = Math.max(0, Math.floor(Math.min(one.x, other.x)));
  const y = Math.max(0, Math.floor(Math.min(one.y, other.y)));
  const w = Math.min(frame.width, Math.ceil(Math.max(one.x, other.x))) - x;
  const h = Math.min(frame.height, Math.ceil(Math.max(one.y, other.y))) - y;
  return w > 0 && h > 0 ? { x, y, w, h } : null;
}
