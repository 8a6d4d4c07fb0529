// SPDX-License-Identifier: Apache-2.0
import { gain, mode, type Mode } from './store';

const kModes: { mode: Mode; name: string; title: string }[] = [
  { mode: 'swipe', name: '1 swipe', title: 'A left of the line, B right of it' },
  { mode: 'side', name: '2 side by side', title: 'A and B side by side' },
  { mode: 'blink', name: '3 blink', title: 'A and B in turn' },
  { mode: 'difference', name: '4 difference', title: 'B minus A around the middle grey' },
];

export function ModeButtons() {
  return (
    <div class="group" role="group" aria-label="How A and B are compared">
      {kModes.map((each) => (
        <button
          key={each.mode}
          title={each.title}
          aria-pressed={mode.value === each.mode}
          data-test={`mode-${each.mode}`}
          onClick={() => (mode.value = each.mode)}
        >
          {each.name}
        </button>
      ))}
    </div>
  );
}

// How far a difference is spread, where one is looked at.
export function GainField() {
  if (mode.value !== 'difference') return null;
  return (
    <label class="field">
      Gain
      <select value={String(gain.value)} onChange={(event) => (gain.value = Number(event.currentTarget.value))}>
        {[0.25, 1, 2, 4, 8, 16, 64].map((each) => (
          <option key={each} value={String(each)}>
            {each}
          </option>
        ))}
      </select>
    </label>
  );
}
