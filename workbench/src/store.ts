// SPDX-License-Identifier: Apache-2.0
//
// What is on the screen. All else belongs to the tool, and comes with its events.
import { computed, effect, signal } from '@preact/signals';
import { getJson, listen, post } from './client';
import { cleanWindow, type Window } from './greys';
import { forgetJobs, takeJob } from './jobs';
import type { Chosen } from './points';
import type { Event, Place, Run, State } from './protocol';

export type Screen = 'tune' | 'sheet' | 'profile' | 'compare' | 'report';
export type Mode = 'swipe' | 'side' | 'blink' | 'difference';
export type Tool = 'hand' | 'probe' | 'line' | 'area';
export type Numbers = 'histogram' | 'probes' | 'line' | 'noise' | 'edge' | 'timings' | 'history' | 'log';

export const state = signal<State | null>(null);
export const runs = signal<ReadonlyMap<number, Run>>(new Map());
export const link = signal<'opening' | 'up' | 'lost'>('opening');
export const screen = signal<Screen>('tune');
export const mode = signal<Mode>('swipe');
export const tool = signal<Tool>('hand');
export const numbers = signal<Numbers>('histogram'); // the tab that is open
export const swipe = signal(0.5);
export const gain = signal(8);
export const ownWindow = signal<Window | null>(null); // none: 0 to the section's top level
export const hasHelp = signal(false);
export const isSaving = signal(false);
export const isBlind = signal(false);
export const room = signal<'dark' | 'light'>(localStorage.getItem('room') === 'light' ? 'light' : 'dark');

// Sentences that go again by themselves, and failures that stay until they are closed.
export const notices = signal<{ id: number; text: string; isFailure: boolean }[]>([]);
let lastNotice = 0;

export function tell(text: string): void {
  const id = ++lastNotice;
  notices.value = [...notices.value, { id, text, isFailure: false }];
  window.setTimeout(() => dismiss(id), 3500);
}

export function complain(error: unknown): void {
  if (error instanceof DOMException && error.name === 'AbortError') return;
  const text = error instanceof Error ? error.message : String(error);
  if (notices.value.some((each) => each.text === text)) return;
  notices.value = [...notices.value, { id: ++lastNotice, text, isFailure: true }];
}

export function dismiss(id: number): void {
  notices.value = notices.value.filter((each) => each.id !== id);
}

// An action of the tool whose failure is told.
export async function act(path: string, body: object = {}): Promise<boolean> {
  try {
    await post(path, body);
    return true;
  } catch (error) {
    complain(error);
    return false;
  }
}

// What is looked at stays chosen from run to run.
export const chosen = signal<Chosen>({ kind: 'result' });

// The picture shows the result while the values of a stage are open: what is tuned is the result, and it is there long
// before the stages are. A stage's own picture is for who asks for it.
export const showsStage = signal(false);
export const shownWish = computed<Chosen>(() =>
  chosen.value.kind === 'place' && !showsStage.value ? { kind: 'result' } : chosen.value,
);

export const runB = computed<Run | null>(() => {
  const id = state.value?.pinned.B ?? state.value?.run ?? null;
  return id === null ? null : (runs.value.get(id) ?? null);
});

export const runA = computed<Run | null>(() => {
  const id = state.value?.pinned.A ?? null;
  return id === null ? null : (runs.value.get(id) ?? null);
});

// Whether the newest text is being run.
export const newest = computed<Run | null>(() => {
  let last: Run | null = null;
  for (const run of runs.value.values()) if (!run.aside && (last === null || run.id > last.id)) last = run;
  return last;
});

export const grey = computed<Window>(() => ownWindow.value ?? cleanWindow(0, state.value?.profile.topLevel ?? 4095));

// Where the panel stands; a place that is chosen in the strip, or one that is opened in the list of places.
export const openPlace = computed<Place | null>(() => {
  const wish = chosen.value;
  const places = state.value?.places ?? [];
  if (wish.kind === 'place') return places.find((each) => each.place === wish.place) ?? null;
  return null;
});

function takeRun(run: Run): void {
  const next = new Map(runs.value);
  next.set(run.id, run);
  // The tool forgets frames, and so does the page.
  const needed = new Set([state.value?.run, state.value?.pinned.A, state.value?.pinned.B]);
  const ids = [...next.keys()].sort((one, other) => other - one);
  ids.forEach((id, rank) => {
    if (rank >= 6 && !needed.has(id)) next.delete(id);
  });
  runs.value = next;
}

// Runs that came before this page did.
async function fetchMissing(): Promise<void> {
  const now = state.value;
  if (!now) return;
  for (const id of [now.run, now.pinned.A, now.pinned.B]) {
    if (id === null || runs.value.has(id)) continue;
    try {
      takeRun(await getJson<Run>(`api/runs/${id}`));
    } catch {
      // it has gone meanwhile: a new state follows
    }
  }
}

export function take(event: Event): void {
  if (event.type === 'state') {
    if (state.value && event.revision < state.value.revision && link.value === 'up') return;
    state.value = event;
    void fetchMissing();
  } else if (event.type === 'run') {
    takeRun(event.run);
  } else if (event.type === 'job') {
    takeJob(event.job, complain);
  }
}

export function start(): void {
  listen(take, (isUp) => {
    // A tool that was started anew counts from the beginning.
    if (!isUp && link.value === 'up') {
      runs.value = new Map();
      forgetJobs();
    }
    link.value = isUp ? 'up' : 'lost';
  });
  effect(() => {
    document.documentElement.dataset['room'] = room.value;
    localStorage.setItem('room', room.value);
  });
  effect(() => {
    const profile = state.value?.profile;
    if (profile) document.title = `${profile.unsaved > 0 ? '* ' : ''}${profile.name} [${profile.section}] – workbench`;
  });
}
