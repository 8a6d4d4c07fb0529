// SPDX-License-Identifier: Apache-2.0
import { useEffect, useState } from 'preact/hooks';
import { getJson } from './client';
import { Dialog } from './Dialog';
import type { DiffAnswer } from './protocol';
import { act, complain, isSaving, state, tell } from './store';

export function DiffLines(props: { changes: DiffAnswer['changes'] }) {
  return (
    <table class="diff" data-test="diff">
      <tbody>
        {props.changes.map((change, index) => (
          <tr key={index}>
            <th scope="row">{change.line}</th>
            <td>
              {change.old !== null && <div class="old">− {change.old}</div>}
              {change.new !== null && <div class="new">+ {change.new}</div>}
            </td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

export function SaveDialog() {
  const [diff, setDiff] = useState<DiffAnswer | null>(null);
  const revision = state.value!.profile.textRevision;
  const close = (): void => {
    isSaving.value = false;
  };
  useEffect(() => {
    getJson<DiffAnswer>('api/diff').then(setDiff, complain);
  }, [revision]);
  const save = async (): Promise<void> => {
    if (diff && (await act('api/save', { textRevision: diff.textRevision }))) {
      tell(`Saved ${state.value!.profile.name}.`);
      close();
    }
  };
  return (
    <Dialog title={`Save ${state.value!.profile.name}`} onClose={close}>
      {!diff ? (
        <p>Looking…</p>
      ) : diff.changes.length === 0 ? (
        <p>There is nothing to save.</p>
      ) : (
        <>
          <p>These lines change; every other byte of the file stays.</p>
          <DiffLines changes={diff.changes} />
        </>
      )}
      <div class="buttons">
        <button onClick={close}>Not yet</button>
        <button class="strong" data-test="save-now" disabled={!diff || diff.changes.length === 0} onClick={save}>
          Save
        </button>
      </div>
    </Dialog>
  );
}
