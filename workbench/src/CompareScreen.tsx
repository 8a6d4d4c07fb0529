// SPDX-License-Identifier: Apache-2.0
//
// The desk against another profile, section or library: stage by stage, and where they part.
import { signal } from '@preact/signals';
import { useEffect } from 'preact/hooks';
import { getJson } from './client';
import { CompareForm } from './CompareForm';
import { comparison, findJobs } from './jobs';
import { GainField, ModeButtons } from './ModeButtons';
import { pair, PairPicture, pairView } from './PairPicture';
import { differenceWords, firstLook, sourcesOf, verdict } from './pairs';
import { WindowField } from './PictureBar';
import type { Comparison, Run } from './protocol';
import { SizeButtons } from './SizeButtons';
import { gain } from './store';
import { useAnswer } from './useAnswer';
import './screens.css';

// The pair of points that is looked at, of one comparison; another one begins with its own.
const look = signal<{ job: number; index: number } | null>(null);

function Points(props: { made: Comparison; shown: number; pixels: number | null }) {
  const { made } = props;
  return (
    <table class="numbers pairs" data-test="pairs">
      <caption class="hidden">Stages of both sides</caption>
      <tbody>
        {made.points.map((each, index) => (
          <tr key={index} class={index === made.firstDifference ? 'parts' : ''} data-test={`pair-${index}`}>
            <th scope="row">
              <button
                class="plain"
                aria-current={index === props.shown ? 'true' : undefined}
                onClick={() => (look.value = { job: made.id, index })}
              >
                {each.title}
              </button>
            </th>
            <td>
              {index === made.firstDifference && <span class="dot warning" title="They part here" />}{' '}
              {differenceWords(each, props.pixels)}
            </td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

function Keys(props: { lines: string[] }) {
  return (
    <section class="compare-keys" aria-label="Keys that differ">
      <h2>Keys</h2>
      {props.lines.length === 0 ? (
        <p class="note">Both sides run the same stages with the same values.</p>
      ) : (
        <pre class="log" tabIndex={0} data-test="compare-keys">
          {props.lines.join('\n')}
        </pre>
      )}
    </section>
  );
}

function Result(props: { made: Comparison }) {
  const { made } = props;
  const isDone = made.state === 'done';
  const words = isDone && made.leftRun !== null && made.rightRun !== null ? `${made.leftRun} ${made.rightRun}` : null;
  const { answer } = useAnswer<[Run, Run]>(words, (signal) =>
    Promise.all([
      getJson<Run>(`api/runs/${made.leftRun}`, {}, signal),
      getJson<Run>(`api/runs/${made.rightRun}`, {}, signal),
    ]),
  );
  const shown = look.value?.job === made.id ? look.value.index : firstLook(made);
  const point = isDone ? (made.points[shown] ?? null) : null;
  const [left, right] = answer ?? [null, null];
  const sources = point ? sourcesOf(point, left, right, gain.value) : { left: null, right: null, difference: null };
  return (
    <>
      <div class="bar">
        <span data-test="verdict" data-state={made.state} role="status">
          {verdict(made)}
        </span>
      </div>
      <div class="tune">
        <section class="picture" aria-label="Picture">
          <div class="bar">
            <ModeButtons />
            <GainField />
            <span class="gap" />
            <WindowField />
            <SizeButtons picture={pair.value} view={pairView.value} />
          </div>
          <PairPicture pair={sources} label={`${point?.title ?? 'Nothing yet'}; left ${made.left}, right ${made.right}`} />
        </section>
        <div class="compare-side">
          <dl class="figures">
            <div>
              <dt>A, left</dt>
              <dd data-test="compare-left">{made.left}</dd>
            </div>
            <div>
              <dt>B, right</dt>
              <dd data-test="compare-right">{made.right}</dd>
            </div>
          </dl>
          <Points made={made} shown={shown} pixels={left?.width && left.height ? left.width * left.height : null} />
          <Keys lines={made.keys} />
        </div>
      </div>
    </>
  );
}

export function CompareScreen() {
  const made = comparison.value;
  useEffect(findJobs, []);
  return (
    <main class="compare-screen" aria-label="Compare">
      <CompareForm />
      {made ? (
        <Result made={made} />
      ) : (
        <div class="empty" data-test="compare-empty">
          <p>A comparison runs the frame by both sides and tells after which stage they part, and by how much.</p>
          <p class="note">The desk stays as it is.</p>
        </div>
      )}
    </main>
  );
}
