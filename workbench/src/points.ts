// SPDX-License-Identifier: Apache-2.0
//
// Which point of a run is looked at.
import type { Point, Run } from './protocol';

// What is looked at: the frame as it was read, a place of the run, or the result. A place stays chosen from run to run.
export type Chosen = { kind: 'frame' } | { kind: 'result' } | { kind: 'place'; place: number } | { kind: 'other'; of: string };

export function chosenOf(point: Point): Chosen {
  if (point.kind === 'result') return { kind: 'result' };
  if (point.kind === 'stage' && point.place !== null) return { kind: 'place', place: point.place };
  return { kind: 'other', of: point.kind };
}

// The point of a run that is looked at, or the nearest before it that shows a frame.
export function findPoint(run: Run, wish: Chosen): Point | null {
  const index = run.points.findIndex((point) => {
    if (wish.kind === 'result') return point.kind === 'result';
    if (wish.kind === 'frame') return true;
    if (wish.kind === 'place') return point.kind === 'stage' && point.place === wish.place;
    return point.kind === wish.of;
  });
  if (index < 0) return run.state === 'complete' ? (run.points.at(-1) ?? null) : null;
  for (let i = index; i >= 0; --i) if (run.points[i]!.hasFrame) return run.points[i]!;
  return null;
}

// The point of another run that may stand beside the one of this run: after the same stage, or none.
export function findTwin(other: Run, run: Run, wish: Chosen): Point | null {
  const own = findPoint(run, wish);
  const twin = findPoint(other, wish);
  return own && twin && own.kind === twin.kind && own.title === twin.title ? twin : null;
}
