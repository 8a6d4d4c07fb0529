// SPDX-License-Identifier: Apache-2.0
import { getJson } from './client';
import { line } from './marks';
import { Plot, sidesSaid, type Series } from './Plot';
import type { Point, Run } from './protocol';
import { findPoint, findTwin } from './points';
import { runA, runB, shownWish } from './store';
import { useAnswer } from './useAnswer';

type Values = [number, number][];

export function LinePlot() {
  const own = line.value;
  const a = runA.value;
  const b = runB.value;
  const words = own && b && b.state === 'complete' ? `${a?.id} ${a?.state} ${b.id} ${JSON.stringify([shownWish.value, own])}` : null;
  const { answer } = useAnswer<{ xs: number[]; series: Series[] }>(words, async (signal) => {
    const valuesOf = async (run: Run, point: Point | null): Promise<Values | null> => {
      if (!point) return null;
      return (await getJson<{ values: Values }>(`api/runs/${run.id}/points/${point.point}/line`, { ...own! }, signal)).values;
    };
    const wish = shownWish.value;
    const isTwin = a && a.id !== b!.id && a.frame === b!.frame;
    const [left, right] = await Promise.all([
      isTwin ? valuesOf(a, findTwin(a, b!, wish)) : null,
      valuesOf(b!, findPoint(b!, wish)),
    ]);
    const xs = (right ?? left ?? []).map(([distance]) => distance);
    const series: Series[] = [];
    if (left && left.length === xs.length) series.push({ name: 'A', kind: 'a', values: left.map(([, level]) => level) });
    if (right) series.push({ name: 'B', kind: 'b', values: right.map(([, level]) => level) });
    return { xs, series };
  });
  return (
    <>
      <p class="says">The levels along the line, a pixel a step: {sidesSaid(answer?.series.some((each) => each.kind === 'a') ?? false)}.</p>
      {answer && answer.xs.length > 1 ? (
        <Plot xs={answer.xs} xName="pixels" yName="level" series={answer.series} height={150} label="Levels along the line" />
      ) : (
        <p class="note">Take the line (L) and drag over the picture.</p>
      )}
    </>
  );
}
