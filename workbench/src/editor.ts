// SPDX-License-Identifier: Apache-2.0
//
// The profile's text in an editor. What is typed goes to the tool, and what changes there comes back.
import { autocompletion, closeCompletion, type CompletionContext, type CompletionResult } from '@codemirror/autocomplete';
import { defaultKeymap, indentWithTab } from '@codemirror/commands';
import { HighlightStyle, StreamLanguage, syntaxHighlighting } from '@codemirror/language';
import { lintGutter, setDiagnostics, type Diagnostic } from '@codemirror/lint';
import { highlightSelectionMatches, searchKeymap } from '@codemirror/search';
import { Annotation, EditorState } from '@codemirror/state';
import { EditorView, highlightActiveLine, keymap, lineNumbers } from '@codemirror/view';
import { tags } from '@lezer/highlight';
import { getJson, post } from './client';
import { keyOf, replaceSpan } from './profileText';
import type { Finding, TextAnswer } from './protocol';
import { TextSync } from './textSync';

const fromTool = Annotation.define<boolean>();

const ini = StreamLanguage.define<{ isValue: boolean }>({
  startState: () => ({ isValue: false }),
  token(stream, own) {
    if (stream.sol()) own.isValue = false;
    if (stream.sol() && stream.match(/^\s*;.*/)) return 'comment';
    if (stream.sol() && stream.match(/^\s*\[.*\]/)) return 'heading';
    if (own.isValue) {
      stream.skipToEnd();
      return 'string';
    }
    if (stream.eat('=')) {
      own.isValue = true;
      return 'operator';
    }
    stream.match(/^[^=]+/) || stream.next();
    return 'propertyName';
  },
});

const style = HighlightStyle.define([
  { tag: tags.comment, class: 'cm-comment' },
  { tag: tags.heading, class: 'cm-heading' },
  { tag: tags.propertyName, class: 'cm-key' },
  { tag: tags.string, class: 'cm-value' },
]);

async function complete(context: CompletionContext): Promise<CompletionResult | null> {
  const line = context.state.doc.lineAt(context.pos);
  const before = line.text.slice(0, context.pos - line.from);
  if (before.includes('=') || before.trimStart().startsWith(';')) return null;
  if (!context.explicit && before.trim().length < 2) return null;
  const section = sectionAt(context.state, line.number);
  const { items } = await getJson<{ items: { label: string; detail: string; info: string }[] }>('api/complete', {
    section,
    text: before.trimStart(),
  });
  const from = line.from + before.length - before.trimStart().length;
  return { from, options: items.map((each) => ({ ...each, type: 'property' })), validFor: /^\[?\w*$/ };
}

function sectionAt(state: EditorState, lineNumber: number): string {
  for (let number = lineNumber; number > 0; --number) {
    const found = /^\s*\[(.*)\]/.exec(state.doc.line(number).text);
    if (found) return found[1]!;
  }
  return '';
}

// The content policy takes the editor's own styles by this alone.
function styleNonce(): string {
  return document.querySelector<HTMLMetaElement>('meta[name=style-nonce]')?.content ?? '';
}

const kSendWait = 100; // milliseconds after a key, so that a word is one message

export class ProfileEditor {
  private readonly view: EditorView;
  private readonly sync: TextSync;
  private timer = 0;

  // There is no editor before its text is here: what is typed into an empty one would be lost, or take the place of the
  // profile.
  constructor(
    parent: HTMLElement,
    first: TextAnswer,
    private readonly onWord: (word: string) => void,
    private readonly onError: (error: unknown) => void,
  ) {
    this.view = new EditorView({
      parent,
      state: EditorState.create({
        doc: first.text,
        extensions: [
          EditorView.cspNonce.of(styleNonce()),
          lineNumbers(),
          highlightActiveLine(),
          highlightSelectionMatches(),
          ini,
          syntaxHighlighting(style),
          lintGutter(),
          autocompletion({ override: [complete] }),
          // Undo is the tool's, so that a step is the same in the text and at the sliders.
          keymap.of([
            { key: 'Mod-z', run: () => this.history('api/undo'), preventDefault: true },
            { key: 'Mod-y', run: () => this.history('api/redo'), preventDefault: true },
            { key: 'Mod-Shift-z', run: () => this.history('api/redo'), preventDefault: true },
            ...searchKeymap,
            ...defaultKeymap,
            indentWithTab,
          ]),
          EditorView.contentAttributes.of({ 'aria-label': 'The text of the profile', tabindex: '0' }),
          EditorView.updateListener.of((update) => {
            if (update.docChanged && !update.transactions.some((each) => each.annotation(fromTool))) this.sendSoon();
            if (update.selectionSet || update.docChanged) this.tellWord();
          }),
        ],
      }),
    });
    this.sync = new TextSync(
      first,
      () => this.view.state.doc.toString(),
      (text) => this.put(text),
      onError,
    );
    this.view.focus();
  }

  private history(path: string): boolean {
    void this.flush().then(() => post(path).catch(this.onError));
    return true;
  }

  private tellWord(): void {
    const { state } = this.view;
    this.onWord(keyOf(state.doc.lineAt(state.selection.main.head).text));
  }

  // Another text, without moving the cursor more than it must.
  private put(text: string): void {
    const span = replaceSpan(this.view.state.doc.toString(), text);
    if (span) this.view.dispatch({ changes: span, annotations: fromTool.of(true) });
  }

  // The tool has another revision of the text.
  follow(revision: number): void {
    void this.sync.follow(revision);
  }

  private sendSoon(): void {
    clearTimeout(this.timer);
    this.timer = window.setTimeout(() => void this.flush(), kSendWait);
  }

  private flush(): Promise<void> {
    clearTimeout(this.timer);
    return this.sync.settle();
  }

  mark(findings: Finding[]): void {
    const { doc } = this.view.state;
    const diagnostics: Diagnostic[] = findings
      .filter((each) => each.line > 0 && each.line <= doc.lines)
      .map((each) => {
        const line = doc.line(each.line);
        const from = Math.min(line.from + each.column - 1, line.to);
        return {
          from,
          to: line.to,
          severity: each.severity === 'note' ? 'info' : each.severity,
          message: `${each.text} [${each.rule}]`,
        };
      });
    this.view.dispatch(setDiagnostics(this.view.state, diagnostics));
  }

  goTo(number: number): void {
    const line = this.view.state.doc.line(Math.min(number, this.view.state.doc.lines));
    this.view.dispatch({ selection: { anchor: line.from }, effects: EditorView.scrollIntoView(line.from, { y: 'center' }) });
    this.view.focus();
  }

  destroy(): void {
    closeCompletion(this.view);
    void this.flush();
    this.view.destroy();
  }
}
