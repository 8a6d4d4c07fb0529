// SPDX-License-Identifier: Apache-2.0
import { signal } from '@preact/signals';
import { useEffect, useRef } from 'preact/hooks';
import { dragWindow } from './greys';
import type { Source } from './layer';
import { Picture } from './picture';
import { complain, grey, mode, ownWindow, state, swipe } from './store';
import type { Viewport } from './viewport';

// The picture of a comparison, for keys and bars.
export const pair = signal<Picture | null>(null);
export const pairView = signal<Viewport | null>(null);

export interface Pair {
  left: Source | null;
  right: Source | null;
  difference: Source | null;
}

// Drag moves, the wheel zooms, the right button changes the window, and the line between both sides can be drawn.
function attach(canvas: HTMLCanvasElement, view: Picture): () => void {
  let drag: { kind: 'pan' | 'window' | 'swipe'; x: number; y: number } | null = null;
  const ratio = (): number => window.devicePixelRatio || 1;
  const placeOf = (event: MouseEvent): { x: number; y: number } => {
    const box = canvas.getBoundingClientRect();
    return { x: (event.clientX - box.left) * ratio(), y: (event.clientY - box.top) * ratio() };
  };
  const down = (event: PointerEvent): void => {
    const { x, y } = placeOf(event);
    canvas.setPointerCapture(event.pointerId);
    canvas.focus({ preventScroll: true });
    const rule = view.swipeX;
    const isOnRule = rule !== null && Math.abs(x - rule) < 10 * ratio();
    drag = { kind: event.button === 2 ? 'window' : isOnRule ? 'swipe' : 'pan', x, y };
  };
  const move = (event: PointerEvent): void => {
    if (!drag) return;
    const { x, y } = placeOf(event);
    const dx = x - drag.x;
    const dy = y - drag.y;
    if (drag.kind === 'pan') view.pan(dx, dy);
    if (drag.kind === 'swipe') swipe.value = Math.min(1, Math.max(0, x / canvas.width));
    if (drag.kind === 'window')
      ownWindow.value = dragWindow(grey.value, dx / ratio(), dy / ratio(), state.value?.profile.topLevel ?? 4095);
    drag = { ...drag, x, y };
  };
  const up = (): void => {
    drag = null;
  };
  const wheel = (event: WheelEvent): void => {
    event.preventDefault();
    const { x, y } = placeOf(event);
    view.zoom(x, y, Math.exp(-event.deltaY * (event.deltaMode === 1 ? 0.05 : 0.0015)));
  };
  const twice = (event: MouseEvent): void => (view.isFit ? view.setScale(1, placeOf(event)) : view.fit());
  const aborts = new AbortController();
  const { signal } = aborts;
  canvas.addEventListener('pointerdown', down, { signal });
  canvas.addEventListener('pointermove', move, { signal });
  canvas.addEventListener('pointerup', up, { signal });
  canvas.addEventListener('pointercancel', up, { signal });
  canvas.addEventListener('wheel', wheel, { signal, passive: false });
  canvas.addEventListener('dblclick', twice, { signal });
  canvas.addEventListener('contextmenu', (event) => event.preventDefault(), { signal });
  return () => aborts.abort();
}

export function PairPicture(props: { pair: Pair; label: string }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  const picture = useRef<Picture | null>(null);
  const { left, right, difference } = props.pair;
  useEffect(() => {
    const view = new Picture(canvas.current!, complain);
    view.onView = (next) => {
      pairView.value = next;
    };
    const box = canvas.current!.parentElement!;
    const resize = new ResizeObserver(() => {
      const size = box.getBoundingClientRect();
      const ratio = window.devicePixelRatio || 1;
      view.resize(Math.round(size.width * ratio), Math.round(size.height * ratio));
    });
    resize.observe(box);
    const detach = attach(canvas.current!, view);
    picture.current = view;
    pair.value = view;
    return () => {
      resize.disconnect();
      detach();
      view.end();
      pair.value = null;
      pairView.value = null;
    };
  }, []);
  const words = JSON.stringify([left, right, difference]);
  useEffect(() => {
    picture.current!.show({
      a: right ? left : null,
      b: right ?? left,
      difference,
      mode: mode.value,
      swipe: swipe.value,
      window: grey.value,
      marks: [],
    });
  }, [words, mode.value, swipe.value, grey.value]);
  return (
    <div class="canvas-box">
      <canvas ref={canvas} tabIndex={0} role="img" aria-label={props.label} data-test="pair" />
      {(left === null) !== (right === null) && (
        <p class="pair-note" data-test="pair-note">
          {left === null ? 'Only the right side has a frame here.' : 'Only the left side has a frame here.'}
        </p>
      )}
    </div>
  );
}
