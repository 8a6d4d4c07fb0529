// SPDX-License-Identifier: Apache-2.0
import { useState } from 'preact/hooks';
import type { HistoryRow } from './protocol';
import { act, isBlind, runA, state } from './store';

function Row(props: { row: HistoryRow }) {
  const { row } = props;
  const now = state.value!;
  const [name, setName] = useState<string | null>(null);
  const isNow = now.run === row.id;
  const rename = async (): Promise<void> => {
    if (name !== null && name !== row.name) await act('api/name', { run: row.id, name });
    setName(null);
  };
  const isPinned = { A: (runA.value?.of ?? now.pinned.A) === row.id, B: now.pinned.B === row.id };
  return (
    <li class={isNow ? 'run-row now' : 'run-row'} data-test={`history-${row.id}`}>
      <button class="plain go" title="Back to this run" disabled={isNow} onClick={() => act('api/goto', { run: row.id })}>
        <b>{row.id}</b> {row.name || row.change || 'once more'}
        <span class="note">
          {' '}
          {row.section}, {now.frames[row.frame]?.name}, {Math.round(row.elapsedMs)} ms
        </span>
      </button>
      {name === null ? (
        <button class="icon" aria-label={`Name run ${row.id}`} title="Give it a name" onClick={() => setName(row.name)}>
          ✎
        </button>
      ) : (
        <input
          aria-label={`Name of run ${row.id}`}
          value={name}
          onInput={(event) => setName(event.currentTarget.value)}
          onBlur={rename}
          onKeyDown={(event) => {
            if (event.key === 'Enter') void rename();
          }}
        />
      )}
      {(['A', 'B'] as const).map((side) => (
        <button
          key={side}
          class="icon"
          aria-pressed={isPinned[side]}
          disabled={!row.kept}
          title={row.kept ? `Compare it as ${side}` : 'Go back to it first: its frames are not kept'}
          data-test={`pin-${side}-${row.id}`}
          onClick={() => act('api/pin', { run: isPinned[side] ? null : row.id, as: side })}
        >
          {side}
        </button>
      ))}
    </li>
  );
}

export function HistoryList() {
  const now = state.value!;
  return (
    <>
      <p class="says">Every run of this workbench, newest first. A click goes back to one; nothing is lost by that.</p>
      <div class="buttons">
        <button aria-pressed={isBlind.value} data-test="blind-open" onClick={() => (isBlind.value = !isBlind.value)}>
          Blind A/B (X)
        </button>
        {now.pinned.B !== null && (
          <button onClick={() => act('api/pin', { run: null, as: 'B' })}>B follows again</button>
        )}
      </div>
      <ol class="history" data-test="history">
        {now.history.map((row) => (
          <Row key={row.id} row={row} />
        ))}
      </ol>
    </>
  );
}
