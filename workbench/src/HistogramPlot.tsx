// SPDX-License-Identifier: Apache-2.0
import { rebin, type Histogram } from './bins';
import { getJson } from './client';
import { Plot, sidesSaid, type Series } from './Plot';
import type { Point, Run } from './protocol';
import { findPoint, findTwin } from './points';
import { chosen, runA, runB, state } from './store';
import { useAnswer } from './useAnswer';

const kMostBins = 512;

interface Answer {
  xs: number[];
  series: Series[];
}

async function histogramOf(run: Run, point: Point | null, signal: AbortSignal): Promise<Histogram | null> {
  return point ? getJson<Histogram>(`api/runs/${run.id}/points/${point.point}/histogram`, {}, signal) : null;
}

// The curve that the stage laid over the frame before it, at the middle of each bin.
async function curveOf(run: Run, bins: number, width: number, signal: AbortSignal): Promise<Series | null> {
  const point = findPoint(run, chosen.value);
  if (!point?.hasCurve) return null;
  const { curve } = await getJson<{ curve: [number, number][] }>(`api/runs/${run.id}/points/${point.point}/curve`, {}, signal);
  const values = new Array<number | null>(bins).fill(null);
  for (const [level, value] of curve) {
    const bin = Math.floor(level / width);
    if (bin < bins) values[bin] = value;
  }
  return { name: 'curve', kind: 'curve', values, scale: 'level' };
}

export function HistogramPlot() {
  const a = runA.value;
  const b = runB.value;
  const top = state.value!.profile.topLevel;
  const words = b && b.state === 'complete' ? `${a?.id} ${a?.state} ${b.id} ${JSON.stringify(chosen.value)} ${top}` : null;
  const { answer } = useAnswer<Answer>(words, async (signal) => {
    const [left, right] = await Promise.all([
      a && a.id !== b!.id ? histogramOf(a, findTwin(a, b!, chosen.value), signal) : null,
      histogramOf(b!, findPoint(b!, chosen.value), signal),
    ]);
    const greatest = Math.max(top, ...[left, right].map((each) => (each ? each.first + each.counts.length - 1 : 0)));
    const series: Series[] = [];
    let width = 1;
    for (const [name, kind, each] of [
      ['A', 'a', left],
      ['B', 'b', right],
    ] as const) {
      if (!each) continue;
      const bins = rebin(each, greatest, kMostBins);
      width = bins.width;
      series.push({ name, kind, values: bins.shares });
    }
    const bins = series[0]?.values.length ?? 0;
    const curve = await curveOf(b!, bins, width, signal);
    if (curve) series.push(curve);
    return { xs: Array.from({ length: bins }, (_, index) => index * width), series };
  });
  const point = b ? findPoint(b, chosen.value) : null;
  const hasA = answer?.series.some((each) => each.kind === 'a') ?? false;
  return (
    <>
      <p class="says">
        Pixels at each level{point ? ` after ${point.title}` : ''}: {sidesSaid(hasA)}
        {point?.hasCurve ? '; thick: the curve that this stage laid over the frame before it' : ''}.
      </p>
      {answer && answer.series.length > 0 ? (
        <Plot xs={answer.xs} xName="level" yName="%" series={answer.series} height={150} label="Histograms of A and B" />
      ) : (
        <p class="note">The histogram comes with the run.</p>
      )}
    </>
  );
}
