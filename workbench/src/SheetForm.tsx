// SPDX-License-Identifier: Apache-2.0
import { signal } from '@preact/signals';
import { beginSheet, cancelJob, sheet, type SheetWish } from './jobs';
import type { KeyValue, Place } from './protocol';
import { parseValues, suggestValues } from './sheetValues';
import { complain, openPlace, runB, state } from './store';

// What is asked for stands here while other screens are open.
export const kind = signal<'values' | 'frames'>('values');
const keyName = signal(''); // "section key"; empty: the first of the chosen stage
const values = signal<string | null>(null); // null: what is suggested
// What the sheet on the screen was made of.
export const madeOf = signal<{ id: number; section: string; key: string; values: string[] } | null>(null);

interface Choice {
  name: string;
  place: Place;
  key: KeyValue;
}

// A chain that looks at the exposure has stages that another frame would run.
function isIdle(place: Place): boolean {
  return place.position !== null && runB.value?.state === 'complete' && !runB.value.points.some((each) => each.place === place.place);
}

function choices(): Choice[] {
  return state.value!.places
    .filter((place) => place.runs && !place.off)
    .sort((one, other) => Number(isIdle(one)) - Number(isIdle(other)))
    .flatMap((place) =>
      place.values
        .filter((key) => key.hasEffect && key.base !== 'Function_Number')
        .map((key) => ({ name: `${place.section} ${key.key}`, place, key })),
    );
}

// The key that is chosen here, else one of the stage that is open in Tune, else the first of all.
function chosenKey(all: Choice[]): Choice | null {
  const own = all.find((each) => each.name === keyName.value);
  return own ?? all.find((each) => each.place.place === openPlace.value?.place) ?? all[0] ?? null;
}

async function begin(wish: SheetWish): Promise<void> {
  try {
    const { job } = await beginSheet(wish);
    madeOf.value = wish.kind === 'values' ? { id: job, section: wish.section, key: wish.key, values: wish.values } : null;
  } catch (error) {
    complain(error);
  }
}

function ValuesForm() {
  const all = choices();
  const choice = chosenKey(all);
  if (!choice) return <p class="note">No stage of this section runs: there is no key to try values of.</p>;
  const text = values.value ?? suggestValues(choice.key);
  const parsed = parseValues(text);
  const places = [...new Set(all.map((each) => each.place))];
  return (
    <>
      <label class="field">
        Key
        <select
          data-test="sheet-key"
          value={choice.name}
          onChange={(event) => {
            keyName.value = event.currentTarget.value;
            values.value = null;
          }}
        >
          {places.map((place) => (
            <optgroup key={place.place} label={isIdle(place) ? `${place.title} (does not run on this frame)` : place.title}>
              {all
                .filter((each) => each.place === place)
                .map((each) => (
                  <option key={each.name} value={each.name}>
                    {each.key.key}
                  </option>
                ))}
            </optgroup>
          ))}
        </select>
      </label>
      <label class="field wide" title="Values with commas between them, or FROM:TO:STEP">
        Values
        <input
          data-test="sheet-values"
          value={text}
          spellcheck={false}
          aria-invalid={parsed.error !== ''}
          onInput={(event) => (values.value = event.currentTarget.value)}
        />
      </label>
      <button
        class="strong"
        data-test="sheet-begin"
        disabled={parsed.error !== ''}
        onClick={() =>
          begin({ kind: 'values', section: choice.place.section, key: choice.key.key, values: parsed.values })
        }
      >
        Make the sheet
      </button>
      <span class="note" data-test="sheet-says">
        {parsed.error || `${parsed.values.length} values; the profile has ${choice.key.text ?? `${choice.key.default} by default`}.`}
      </span>
    </>
  );
}

function FramesForm() {
  const now = state.value!;
  const usable = now.frames.filter((each) => !each.error);
  return (
    <>
      <button
        class="strong"
        data-test="sheet-begin"
        disabled={usable.length === 0}
        onClick={() => begin({ kind: 'frames', frames: usable.map((each) => each.id) })}
      >
        Make the sheet
      </button>
      <span class="note" data-test="sheet-says">
        {usable.length === 1 ? 'The one frame' : `All ${usable.length} frames`} by section {now.profile.section} as it stands now.
      </span>
    </>
  );
}

export function SheetForm() {
  const made = sheet.value;
  return (
    <div class="bar form">
      <div class="group" role="group" aria-label="What the sheet shows">
        <button aria-pressed={kind.value === 'values'} data-test="sheet-kind-values" onClick={() => (kind.value = 'values')}>
          One frame, many values
        </button>
        <button aria-pressed={kind.value === 'frames'} data-test="sheet-kind-frames" onClick={() => (kind.value = 'frames')}>
          Many frames, one profile
        </button>
      </div>
      {kind.value === 'values' ? <ValuesForm /> : <FramesForm />}
      {made?.state === 'running' && (
        <button data-test="sheet-cancel" onClick={() => cancelJob(made.id).catch(complain)}>
          Stop
        </button>
      )}
    </div>
  );
}
