// SPDX-License-Identifier: Apache-2.0
import { Control } from './Control';
import { isSolo } from './keys';
import type { Place, Point } from './protocol';
import { findPoint } from './points';
import { act, chosen, openPlace, runB, showsStage, state } from './store';

function share(value: number | null): string {
  if (value === null) return '';
  return `changed ${(100 * value).toFixed(1)} %`;
}

function msWords(ms: number | null): string {
  if (ms === null) return '';
  return ms < 1 ? '< 1 ms' : `${Math.round(ms)} ms`;
}

function PlaceHead(props: { place: Place; point: Point | null }) {
  const { place, point } = props;
  const solo = isSolo(place.place);
  return (
    <div class="panel-head">
      <h2>{place.title}</h2>
      <span class="note">
        {[point ? msWords(point.ms) : '', share(point?.changed ?? null)].filter(Boolean).join(', ')}
      </span>
      <span class="gap" />
      {point?.hasFrame && (
        <button
          aria-pressed={showsStage.value}
          data-test="show-stage"
          title="The picture shows this stage, and not the result (F)"
          onClick={() => (showsStage.value = !showsStage.value)}
        >
          show
        </button>
      )}
      {place.canSwitch && (
        <>
          <button
            aria-pressed={solo}
            data-test="solo"
            title="All other stages off (S)"
            onClick={() => act('api/solo', { place: solo ? null : place.place })}
          >
            solo
          </button>
          <button
            aria-pressed={place.off}
            data-test="off"
            title="This stage off, with its keys kept (O)"
            onClick={() => act('api/stage', { place: place.place, off: !place.off })}
          >
            off
          </button>
        </>
      )}
    </div>
  );
}

// What the frame is at a point that belongs to no place.
function PointFigures() {
  const run = runB.value;
  const point = run ? findPoint(run, chosen.value) : null;
  if (!run || !point) return <p class="note">Nothing to tell yet.</p>;
  return (
    <>
      <div class="panel-head">
        <h2>{point.title}</h2>
        <span class="note">{share(point.changed)}</span>
      </div>
      <dl class="figures">
        <div>
          <dt>least</dt>
          <dd>{point.least}</dd>
        </div>
        <div>
          <dt>median</dt>
          <dd>{point.median}</dd>
        </div>
        <div>
          <dt>greatest</dt>
          <dd>{point.greatest}</dd>
        </div>
        <div>
          <dt>size</dt>
          <dd>
            {run.width} × {run.height}
          </dd>
        </div>
        {run.isLow !== null && (
          <div>
            <dt>exposure</dt>
            <dd>{run.isLow ? 'low' : 'not low'}</dd>
          </div>
        )}
      </dl>
      <p class="note">Choose a stage in the strip to change its values.</p>
      <ul class="stage-list">
        {state.value!.places
          .filter((place) => place.off || run.points.some((point) => point.place === place.place))
          .map((place) => (
            <li key={place.place}>
              <button class="plain" onClick={() => (chosen.value = { kind: 'place', place: place.place })}>
                {place.title}
                {place.off ? ' (off)' : ''}
              </button>
            </li>
          ))}
      </ul>
    </>
  );
}

export function Panel() {
  const place = openPlace.value;
  const run = runB.value;
  const point = run && place ? (run.points.find((each) => each.place === place.place) ?? null) : null;
  return (
    <section class="panel" aria-label="Values" data-test="panel" tabIndex={0}>
      {place ? (
        <>
          <PlaceHead place={place} point={point} />
          {place.values.length === 0 && <p class="note">This stage reads no keys.</p>}
          {place.values.map((value) => (
            <Control key={`${place.section} ${value.key}`} section={place.section} value={value} />
          ))}
        </>
      ) : (
        <PointFigures />
      )}
    </section>
  );
}
