// SPDX-License-Identifier: Apache-2.0
import { getJson } from './client';
import { Plot } from './Plot';
import { runB, state } from './store';
import { useAnswer } from './useAnswer';

interface Timings {
  runs: { id: number; elapsedMs: number; stages: { title: string; ms: number | null }[] }[];
}

export function TimingsPlot() {
  const { answer } = useAnswer<{ xs: number[]; values: number[] }>(`${state.value!.run} ${runB.value?.state}`, async (signal) => {
    const { runs } = await getJson<Timings>('api/timings', {}, signal);
    const order = [...runs].reverse();
    return { xs: order.map((each) => each.id), values: order.map((each) => each.elapsedMs) };
  });
  return (
    <>
      <p class="says">How long the library took for each of the last twenty runs, without the way there and back.</p>
      {answer && answer.xs.length > 0 ? (
        <Plot
          xs={answer.xs}
          xName="run"
          yName="ms"
          series={[{ name: 'time', kind: 'b', values: answer.values }]}
          height={160}
          label="Times of the last runs"
          isBars
        />
      ) : (
        <p class="note">No run yet.</p>
      )}
    </>
  );
}
