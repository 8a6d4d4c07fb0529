// SPDX-License-Identifier: Apache-2.0
//
// Keeps a text that is edited here and the one that the tool has alike.
import { getJson, post, ToolFailure } from './client';
import { mergeTexts } from './profileText';
import type { TextAnswer } from './protocol';

export interface ToolText {
  get(): Promise<TextAnswer>;
  // Answers the revision that the tool then has; throws a ToolFailure with status 409 where its text is not that of
  // `textRevision` any more.
  put(body: { textRevision: number; text: string }): Promise<{ textRevision: number }>;
}

const profileOfTool: ToolText = {
  get: () => getJson<TextAnswer>('api/text'),
  put: (body) => post<{ textRevision: number }>('api/text', body),
};

const kConflict = 409;

export class TextSync {
  private common: string; // the text on both sides when they last spoke
  private revision: number; // the tool's, of that text
  private wanted = 0; // the newest revision that the tool has told of
  private working: Promise<void> | null = null;

  // first   what the tool has, and the page shows
  // read    the text as it is edited now
  // write   replaces it, without a call of settle() for that
  // onError is told why a text did not reach the tool; the next call tries again
  constructor(
    first: TextAnswer,
    private readonly read: () => string,
    private readonly write: (text: string) => void,
    private readonly onError: (error: unknown) => void,
    private readonly tool: ToolText = profileOfTool,
  ) {
    this.common = first.text;
    this.revision = first.textRevision;
  }

  // The tool has another revision of the text: by a slider, by undo, or by another page.
  follow(revision: number): Promise<void> {
    this.wanted = Math.max(this.wanted, revision);
    return this.settle();
  }

  // Ends when both sides have the same text, or at the first failure.
  settle(): Promise<void> {
    this.working ??= this.work()
      .catch(this.onError)
      .finally(() => (this.working = null));
    return this.working;
  }

  private async work(): Promise<void> {
    for (;;) {
      if (this.wanted > this.revision) await this.take();
      else if (this.read() !== this.common) await this.send();
      else return;
    }
  }

  // What is typed while the answer is on its way stays, too.
  private async take(): Promise<void> {
    this.wanted = 0;
    const { text, textRevision } = await this.tool.get();
    this.write(mergeTexts(this.common, this.read(), text));
    this.common = text;
    this.revision = textRevision;
  }

  private async send(): Promise<void> {
    const text = this.read();
    try {
      const { textRevision } = await this.tool.put({ textRevision: this.revision, text });
      this.common = text;
      this.revision = textRevision;
    } catch (error) {
      if (!(error instanceof ToolFailure && error.status === kConflict)) throw error;
      await this.take();
    }
  }
}
