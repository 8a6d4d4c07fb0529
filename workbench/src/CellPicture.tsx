// SPDX-License-Identifier: Apache-2.0
import { effect, signal } from '@preact/signals';
import { useEffect, useRef } from 'preact/hooks';
import { Layer, type Source } from './layer';
import { kWhole, panSheet, viewportOf, zoomSheet, type SheetView } from './sheetView';
import { complain, grey, room } from './store';
import type { Size } from './viewport';

export const sheetView = signal<SheetView>(kWhole);

const kSharpWait = 60; // after the last movement

// A picture of a cell. It holds pixels only while it can be seen: a sheet of hundreds of frames would not fit otherwise.
class CellCanvas {
  private readonly layer: Layer;
  private timer = 0;
  private isDrawing = false;
  private isSeen = false;

  constructor(
    private readonly canvas: HTMLCanvasElement,
    private readonly source: Source,
  ) {
    this.layer = new Layer(() => this.draw(), complain);
  }

  get screen(): Size {
    return { width: this.canvas.width, height: this.canvas.height };
  }

  setSeen(isSeen: boolean): void {
    this.isSeen = isSeen;
    const box = this.canvas.getBoundingClientRect();
    const ratio = window.devicePixelRatio || 1;
    this.canvas.width = isSeen ? Math.max(1, Math.round(box.width * ratio)) : 0;
    this.canvas.height = isSeen ? Math.max(1, Math.round(box.height * ratio)) : 0;
    this.layer.setSource(isSeen ? this.source : null);
    this.refresh(0);
  }

  refresh(wait = kSharpWait): void {
    clearTimeout(this.timer);
    this.timer = window.setTimeout(() => {
      void this.layer.fetch(this.view(), this.screen, grey.value, () => {});
    }, wait);
    this.draw();
  }

  private view() {
    return viewportOf(sheetView.value, this.source.frame, this.screen);
  }

  private draw(): void {
    if (this.isDrawing || !this.isSeen) return;
    this.isDrawing = true;
    requestAnimationFrame(() => {
      this.isDrawing = false;
      const context = this.canvas.getContext('2d', { alpha: false })!;
      context.fillStyle = getComputedStyle(this.canvas).getPropertyValue('--surround');
      context.fillRect(0, 0, this.canvas.width, this.canvas.height);
      this.layer.draw(context, this.view(), this.screen);
    });
  }

  end(): void {
    this.setSeen(false);
    clearTimeout(this.timer);
  }
}

// A drag moves all cells, the wheel with Ctrl zooms them about the pointer; without it the wheel scrolls the sheet.
function attach(canvas: HTMLCanvasElement, frame: Size): () => void {
  let last: { x: number; y: number } | null = null;
  const ratio = (): number => window.devicePixelRatio || 1;
  const screen = (): Size => ({ width: canvas.width, height: canvas.height });
  const down = (event: PointerEvent): void => {
    if (event.button !== 0 || sheetView.value.scale === null) return;
    canvas.setPointerCapture(event.pointerId);
    last = { x: event.clientX, y: event.clientY };
  };
  const move = (event: PointerEvent): void => {
    if (!last) return;
    const dx = (event.clientX - last.x) * ratio();
    const dy = (event.clientY - last.y) * ratio();
    last = { x: event.clientX, y: event.clientY };
    sheetView.value = panSheet(sheetView.value, frame, screen(), dx, dy);
  };
  const up = (): void => {
    last = null;
  };
  const wheel = (event: WheelEvent): void => {
    if (!event.ctrlKey) return;
    event.preventDefault();
    const box = canvas.getBoundingClientRect();
    const x = (event.clientX - box.left) * ratio();
    const y = (event.clientY - box.top) * ratio();
    sheetView.value = zoomSheet(sheetView.value, frame, screen(), x, y, Math.exp(-event.deltaY * 0.003));
  };
  const aborts = new AbortController();
  const { signal } = aborts;
  canvas.addEventListener('pointerdown', down, { signal });
  canvas.addEventListener('pointermove', move, { signal });
  canvas.addEventListener('pointerup', up, { signal });
  canvas.addEventListener('pointercancel', up, { signal });
  canvas.addEventListener('wheel', wheel, { signal, passive: false });
  return () => aborts.abort();
}

// `width` and `height` in pixels of the page: a change of them draws anew.
export function CellPicture(props: { source: Source; label: string; width: number; height: number }) {
  const element = useRef<HTMLCanvasElement>(null);
  const { source } = props;
  useEffect(() => {
    const canvas = element.current!;
    const own = new CellCanvas(canvas, source);
    const detach = attach(canvas, source.frame);
    const seen = new IntersectionObserver((entries) => own.setSeen(entries.at(-1)!.isIntersecting), { rootMargin: '200px' });
    seen.observe(canvas);
    let isFirst = true;
    const end = effect(() => {
      void sheetView.value;
      void grey.value;
      void room.value;
      if (!isFirst) own.refresh();
      isFirst = false;
    });
    return () => {
      seen.disconnect();
      end();
      detach();
      own.end();
    };
  }, [JSON.stringify(source), props.width, props.height]);
  return (
    <canvas
      ref={element}
      class="cell-canvas"
      role="img"
      aria-label={props.label}
      style={{ width: `${props.width}px`, height: `${props.height}px` }}
    />
  );
}
