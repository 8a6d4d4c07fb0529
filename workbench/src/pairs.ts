// SPDX-License-Identifier: Apache-2.0
import type { Source } from './layer';
import type { Comparison, PointPair, Run } from './protocol';

// In words, what a comparison found.
export function verdict(made: Comparison): string {
  if (made.state === 'running') return `${made.done} of ${made.total} runs made`;
  if (made.state === 'cancelled') return 'Stopped.';
  if (made.state === 'failed') return made.error ? [made.error.what, made.error.remedy].filter(Boolean).join('. ') : 'Failed.';
  const first = made.firstDifference === null ? null : (made.points[made.firstDifference] ?? null);
  if (!first) return 'Both give the same pixels after every stage.';
  const last = made.points.at(-1);
  const end = last && last !== first && last.equal ? ' The result is the same all the same.' : '';
  return `They part at ${first.title}: ${differenceWords(first, null)}.${end}`;
}

// `pixels` of the frame give the share; null: unknown.
export function differenceWords(pair: PointPair, pixels: number | null): string {
  if (pair.leftPoint === null) return 'only on the right';
  if (pair.rightPoint === null) return 'only on the left';
  if (pair.equal) return pair.moved ? 'equal, in another order' : 'equal';
  if (pair.differing === null) return pair.shown === false ? 'no frame of one size on both sides' : 'different';
  const share = pixels ? ` (${((100 * pair.differing) / pixels).toFixed(1)} %)` : '';
  const count = pair.differing === 1 ? '1 pixel differs' : `${pair.differing.toLocaleString('en-GB')} pixels differ`;
  return `${count}${share}, by up to ${pair.largest} ${pair.largest === 1 ? 'level' : 'levels'}`;
}

// What is looked at to begin with: where they part, else the result.
export function firstLook(made: Comparison): number {
  return made.firstDifference ?? Math.max(0, made.points.length - 1);
}

function sourceOf(run: Run | null, point: number | null): Source | null {
  const own = point === null ? null : (run?.points[point] ?? null);
  if (!run || !own?.hasFrame || run.width === null || run.height === null) return null;
  return {
    path: `api/runs/${run.id}/points/${point}/view`,
    fields: {},
    frame: { width: run.width, height: run.height },
  };
}

export function sourcesOf(
  pair: PointPair,
  left: Run | null,
  right: Run | null,
  gain: number,
): { left: Source | null; right: Source | null; difference: Source | null } {
  const a = sourceOf(left, pair.leftPoint);
  const b = sourceOf(right, pair.rightPoint);
  const fits = a && b && a.frame.width === b.frame.width && a.frame.height === b.frame.height;
  const difference: Source | null = fits
    ? {
        path: 'api/difference',
        fields: { a: `${left!.id}/${pair.leftPoint}`, b: `${right!.id}/${pair.rightPoint}`, gain },
        frame: b.frame,
      }
    : null;
  return { left: a, right: b, difference };
}
