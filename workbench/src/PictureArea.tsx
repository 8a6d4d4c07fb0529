// SPDX-License-Identifier: Apache-2.0
import { effect, signal } from '@preact/signals';
import { useEffect, useRef } from 'preact/hooks';
import { BlindBar } from './BlindBar';
import { dragWindow } from './greys';
import { addProbe, area, areaBetween, hover, line, marksOf, numbersOf } from './marks';
import { Picture, type Look } from './picture';
import { GainField } from './ModeButtons';
import { PictureBar } from './PictureBar';
import type { Point, Run } from './protocol';
import { blindOrder } from './blind';
import { findPoint, findTwin } from './points';
import { complain, gain, grey, isBlind, mode, numbers, ownWindow, runA, runB, shownWish, state, swipe, tool } from './store';
import type { Source } from './layer';
import type { Viewport } from './viewport';

// The picture of the page, for keys and bars.
export const picture = signal<Picture | null>(null);
export const viewport = signal<Viewport | null>(null);
// Other screens are left for this one again and again: what was looked at stays where it was.
let lastLook: Look | null = null;
// The run and point whose sharp pixels are on the screen: what a person sees, for tests and probes.
export const onScreen = signal('');

function sourceOf(run: Run | null, point: Point | null): Source | null {
  if (!run || !point || run.width === null || run.height === null) return null;
  // The result has a name that holds while the stages are still on their way.
  const name = point.kind === 'result' ? 'result' : String(point.point);
  return {
    path: `api/runs/${run.id}/points/${name}/view`,
    fields: {},
    frame: { width: run.width, height: run.height },
  };
}

// The runs on both sides; in a blind comparison in an order that nobody knows.
export function sides(): [Run | null, Run | null] {
  const pair: [Run | null, Run | null] = [runA.value, runB.value];
  return isBlind.value && blindOrder.value.isSwapped ? [pair[1], pair[0]] : pair;
}

// Whether there are two things to compare, pixel by pixel.
export function canCompare(one: Run, other: Run): boolean {
  return one.id !== other.id && one.frame === other.frame && one.width === other.width && one.height === other.height;
}

function follow(view: Picture): () => void {
  let lastB: Source | null = null;
  return effect(() => {
    const [left, right] = sides();
    const wish = shownWish.value;
    // A point that is not there yet: what was shown stays.
    const b = sourceOf(right, right ? findPoint(right, wish) : null) ?? (right ? lastB : null);
    lastB = b;
    const fits = left !== null && right !== null && canCompare(left, right);
    const a = fits ? sourceOf(left, findTwin(left, right, wish)) : null;
    const pointOf = (source: Source): string => source.path.replace(/^api\/runs\//, '').replace('/points/', '/').replace('/view', '');
    const difference: Source | null =
      a && b ? { path: 'api/difference', fields: { a: pointOf(a), b: pointOf(b), gain: gain.value }, frame: b.frame } : null;
    view.show({ a, b, difference, mode: mode.value, swipe: swipe.value, window: grey.value, marks: marksOf() });
  });
}

interface Drag {
  kind: 'pan' | 'window' | 'swipe' | 'line' | 'area' | 'probe';
  x: number;
  y: number;
  from: { x: number; y: number };
  moved: boolean;
}

function attach(canvas: HTMLCanvasElement, view: Picture): () => void {
  let drag: Drag | null = null;
  const ratio = (): number => window.devicePixelRatio || 1;
  const placeOf = (event: MouseEvent): { x: number; y: number } => {
    const box = canvas.getBoundingClientRect();
    return { x: (event.clientX - box.left) * ratio(), y: (event.clientY - box.top) * ratio() };
  };
  const kindOf = (event: PointerEvent, x: number): Drag['kind'] => {
    if (event.button === 2) return 'window';
    const rule = view.swipeX;
    if (rule !== null && Math.abs(x - rule) < 10 * ratio()) return 'swipe';
    if (event.button === 1) return 'pan';
    return tool.value === 'hand' ? 'pan' : tool.value;
  };
  const down = (event: PointerEvent): void => {
    const { x, y } = placeOf(event);
    const from = view.at(x, y);
    if (!from) return;
    canvas.setPointerCapture(event.pointerId);
    drag = { kind: kindOf(event, x), x, y, from, moved: false };
    canvas.focus({ preventScroll: true });
  };
  const move = (event: PointerEvent): void => {
    const { x, y } = placeOf(event);
    const at = view.at(x, y);
    const frame = view.frame();
    const isInside = at && frame && at.x >= 0 && at.y >= 0 && at.x < frame.width && at.y < frame.height;
    hover.value = isInside ? { x: Math.floor(at.x), y: Math.floor(at.y), side: view.sideAt(x) } : null;
    if (!drag || !at || !frame) return;
    drag.moved ||= Math.hypot(x - drag.x, y - drag.y) > 3;
    if (drag.kind === 'pan') view.pan(x - drag.x, y - drag.y);
    if (drag.kind === 'swipe') swipe.value = Math.min(1, Math.max(0, x / canvas.width));
    if (drag.kind === 'window')
      ownWindow.value = dragWindow(grey.value, (x - drag.x) / ratio(), (y - drag.y) / ratio(), state.value?.profile.topLevel ?? 4095);
    if (drag.kind === 'line') line.value = { x0: drag.from.x, y0: drag.from.y, x1: at.x, y1: at.y };
    if (drag.kind === 'area') area.value = areaBetween(drag.from, at, frame);
    if (drag.kind === 'pan' || drag.kind === 'window') Object.assign(drag, { x, y });
  };
  const up = (event: PointerEvent): void => {
    const { x, y } = placeOf(event);
    const at = view.at(x, y);
    const frame = view.frame();
    if (drag?.kind === 'probe' && !drag.moved && at && frame && at.x >= 0 && at.y >= 0 && at.x < frame.width && at.y < frame.height) {
      addProbe(at.x, at.y);
      numbers.value = numbersOf('probe', numbers.value);
    }
    if (drag && (drag.kind === 'line' || drag.kind === 'area') && drag.moved) numbers.value = numbersOf(drag.kind, numbers.value);
    drag = null;
  };
  const cancel = (): void => {
    drag = null;
  };
  const wheel = (event: WheelEvent): void => {
    event.preventDefault();
    const { x, y } = placeOf(event);
    view.zoom(x, y, Math.exp(-event.deltaY * (event.deltaMode === 1 ? 0.05 : 0.0015)));
  };
  const twice = (event: MouseEvent): void => {
    if (tool.value !== 'hand') return;
    if (view.isFit) view.setScale(1, placeOf(event));
    else view.fit();
  };
  const noMenu = (event: Event): void => event.preventDefault();
  const leave = (): void => {
    hover.value = null;
  };
  const listeners: [string, (event: never) => void, AddEventListenerOptions?][] = [
    ['pointerdown', down],
    ['pointermove', move],
    ['pointerup', up],
    ['pointercancel', cancel],
    ['pointerleave', leave],
    ['wheel', wheel, { passive: false }],
    ['dblclick', twice],
    ['contextmenu', noMenu],
  ];
  for (const [name, listener, options] of listeners) canvas.addEventListener(name, listener as EventListener, options);
  return () => {
    for (const [name, listener] of listeners) canvas.removeEventListener(name, listener as EventListener);
  };
}

// Says why there is no picture, in words.
function NoPicture() {
  const now = state.value!;
  const run = runB.value;
  const frame = now.frames.find((each) => each.id === now.frame);
  if (frame?.error) {
    return (
      <div class="no-picture" data-test="no-picture">
        <p>{frame.error.what}</p>
        <p class="note">{frame.error.remedy}</p>
      </div>
    );
  }
  if (run && run.points.length > 0) return null;
  return (
    <div class="no-picture" data-test="no-picture">
      <p>{run?.error ? run.error.what : now.error ? now.error.what : 'The first run is on its way.'}</p>
      {(run?.error ?? now.error)?.remedy && <p class="note">{(run?.error ?? now.error)!.remedy}</p>}
    </div>
  );
}

export function PictureArea() {
  const box = useRef<HTMLDivElement>(null);
  const canvas = useRef<HTMLCanvasElement>(null);
  useEffect(() => {
    const view = new Picture(canvas.current!, complain, lastLook);
    view.onView = (next) => {
      viewport.value = next;
    };
    view.onSharp = (source) => {
      onScreen.value = source.path;
    };
    const own = box.current!;
    const resize = new ResizeObserver(() => {
      const area = own.getBoundingClientRect();
      const ratio = window.devicePixelRatio || 1;
      view.resize(Math.round(area.width * ratio), Math.round(area.height * ratio));
    });
    resize.observe(own);
    const detach = attach(canvas.current!, view);
    const end = follow(view);
    picture.value = view;
    return () => {
      picture.value = null;
      resize.disconnect();
      detach();
      end();
      lastLook = view.look();
      view.end();
    };
  }, []);
  return (
    <section class="picture" aria-label="Picture">
      <PictureBar />
      {isBlind.value && <BlindBar />}
      <div class="canvas-box" ref={box}>
        <canvas
          ref={canvas}
          tabIndex={0}
          role="img"
          aria-label="The frame; A left of the line, B right of it"
          data-test="picture"
          data-tool={tool.value}
          data-on-screen={onScreen.value}
        />
        <div class="over">
          <GainField />
        </div>
        <NoPicture />
      </div>
    </section>
  );
}
