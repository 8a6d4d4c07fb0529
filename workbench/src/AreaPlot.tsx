// SPDX-License-Identifier: Apache-2.0
import { getJson } from './client';
import { area } from './marks';
import { Plot, sidesSaid, type Series } from './Plot';
import type { Point, Run } from './protocol';
import { findPoint, findTwin } from './points';
import { runA, runB, shownWish } from './store';
import { useAnswer } from './useAnswer';

interface Noise {
  mean: number;
  sigma: number;
  snr: number | null;
  clippedShare: number;
}

interface Edge {
  response: [number, number][];
  mtf50: number | null;
  risePixels: number;
  overshoot: number;
}

function useArea<T>(what: 'noise' | 'edge') {
  const own = area.value;
  const a = runA.value;
  const b = runB.value;
  const words = own && b && b.state === 'complete' ? `${what} ${a?.id} ${a?.state} ${b.id} ${JSON.stringify([shownWish.value, own])}` : null;
  return useAnswer<{ a: T | null; b: T }>(words, async (signal) => {
    const measure = (run: Run, point: Point): Promise<T> =>
      getJson<T>(`api/runs/${run.id}/points/${point.point}/${what}`, { ...own! }, signal);
    const twin = a && a.id !== b!.id && a.frame === b!.frame ? findTwin(a, b!, shownWish.value) : null;
    const left = twin ? measure(a!, twin).catch(() => null) : null;
    return { a: await left, b: await measure(b!, findPoint(b!, shownWish.value)!) };
  });
}

function fixed(value: number | null | undefined, digits: number): string {
  return value === null || value === undefined ? '–' : value.toFixed(digits);
}

export function NoisePlot() {
  const { answer, error } = useArea<Noise>('noise');
  return (
    <>
      <p class="says">Grain of the area around its local mean, in levels; SNR is mean over grain.</p>
      {answer ? (
        <table class="numbers" data-test="noise">
          <thead>
            <tr>
              <th />
              <th>mean</th>
              <th>grain</th>
              <th>SNR</th>
              <th>clipped</th>
            </tr>
          </thead>
          <tbody>
            {(['a', 'b'] as const).map((side) => {
              const own = answer[side];
              return own ? (
                <tr key={side}>
                  <th scope="row">{side.toUpperCase()}</th>
                  <td>{fixed(own.mean, 1)}</td>
                  <td>{fixed(own.sigma, 1)}</td>
                  <td>{fixed(own.snr, 1)}</td>
                  <td>{fixed(100 * own.clippedShare, 1)} %</td>
                </tr>
              ) : null;
            })}
          </tbody>
        </table>
      ) : (
        <p class="note">{error || 'Take the area (N) and drag over something even.'}</p>
      )}
    </>
  );
}

export function EdgePlot() {
  const { answer, error } = useArea<Edge>('edge');
  const xs = answer?.b.response.map(([frequency]) => frequency) ?? [];
  const series: Series[] = [];
  if (answer?.a) series.push({ name: 'A', kind: 'a', values: answer.a.response.map(([, modulation]) => modulation) });
  if (answer) series.push({ name: 'B', kind: 'b', values: answer.b.response.map(([, modulation]) => modulation) });
  return (
    <>
      <p class="says">How much contrast is left at each fineness, from one straight edge in the area: {sidesSaid(Boolean(answer?.a))}.</p>
      {answer ? (
        <>
          <Plot xs={xs} xName="cycles per pixel" yName="modulation" series={series} height={150} label="Edge response" />
          <p class="note">
            half is left at {fixed(answer.b.mtf50, 3)} (A {fixed(answer.a?.mtf50, 3)}) cycles per pixel; overshoot{' '}
            {fixed(100 * answer.b.overshoot, 1)} % (A {fixed(answer.a ? 100 * answer.a.overshoot : null, 1)} %)
          </p>
        </>
      ) : (
        <p class="note">{error || 'Take the area (N) and drag over one straight edge, a few degrees from upright.'}</p>
      )}
    </>
  );
}
