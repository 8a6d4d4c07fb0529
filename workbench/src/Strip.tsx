// SPDX-License-Identifier: Apache-2.0
import { useEffect, useRef } from 'preact/hooks';
import { getBytes } from './client';
import { expand } from './greys';
import type { Point, Run } from './protocol';
import { chosenOf } from './points';
import { act, chosen, grey, runB, state } from './store';

const kSide = 64; // of a small picture, in pixels of the page

// A small picture of a point, drawn when the run has it.
function Small(props: { run: Run; point: Point }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  const { run, point } = props;
  const { low, high } = grey.value;
  const isResult = point.kind === 'result';
  useEffect(() => {
    if (!point.hasFrame || run.width === null || run.height === null) return;
    const aborts = new AbortController();
    const scale = (kSide * (window.devicePixelRatio || 1)) / Math.max(run.width, run.height);
    const pw = Math.max(1, Math.round(run.width * scale));
    const ph = Math.max(1, Math.round(run.height * scale));
    const name = isResult ? 'result' : point.point;
    getBytes(
      `api/runs/${run.id}/points/${name}/view`,
      { x: 0, y: 0, w: run.width, h: run.height, pw, ph, low, high },
      aborts.signal,
    ).then(
      (bytes) => {
        const own = canvas.current;
        if (!own) return;
        own.width = pw;
        own.height = ph;
        const image = new ImageData(pw, ph);
        expand(bytes, new Uint32Array(image.data.buffer));
        own.getContext('2d')!.putImageData(image, 0, 0);
      },
      () => {}, // a newer run follows
    );
    return () => aborts.abort();
  }, [run.id, isResult ? -1 : point.point, point.hasFrame, low, high]);
  return <canvas ref={canvas} class="small" aria-hidden="true" />;
}

function severityAt(place: number | null): string {
  const own = (state.value?.findings ?? []).filter((each) => each.place === place && place !== null);
  if (own.some((each) => each.severity === 'error')) return 'error';
  return own.some((each) => each.severity === 'warning') ? 'warning' : '';
}

function Card(props: { run: Run; point: Point }) {
  const { run, point } = props;
  const now = state.value!;
  const isChosen = JSON.stringify(chosen.value) === JSON.stringify(chosenOf(point));
  const severity = severityAt(point.place);
  const place = now.places.find((each) => each.place === point.place);
  return (
    <button
      class="card"
      role="tab"
      aria-selected={isChosen}
      data-test={`point-${point.kind}-${point.place ?? ''}`}
      title={point.hasFrame ? undefined : 'This stage shows no frame'}
      onClick={() => (chosen.value = chosenOf(point))}
    >
      <Small run={run} point={point} />
      <span class="title">
        {place?.position !== null && place?.position !== undefined ? `${place.position} ` : ''}
        {point.title}
      </span>
      <span class="ms">{point.ms === null ? '' : point.ms < 1 ? '< 1 ms' : `${Math.round(point.ms)} ms`}</span>
      {severity && <span class={`dot ${severity}`} title="Lint speaks of this stage" />}
    </button>
  );
}

// Places that are off, or passed over: they are part of the profile, and have no frame.
function OffCards() {
  return (
    <>
      {state.value!.places
        .filter((each) => each.off)
        .map((each) => (
          <button
            key={each.place}
            class="card off"
            role="tab"
            aria-selected={chosen.value.kind === 'place' && chosen.value.place === each.place}
            onClick={() => (chosen.value = { kind: 'place', place: each.place })}
          >
            <span class="title">{each.title}</span>
            <span class="ms">off</span>
          </button>
        ))}
    </>
  );
}

export function Strip() {
  const run = runB.value;
  const places = state.value!.places.filter(
    (each) => each.role === 'settings' || each.role === 'sensor' || (each.role === 'low-settings' && run?.isLow),
  );
  return (
    <section aria-label="Stages">
      <div class="strip" role="tablist" aria-label="Stages" data-test="strip">
        {run?.points.map((point) => (
          <Card key={point.kind === 'result' ? 'result' : point.point} run={run} point={point} />
        ))}
        <OffCards />
        {places.map((each) => (
          <button
            key={`place ${each.place}`}
            class="card settings"
            role="tab"
            aria-selected={chosen.value.kind === 'place' && chosen.value.place === each.place}
            data-test={`place-${each.place}`}
            onClick={() => (chosen.value = { kind: 'place', place: each.place })}
          >
            <span class="title">{each.title}</span>
          </button>
        ))}
        {state.value!.places.some((each) => each.off) && (
          <button class="card all-on" role="tab" aria-selected="false" onClick={() => act('api/solo', { place: null })}>
            All on
          </button>
        )}
      </div>
    </section>
  );
}
