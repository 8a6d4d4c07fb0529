// SPDX-License-Identifier: Apache-2.0
//
// The newest sheet and the newest comparison. The tool tells how far they are; what they hold is asked for.
import { signal } from '@preact/signals';
import { getJson, post } from './client';
import type { Comparison, Job, Sheet } from './protocol';

export const sheet = signal<Sheet | null>(null);
export const comparison = signal<Comparison | null>(null);

const kKinds = { sheet: { path: 'api/jobs', held: sheet }, compare: { path: 'api/compare', held: comparison } } as const;
type Kind = keyof typeof kKinds;

const kGap = 300; // milliseconds between two questions while a job is at work
const newest: Record<Kind, number> = { sheet: 0, compare: 0 };
const timers: Record<Kind, ReturnType<typeof setTimeout> | null> = { sheet: null, compare: null };

// A page that is loaded anew finds its jobs again. The address holds a word that no other tool has.
function nameOf(kind: Kind): string {
  return `${kind} of ${location.pathname}`;
}

async function fetchJob(kind: Kind, id: number, onError: (error: unknown) => void): Promise<void> {
  timers[kind] = null;
  try {
    const answer = await getJson<Sheet & Comparison>(`${kKinds[kind].path}/${id}`);
    if (id === newest[kind]) kKinds[kind].held.value = answer;
  } catch (error) {
    onError(error);
  }
}

// What the tool says of a job, this page's or another one's. A newer job of its kind has ended those before it.
export function takeJob(job: Job, onError: (error: unknown) => void): void {
  const { kind, id } = job;
  if (id < newest[kind]) return;
  if (id > newest[kind]) sessionStorage.setItem(nameOf(kind), String(id));
  newest[kind] = id;
  const isAtWork = job.state === 'running';
  const timer = timers[kind];
  if (timer !== null && isAtWork) return;
  if (timer !== null) clearTimeout(timer);
  timers[kind] = setTimeout(() => void fetchJob(kind, id, onError), isAtWork ? kGap : 0);
}

// Looks whether the jobs of this page before it was loaded anew are still there.
export function findJobs(): void {
  for (const kind of ['sheet', 'compare'] as const) {
    const id = Number(sessionStorage.getItem(nameOf(kind)));
    if (!id || newest[kind] >= id) continue;
    newest[kind] = id;
    void fetchJob(kind, id, () => {}); // it has gone: there is nothing to show
  }
}

export function forgetJobs(): void {
  for (const kind of ['sheet', 'compare'] as const) {
    newest[kind] = 0;
    kKinds[kind].held.value = null;
  }
}

export type SheetWish =
  { kind: 'values'; section: string; key: string; values: string[] } | { kind: 'frames'; frames: number[] };

export function beginSheet(wish: SheetWish): Promise<{ job: number }> {
  return post<{ job: number }>('api/sheet', wish);
}

export interface CompareWish {
  profile: string | null;
  section: string | null;
  library: string | null;
}

export function beginComparison(wish: CompareWish): Promise<{ job: number }> {
  return post<{ job: number }>('api/compare', wish);
}

export function cancelJob(id: number): Promise<unknown> {
  return post(`api/jobs/${id}/cancel`);
}
