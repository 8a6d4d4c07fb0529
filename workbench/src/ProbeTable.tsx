// SPDX-License-Identifier: Apache-2.0
import { probe, probes, removeProbe } from './marks';
import { runA, runB, tell } from './store';
import { tableText } from './table';
import { useAnswer } from './useAnswer';

interface Row {
  id: number;
  x: number;
  y: number;
  b: (number | null)[];
  a: (number | null)[] | null;
}

export function ProbeTable() {
  const a = runA.value;
  const b = runB.value;
  const words = b && b.state === 'complete' ? `${a?.id} ${a?.state} ${b.id} ${JSON.stringify(probes.value)}` : null;
  const { answer } = useAnswer<Row[]>(words, (signal) =>
    Promise.all(
      probes.value.map(async (each) => ({
        ...each,
        b: await probe(b!, each.x, each.y, signal),
        a: a && a.id !== b!.id && a.frame === b!.frame && a.state === 'complete' ? await probe(a, each.x, each.y, signal) : null,
      })),
    ),
  );
  if (probes.value.length === 0) {
    return <p class="note">Take the probe (P) and click on the picture: the level there after every stage.</p>;
  }
  const points = b?.points ?? [];
  const rows = answer ?? [];
  const copy = async (): Promise<void> => {
    const copied = rows.map((row) => [row.id, row.x, row.y, ...row.b]);
    await navigator.clipboard.writeText(tableText(['probe', 'x', 'y', ...points.map((point) => point.title)], copied));
    tell('Copied the table.');
  };
  return (
    <>
      <p class="says">The level at each probe after every stage of B; where A has another one, it stands behind the stroke.</p>
      <div class="scroll" tabIndex={0}>
        <table class="numbers" data-test="probes">
          <thead>
            <tr>
              <th>probe</th>
              {rows.map((row) => (
                <th key={row.id} scope="col" data-test={`probe-${row.id}`}>
                  {row.id} ({row.x}, {row.y}){' '}
                  <button class="icon" aria-label={`Remove probe ${row.id}`} onClick={() => removeProbe(row.id)}>
                    ×
                  </button>
                </th>
              ))}
            </tr>
          </thead>
          <tbody>
            {points.map((point, index) => (
              <tr key={point.point}>
                <th scope="row">{point.title}</th>
                {rows.map((row) => {
                  const other = a?.points[index]?.title === point.title ? row.a?.[index] : null;
                  const own = row.b[index];
                  return (
                    <td key={row.id} data-test={`level-${row.id}`} data-level={own ?? ''}>
                      {own ?? '–'}
                      {other !== null && other !== undefined && other !== own && <span class="note"> / {other}</span>}
                    </td>
                  );
                })}
              </tr>
            ))}
          </tbody>
        </table>
      </div>
      <button onClick={copy}>Copy as a table</button>
    </>
  );
}
