// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { comparison, findJobs, forgetJobs, sheet, takeJob } from '../src/jobs';
import type { Job } from '../src/protocol';
import { settle, until } from './until';

// What the page's browser has, and a tool that answers with what is set here.
const stored = new Map<string, string>();
const asked: string[] = [];
let answer: (path: string) => object | null = () => null;
Object.assign(globalThis, {
  location: { pathname: '/word/' },
  sessionStorage: {
    getItem: (name: string) => stored.get(name) ?? null,
    setItem: (name: string, value: string) => stored.set(name, value),
  },
  fetch: async (path: string) => {
    asked.push(path);
    const body = answer(path);
    return body ? Response.json(body) : Response.json({ error: { what: 'gone', where: '', remedy: '' } }, { status: 404 });
  },
});

function job(id: number, more: Partial<Job> = {}): Job {
  return { id, kind: 'sheet', done: 0, total: 2, state: 'running', error: null, ...more };
}

const fail = (error: unknown): void => assert.fail(String(error));

function begin(): void {
  forgetJobs();
  stored.clear();
  asked.length = 0;
}

test('a job at work is asked for now and then, and at its end at once', async () => {
  begin();
  answer = () => job(3, { state: 'done' });
  for (let i = 0; i < 5; ++i) takeJob(job(3), fail);
  assert.deepEqual(asked, []);
  takeJob(job(3, { state: 'done' }), fail);
  await until(() => sheet.value !== null);
  assert.deepEqual(asked, ['api/jobs/3']);
  assert.equal(sheet.value?.id, 3);
  assert.equal(comparison.value, null);
});

test('an older job says nothing any more', async () => {
  begin();
  answer = (path) => job(Number(path.split('/').at(-1)));
  takeJob(job(5, { state: 'done' }), fail);
  takeJob(job(4, { state: 'cancelled' }), fail);
  await until(() => sheet.value !== null);
  assert.deepEqual(asked, ['api/jobs/5']);
  assert.equal(sheet.value?.id, 5);
});

test('a comparison has an address of its own', async () => {
  begin();
  answer = () => job(6, { kind: 'compare', state: 'done' });
  takeJob(job(6, { kind: 'compare', state: 'done' }), fail);
  await until(() => comparison.value !== null);
  assert.deepEqual(asked, ['api/compare/6']);
  assert.equal(comparison.value?.id, 6);
});

test('a page that is loaded anew finds its sheet again', async () => {
  begin();
  answer = () => job(8, { state: 'done' });
  takeJob(job(8, { state: 'done' }), fail);
  await until(() => sheet.value !== null);
  forgetJobs();
  findJobs();
  await until(() => sheet.value !== null);
  assert.equal(sheet.value?.id, 8);
});

test('a sheet that has gone is not spoken of', async () => {
  begin();
  stored.set('sheet of /word/', '9');
  answer = () => null;
  findJobs();
  await until(() => asked.length > 0);
  await settle();
  assert.deepEqual(asked, ['api/jobs/9']);
  assert.equal(sheet.value, null);
});
