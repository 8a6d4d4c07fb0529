// SPDX-License-Identifier: Apache-2.0
import type { Event, Failure } from './protocol';

// What the tool refuses, in its own words.
export class ToolFailure extends Error {
  constructor(
    readonly status: number,
    readonly failure: Failure,
  ) {
    super([failure.where, failure.what].filter(Boolean).join(': ') + (failure.remedy ? `; ${failure.remedy}` : ''));
  }
}

async function test(answer: Response): Promise<Response> {
  if (answer.ok) return answer;
  let failure: Failure = { where: '', what: `the tool answered with ${answer.status}`, remedy: '' };
  try {
    failure = ((await answer.json()) as { error: Failure }).error;
  } catch {
    // no words: those above stand
  }
  throw new ToolFailure(answer.status, failure);
}

type Fields = Record<string, string | number>;

function address(path: string, fields: Fields): string {
  const query = new URLSearchParams(Object.entries(fields).map(([name, value]) => [name, String(value)]));
  return query.size > 0 ? `${path}?${query}` : path;
}

export async function getJson<T>(path: string, fields: Fields = {}, signal?: AbortSignal): Promise<T> {
  const answer = await test(await fetch(address(path, fields), { signal: signal ?? null }));
  return (await answer.json()) as T;
}

export async function getBytes(path: string, fields: Fields, signal?: AbortSignal): Promise<Uint8Array> {
  const answer = await test(await fetch(address(path, fields), { signal: signal ?? null }));
  return new Uint8Array(await answer.arrayBuffer());
}

export async function getText(path: string, fields: Fields): Promise<string> {
  return (await test(await fetch(address(path, fields)))).text();
}

export async function post<T = { revision: number }>(path: string, body: object = {}): Promise<T> {
  const answer = await test(await fetch(path, { method: 'POST', body: JSON.stringify(body) }));
  return (await answer.json()) as T;
}

// Between two of one thing: a slider says more than any run can follow.
const leastGap = (): Promise<void> => new Promise((resolve) => setTimeout(resolve, 30));

// Sends the newest of several bodies for one thing: never two on the way at once, and what comes meanwhile counts
// only by its last.
export class LatestPost {
  private isBusy = false;
  private next: object | null = null;
  onIdle: () => void = () => {}; // after the last has been answered

  constructor(
    private readonly path: string,
    private readonly onError: (error: unknown) => void,
    private readonly send: (path: string, body: object) => Promise<unknown> = post,
    private readonly pause: () => Promise<void> = leastGap,
  ) {}

  push(body: object): void {
    this.next = body;
    if (!this.isBusy) void this.work();
  }

  private async work(): Promise<void> {
    this.isBusy = true;
    while (this.next) {
      const body = this.next;
      this.next = null;
      const gap = this.pause();
      try {
        await this.send(this.path, body);
      } catch (error) {
        this.onError(error);
      }
      await gap;
    }
    this.isBusy = false;
    this.onIdle();
  }
}

// Listens to the tool as long as the page lives. After a loss it tries again, at first at once.
export function listen(onEvent: (event: Event) => void, onLink: (isUp: boolean) => void): void {
  const kFirstWait = 250;
  const kLongestWait = 4000;
  let wait = kFirstWait;
  const open = (): void => {
    const url = new URL('events', location.href);
    url.protocol = 'ws:';
    const socket = new WebSocket(url);
    // A tool that was killed does not always close its end: it says something every two seconds.
    let deaf = 0;
    const watch = (): void => {
      clearTimeout(deaf);
      deaf = window.setTimeout(() => socket.close(), 7000);
    };
    socket.onopen = () => {
      wait = kFirstWait;
      watch();
      onLink(true);
    };
    socket.onmessage = (message) => {
      watch();
      onEvent(JSON.parse(message.data as string) as Event);
    };
    socket.onclose = () => {
      clearTimeout(deaf);
      onLink(false);
      window.setTimeout(open, wait);
      wait = Math.min(2 * wait, kLongestWait);
    };
  };
  open();
}
