// SPDX-License-Identifier: Apache-2.0
import { act, hasHelp, isSaving, newest, room, runA, runB, screen, state, type Screen } from './store';

const kScreens: { screen: Screen; name: string; key: string }[] = [
  { screen: 'tune', name: 'Tune', key: 'T' },
  { screen: 'sheet', name: 'Sheet', key: 'H' },
  { screen: 'profile', name: 'Profile', key: 'E' },
  { screen: 'compare', name: 'Compare', key: 'C' },
  { screen: 'report', name: 'Report', key: 'R' },
];

// "run 14, 38 ms (-4)"
export function runWords(): string {
  const run = runB.value;
  if (!run) return 'no run yet';
  const ms = run.elapsedMs === null ? '' : `, ${Math.round(run.elapsedMs)} ms`;
  const change =
    run.elapsedMs === null || run.before === null ? '' : ` (${signed(Math.round(run.elapsedMs) - Math.round(run.before))})`;
  return `run ${run.id}${ms}${change}`;
}

function signed(value: number): string {
  return value > 0 ? `+${value}` : value < 0 ? `−${-value}` : '±0';
}

function Working() {
  const last = newest.value;
  const isWorking = last !== null && (last.state === 'running' || last.state === 'picture');
  return (
    <span class={isWorking ? 'working on' : 'working'} aria-hidden="true" data-test="working" data-state={last?.state ?? ''} />
  );
}

export function Head() {
  const now = state.value!;
  const { profile } = now;
  const a = runA.value;
  return (
    <header class="head">
      <label class="field frame">
        <span class="hidden">Frame</span>
        <select
          data-test="frames"
          value={String(now.frame)}
          onChange={(event) => act('api/frame', { id: Number(event.currentTarget.value) })}
        >
          {now.frames.map((frame) => (
            <option key={frame.id} value={String(frame.id)}>
              {frame.name}
            </option>
          ))}
        </select>
      </label>
      <h1 class="name" title={`${profile.name}, ${profile.chain}`}>
        {profile.name}
      </h1>
      <label class="field">
        <span class="hidden">Section</span>
        <select
          data-test="section"
          value={profile.section}
          onChange={(event) => act('api/section', { name: event.currentTarget.value })}
        >
          {!profile.sections.includes(profile.section) && <option value={profile.section}>{profile.section} (gone)</option>}
          {profile.sections.map((name) => (
            <option key={name} value={name}>
              {name}
            </option>
          ))}
        </select>
      </label>
      <span class={profile.unsaved > 0 ? 'unsaved on' : 'unsaved'} data-test="unsaved">
        {profile.unsaved > 0 ? `* ${profile.unsaved} unsaved` : 'saved'}
      </span>
      <span class="run" data-test="run">
        <Working />
        {runWords()}
      </span>
      <span class="sides" title={a && a.of !== null ? `What the picture compares: A has the settings of run ${a.of}` : 'What the picture compares'}>
        <b>A</b> {a ? `run ${a.of ?? a.id}` : 'none'} <span aria-hidden="true">|</span> <b>B</b>{' '}
        {now.pinned.B === null ? 'now' : `run ${now.pinned.B}`}
      </span>
      <span class="gap" />
      <nav aria-label="Screens">
        {kScreens.map((each) => (
          <button
            key={each.screen}
            class="tab"
            aria-current={screen.value === each.screen ? 'page' : undefined}
            title={`${each.name} (${each.key})`}
            data-test={`screen-${each.screen}`}
            onClick={() => (screen.value = each.screen)}
          >
            {each.name}
          </button>
        ))}
      </nav>
      <button data-test="undo" title="Undo (U)" disabled={!profile.canUndo} onClick={() => act('api/undo')}>
        Undo
      </button>
      <button data-test="redo" title="Redo (Shift+U)" disabled={!profile.canRedo} onClick={() => act('api/redo')}>
        Redo
      </button>
      <button
        data-test="save"
        title="Look at the changes and save them (Ctrl+S)"
        disabled={profile.unsaved === 0}
        onClick={() => (isSaving.value = true)}
      >
        Save
      </button>
      <button
        class="icon"
        title="Dark or light room (D)"
        aria-label="Dark or light room"
        onClick={() => (room.value = room.value === 'dark' ? 'light' : 'dark')}
      >
        ◐
      </button>
      <button class="icon" title="Keys (?)" aria-label="Keys" onClick={() => (hasHelp.value = true)}>
        ?
      </button>
    </header>
  );
}
