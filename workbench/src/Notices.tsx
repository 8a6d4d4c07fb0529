// SPDX-License-Identifier: Apache-2.0
import { act, dismiss, link, notices, state } from './store';

export function Notices() {
  const isLost = link.value === 'lost';
  const changed = state.value?.profile.changedOnDisk;
  return (
    <div class="notices" role="status" aria-live="polite" data-test="notices">
      {isLost && (
        <div class="notice failure" data-test="lost">
          The tool has ended, or does not answer. What you see stays; nothing is lost that was saved.
        </div>
      )}
      {changed && (
        <div class="notice failure" data-test="changed-on-disk">
          Another program has saved this profile while there were edits here.
          <button onClick={() => act('api/reload', { keep: 'disk' })}>Take its text</button>
          <button onClick={() => act('api/reload', { keep: 'mine' })}>Keep mine</button>
        </div>
      )}
      {notices.value.map((each) => (
        <div key={each.id} class={each.isFailure ? 'notice failure' : 'notice'}>
          {each.text}
          {each.isFailure && (
            <button aria-label="Close this message" onClick={() => dismiss(each.id)}>
              ×
            </button>
          )}
        </div>
      ))}
    </div>
  );
}
