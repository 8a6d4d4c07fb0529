// SPDX-License-Identifier: Apache-2.0
import { useEffect, useRef, useState } from 'preact/hooks';
import { getJson } from './client';
import { ProfileEditor } from './editor';
import { goTo, wantedLine } from './LintList';
import { sectionLine } from './profileText';
import type { DiffAnswer, TextAnswer } from './protocol';
import { DiffLines } from './SaveDialog';
import { complain, link, openPlace, state } from './store';
import { useAnswer } from './useAnswer';

// Where a person is at work: the stage whose values are open, else the section that runs.
function workLine(text: string): number {
  const inPlace = openPlace.value?.values.find((each) => each.line !== null)?.line;
  return inPlace ?? sectionLine(text, state.value!.profile.section) ?? 1;
}

function KeyHelp(props: { word: string }) {
  const { answer } = useAnswer<string>(props.word || null, async (signal) => {
    const told = await getJson<{ text: string | null; nearest?: string }>('api/explain', { key: props.word }, signal);
    return told.text ?? `No key of this name is known.${told.nearest ? ` Did you mean ${told.nearest}?` : ''}`;
  });
  return (
    <section class="key-help" aria-label="Help" data-test="key-help">
      <h2>{props.word || 'Help'}</h2>
      <pre tabIndex={0}>{props.word ? answer : 'Put the cursor on a key.'}</pre>
    </section>
  );
}

function Changes() {
  const revision = state.value!.profile.textRevision;
  const unsaved = state.value!.profile.unsaved;
  const { answer } = useAnswer<DiffAnswer>(`${revision} ${unsaved}`, (signal) => getJson<DiffAnswer>('api/diff', {}, signal));
  return (
    <section class="changes" aria-label="Changes" tabIndex={0}>
      <h2>Changes to the file</h2>
      {!answer || answer.changes.length === 0 ? <p class="note">None.</p> : <DiffLines changes={answer.changes} />}
    </section>
  );
}

export function ProfileScreen() {
  const box = useRef<HTMLDivElement>(null);
  const editor = useRef<ProfileEditor | null>(null);
  const [word, setWord] = useState('');
  const now = state.value!;
  useEffect(() => {
    let isGone = false;
    getJson<TextAnswer>('api/text').then((first) => {
      if (isGone) return;
      const own = new ProfileEditor(box.current!, first, setWord, complain);
      editor.current = own;
      own.follow(state.value!.profile.textRevision);
      own.mark(state.value!.findings);
      own.goTo(wantedLine.value ?? workLine(first.text));
      wantedLine.value = null;
    }, complain);
    return () => {
      isGone = true;
      editor.current?.destroy();
    };
  }, []);
  // A text that a lost link kept here goes to the tool when the link is back.
  useEffect(() => {
    if (link.value === 'up') editor.current?.follow(now.profile.textRevision);
  }, [now.profile.textRevision, link.value]);
  useEffect(() => editor.current?.mark(now.findings), [now.findings]);
  return (
    <main class="profile-screen">
      <div class="editor" ref={box} data-test="editor" />
      <aside>
        <KeyHelp word={word} />
        <Changes />
        <section class="findings" aria-label="Lint" tabIndex={0}>
          <h2>Lint</h2>
          {now.findings.length === 0 && <p class="note">Nothing.</p>}
          {now.findings.map((finding, index) => (
            <button
              key={index}
              class={`finding plain ${finding.severity}`}
              onClick={() => (finding.line > 0 ? editor.current?.goTo(finding.line) : goTo(finding))}
            >
              <span class={`dot ${finding.severity}`} aria-hidden="true" />
              {finding.line > 0 ? `${finding.line}: ` : ''}
              {finding.text} <span class="rule">[{finding.rule}]</span>
            </button>
          ))}
        </section>
      </aside>
    </main>
  );
}

