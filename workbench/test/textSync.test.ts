// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ToolFailure } from '../src/client';
import { mergeTexts } from '../src/profileText';
import { TextSync, type ToolText } from '../src/textSync';

// A tool whose answers wait until a test lets them go, and an editor beside it.
class Pair {
  text = 'A=1\nB=2\n';
  shown = this.text;
  revision = 5;
  gate: Promise<void> = Promise.resolve();
  isDown = false;
  said: unknown[] = [];
  calls: string[] = [];
  private readonly tool: ToolText = {
    get: async () => {
      this.calls.push('get');
      const answer = { text: this.text, textRevision: this.revision, saved: '' };
      await this.gate;
      return answer;
    },
    put: async ({ textRevision, text }) => {
      this.calls.push('put');
      if (this.isDown) throw new TypeError('Failed to fetch');
      const isStale = textRevision !== this.revision;
      if (!isStale) this.change(text);
      const answer = { textRevision: this.revision };
      await this.gate;
      if (isStale) throw new ToolFailure(409, { where: '', what: 'has been changed', remedy: '' });
      return answer;
    },
  };
  readonly sync = new TextSync(
    { text: this.text, textRevision: this.revision, saved: '' },
    () => this.shown,
    (text) => (this.shown = text),
    (error) => this.said.push(error),
    this.tool,
  );

  change(text: string): void {
    if (text !== this.text) ++this.revision;
    this.text = text;
  }

  // Answers wait until the returned function is called.
  close(): () => void {
    let open = (): void => {};
    this.gate = new Promise((resolve) => (open = resolve));
    return open;
  }
}

test('what is typed reaches the tool once', async () => {
  const pair = new Pair();
  pair.shown = 'A=1\nB=3\n';
  await pair.sync.settle();
  await pair.sync.settle();
  assert.equal(pair.text, 'A=1\nB=3\n');
  assert.deepEqual(pair.calls, ['put']);
  await pair.sync.follow(pair.revision);
  assert.deepEqual(pair.calls, ['put']);
});

test('what the tool has is shown', async () => {
  const pair = new Pair();
  pair.change('A=7\nB=2\n');
  await pair.sync.follow(pair.revision);
  assert.equal(pair.shown, 'A=7\nB=2\n');
  assert.deepEqual(pair.calls, ['get']);
});

test('what is typed while an answer is on its way stays, and follows it', async () => {
  const pair = new Pair();
  const open = pair.close();
  pair.change('A=7\nB=2\n');
  const done = pair.sync.follow(pair.revision);
  pair.shown = 'A=1\nB=2\nC=3\n';
  open();
  await done;
  assert.equal(pair.shown, 'A=7\nB=2\nC=3\n');
  assert.equal(pair.text, pair.shown);
});

test('what is typed while a text is on its way is sent after it', async () => {
  const pair = new Pair();
  const open = pair.close();
  pair.shown = 'A=1\nB=3\n';
  const done = pair.sync.settle();
  pair.shown = 'A=1\nB=34\n';
  assert.equal(pair.sync.settle(), done);
  open();
  await done;
  assert.equal(pair.text, 'A=1\nB=34\n');
  assert.deepEqual(pair.calls, ['put', 'put']);
});

test('a change that the tool tells of while a text is on its way is not missed', async () => {
  const pair = new Pair();
  const open = pair.close();
  pair.shown = 'A=1\nB=3\n';
  const done = pair.sync.settle();
  pair.change('A=9\nB=3\n');
  void pair.sync.follow(pair.revision);
  open();
  await done;
  assert.equal(pair.shown, 'A=9\nB=3\n');
  assert.equal(pair.text, pair.shown);
});

test('who was faster elsewhere in the text is not written over', async () => {
  const pair = new Pair();
  pair.change('A=7\nB=2\n');
  pair.shown = 'A=1\nB=3\n';
  await pair.sync.settle();
  assert.equal(pair.text, 'A=7\nB=3\n');
  assert.equal(pair.shown, pair.text);
  assert.deepEqual(pair.said, []);
});

test('what did not reach the tool is told, kept and sent with the next', async () => {
  const pair = new Pair();
  pair.isDown = true;
  pair.shown = 'A=1\nB=3\n';
  await pair.sync.settle();
  assert.equal(pair.said.length, 1);
  assert.equal(pair.shown, 'A=1\nB=3\n');
  pair.isDown = false;
  await pair.sync.follow(pair.revision);
  assert.equal(pair.text, 'A=1\nB=3\n');
});

test('a tool that tells of a revision it does not have is asked once', async () => {
  const pair = new Pair();
  await pair.sync.follow(99);
  assert.deepEqual(pair.calls, ['get']);
});

test('two changes to one text are both kept where they do not meet', () => {
  const common = 'A=1\nB=2\nC=3\n';
  assert.equal(mergeTexts(common, common, 'X'), 'X');
  assert.equal(mergeTexts(common, 'X', common), 'X');
  assert.equal(mergeTexts(common, 'A=10\nB=2\nC=3\n', 'A=1\nB=2\nC=4\n'), 'A=10\nB=2\nC=4\n');
  assert.equal(mergeTexts(common, 'A=1\nB=2\nC=4\n', 'A=10\nB=2\nC=3\n'), 'A=10\nB=2\nC=4\n');
  assert.equal(mergeTexts(common, 'A=1\nB=5\nC=3\n', 'A=1\nB=6\nC=3\n'), 'A=1\nB=5\nC=3\n');
  assert.equal(mergeTexts(common, 'A=1\nB=2\nC=3\nD=4\n', 'A=1\nB=2\nC=3\nE=5\n'), 'A=1\nB=2\nC=3\nD=4\n');
});
