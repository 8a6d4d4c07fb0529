// SPDX-License-Identifier: Apache-2.0
import { signal } from '@preact/signals';
import { beginComparison, cancelJob, comparison } from './jobs';
import type { AgainstFile } from './protocol';
import { complain, state } from './store';

// What is asked for stands here while other screens are open. Empty: as the desk has it.
const profile = signal('');
const section = signal('');
const library = signal('');

function leafOf(path: string): string {
  return path.replace(/^.*[/\\]/, '');
}

function FileField(props: { name: string; files: AgainstFile[]; own: string; value: { value: string }; test: string; onChange?: () => void }) {
  return (
    <label class="field">
      {props.name}
      <select
        data-test={props.test}
        value={props.value.value}
        onChange={(event) => {
          props.value.value = event.currentTarget.value;
          props.onChange?.();
        }}
      >
        <option value="">{props.own}</option>
        {props.files.map((file) => (
          <option key={file.path} value={file.path} title={file.path}>
            {leafOf(file.path)}
          </option>
        ))}
      </select>
    </label>
  );
}

// Not the desk's own any more, since the desk may have come to it meanwhile.
function wishedSection(): string {
  return profile.value === '' && section.value === state.value!.profile.section ? '' : section.value;
}

function SectionField() {
  const now = state.value!.profile;
  // Which sections another file has is not known here: the tool says what is missing.
  if (profile.value !== '') {
    return (
      <label class="field">
        Section
        <input
          data-test="compare-section"
          placeholder={now.section}
          value={section.value}
          spellcheck={false}
          onInput={(event) => (section.value = event.currentTarget.value)}
        />
      </label>
    );
  }
  return (
    <label class="field">
      Section
      <select
        data-test="compare-section"
        value={wishedSection()}
        onChange={(event) => (section.value = event.currentTarget.value)}
      >
        <option value="">{now.section} (the same)</option>
        {now.sections
          .filter((each) => each !== now.section)
          .map((each) => (
            <option key={each} value={each}>
              {each}
            </option>
          ))}
      </select>
    </label>
  );
}

export function CompareForm() {
  const now = state.value!;
  const against = now.against ?? [];
  const made = comparison.value;
  const isEmpty = profile.value === '' && wishedSection() === '' && library.value === '';
  const begin = (): void => {
    beginComparison({ profile: profile.value || null, section: wishedSection() || null, library: library.value || null }).catch(
      complain,
    );
  };
  return (
    <div class="bar form">
      <span>
        <b>{now.profile.name}</b> [{now.profile.section}] against
      </span>
      <FileField
        name="Profile"
        own={`${now.profile.name} (the same)`}
        files={against.filter((each) => each.kind === 'profile')}
        value={profile}
        test="compare-profile"
        onChange={() => (section.value = '')}
      />
      <SectionField />
      <FileField
        name="Library"
        own="this one (the same)"
        files={against.filter((each) => each.kind === 'library')}
        value={library}
        test="compare-library"
      />
      <button class="strong" data-test="compare-begin" disabled={isEmpty} onClick={begin}>
        Compare
      </button>
      {made?.state === 'running' && (
        <button data-test="compare-cancel" onClick={() => cancelJob(made.id).catch(complain)}>
          Stop
        </button>
      )}
      <span class="note">
        {against.length === 0
          ? 'Other profiles and libraries are named by --against when the workbench is started.'
          : isEmpty
            ? 'Choose what is to be another.'
            : ''}
      </span>
    </div>
  );
}
