// SPDX-License-Identifier: Apache-2.0
import { signal } from '@preact/signals';
import { useState } from 'preact/hooks';
import { getText } from './client';
import { reportName, reportRuns } from './reportName';
import { complain, state, tell } from './store';
import './screens.css';

// The runs that are wished for; null: A and the newest.
const wished = signal<ReadonlySet<number> | null>(null);

function wishes(): ReadonlySet<number> {
  const now = state.value!;
  return wished.value ?? new Set([now.pinned.A, now.pinned.B ?? now.run].filter((each) => each !== null));
}

function RunList() {
  const now = state.value!;
  const own = wishes();
  return (
    <ul class="history" data-test="report-runs">
      {now.history
        .filter((row) => row.kept)
        .map((row) => (
          <li key={row.id} class="run-row">
            <label class="go report-run">
              <input
                type="checkbox"
                data-test={`report-run-${row.id}`}
                checked={own.has(row.id)}
                onChange={(event) => {
                  const next = new Set(own);
                  if (event.currentTarget.checked) next.add(row.id);
                  else next.delete(row.id);
                  wished.value = next;
                }}
              />
              <b>{row.id}</b> {row.name || row.change || 'once more'}
              <span class="note">
                {row.section}, {now.frames[row.frame]?.name}
              </span>
            </label>
          </li>
        ))}
    </ul>
  );
}

export function ReportScreen() {
  const now = state.value!;
  const [isMaking, setMaking] = useState(false);
  const kept = now.history.filter((row) => row.kept).map((row) => row.id);
  const runs = reportRuns(wishes(), kept);
  // As a download of this page and no plain link, so that what the tool refuses is told here.
  const make = async (): Promise<void> => {
    setMaking(true);
    try {
      const text = await getText('api/report', { runs: runs.join(',') });
      const address = URL.createObjectURL(new Blob([text], { type: 'text/html' }));
      const link = document.createElement('a');
      link.href = address;
      link.download = reportName(now.profile.name, runs);
      link.click();
      // The browser has taken it by then.
      window.setTimeout(() => URL.revokeObjectURL(address), 60_000);
      tell(`The report is ${link.download}.`);
    } catch (error) {
      complain(error);
    }
    setMaking(false);
  };
  return (
    <main class="report-screen" aria-label="Report">
      <section>
        <h2>A report of these runs</h2>
        {kept.length === 0 ? (
          <p class="note" data-test="report-empty">
            There is no run yet whose pictures are kept.
          </p>
        ) : (
          <>
            <p class="note">Runs whose pictures are kept; go back to an older one in the history of Tune, and it stands here, too.</p>
            <RunList />
          </>
        )}
        <div class="buttons">
          <button class="strong" data-test="report-make" disabled={runs.length === 0 || isMaking} onClick={make}>
            {isMaking ? 'Making it…' : 'Make the report'}
          </button>
          <button data-test="report-usual" disabled={wished.value === null} onClick={() => (wished.value = null)}>
            A and now
          </button>
        </div>
      </section>
      <section>
        <h2>What is in it</h2>
        <ul>
          <li>the frame, the section, the version of the library, the time and the hash of the profile</li>
          <li>what changed from the first of the runs to the last: keys with both values, and the share of pixels</li>
          <li>the pictures of both, side by side</li>
          <li>the stages with their times</li>
          <li>the profile's changed lines, and what lint says of them</li>
        </ul>
        <p class="note">
          It is one HTML file with its pictures inside. It loads nothing, so it can be sent and kept, and opens without this tool.
        </p>
      </section>
    </main>
  );
}
