// SPDX-License-Identifier: Apache-2.0
//
// The picture: two layers on a canvas, and what is marked on it. Draws at most once a frame of the screen, and only
// when something has changed.
import type { Window } from './greys';
import { Layer, type Source } from './layer';
import type { Mode } from './store';
import { fit, keepInside, nextScale, pan, toFrame, toScreen, zoomAbout, type Rect, type Size, type Viewport } from './viewport';

export interface Mark {
  kind: 'probe' | 'line' | 'area';
  label: string;
  x0: number;
  y0: number;
  x1: number;
  y1: number;
}

export interface Shown {
  a: Source | null;
  b: Source | null;
  difference: Source | null;
  mode: Mode;
  swipe: number;
  window: Window;
  marks: Mark[];
}

// How a frame is looked at, for who comes back to it.
export interface Look {
  view: Viewport;
  isFit: boolean;
  frame: Size;
}

const kSharpWait = 60; // after the last movement
const kBlink = 600;

export class Picture {
  readonly a: Layer;
  readonly b: Layer;
  readonly d: Layer;
  view: Viewport | null = null; // none: nothing to show yet
  isFit = true;
  private shown: Shown = {
    a: null,
    b: null,
    difference: null,
    mode: 'swipe',
    swipe: 0.5,
    window: { low: 0, high: 4095 },
    marks: [],
  };
  private screen: Size = { width: 1, height: 1 };
  private lastFrame: Size | null = null; // while there is none, too
  private isDrawing = false;
  private sharpTimer = 0;
  private groundTimer = 0;
  private blinkTimer = 0;
  private showsA = false;
  private readonly context: CanvasRenderingContext2D;
  onView: (view: Viewport) => void = () => {};
  onSharp: (source: Source) => void = () => {}; // of what is tuned, not of what it is compared with

  constructor(
    readonly canvas: HTMLCanvasElement,
    onError: (error: unknown) => void,
    look: Look | null = null,
  ) {
    if (look) {
      this.view = look.view;
      this.isFit = look.isFit;
      this.lastFrame = look.frame;
    }
    this.context = canvas.getContext('2d', { alpha: false })!;
    const make = (): Layer => new Layer(() => this.draw(), onError);
    this.a = make();
    this.b = make();
    this.d = make();
  }

  resize(width: number, height: number): void {
    this.screen = { width: Math.max(1, width), height: Math.max(1, height) };
    this.canvas.width = this.screen.width;
    this.canvas.height = this.screen.height;
    if (this.isFit) this.fit();
    this.fetchSoon(0);
    this.draw();
  }

  // The part of the canvas that one side has.
  private half(): Size {
    return this.shown.mode === 'side'
      ? { width: Math.floor(this.screen.width / 2), height: this.screen.height }
      : this.screen;
  }

  frame(): Size | null {
    return (this.b.source ?? this.a.source)?.frame ?? null;
  }

  show(next: Shown): void {
    const before = this.shown;
    this.shown = next;
    const changed: Layer[] = [];
    if (this.a.setSource(next.a)) changed.push(this.a);
    if (this.b.setSource(next.b)) changed.push(this.b);
    if (this.d.setSource(next.difference)) changed.push(this.d);
    const frame = this.frame();
    const isOtherSize = frame !== null && (frame.width !== this.lastFrame?.width || frame.height !== this.lastFrame.height);
    if (frame) this.lastFrame = frame;
    if (isOtherSize) this.isFit = true;
    if (frame && (isOtherSize || !this.view || (this.isFit && next.mode !== before.mode))) this.fit();
    const isOtherWindow = next.window.low !== before.window.low || next.window.high !== before.window.high;
    const isOtherMode = next.mode !== before.mode;
    for (const layer of isOtherWindow || isOtherMode ? this.used() : changed)
      if (this.isUsed(layer)) void this.fetchLayer(layer);
    if (isOtherWindow || changed.length > 0) this.fetchGroundsSoon();
    if (isOtherMode) this.setBlinking(next.mode === 'blink');
    this.draw();
  }

  look(): Look | null {
    return this.view && this.lastFrame ? { view: this.view, isFit: this.isFit, frame: this.lastFrame } : null;
  }

  // Nothing is shown any more: timers and questions end.
  end(): void {
    this.setBlinking(false);
    clearTimeout(this.sharpTimer);
    clearTimeout(this.groundTimer);
    for (const layer of [this.a, this.b, this.d]) layer.setSource(null);
  }

  private used(): Layer[] {
    return this.shown.mode === 'difference' ? [this.d] : [this.a, this.b];
  }

  private isUsed(layer: Layer): boolean {
    return this.used().includes(layer);
  }

  private async fetchLayer(layer: Layer): Promise<void> {
    const source = layer.source;
    if (!this.view || !source) return;
    await layer.fetch(this.view, this.half(), this.shown.window, () => {
      if (layer !== this.a) this.onSharp(source);
    });
  }

  private fetchSoon(wait = kSharpWait): void {
    clearTimeout(this.sharpTimer);
    this.sharpTimer = window.setTimeout(() => {
      for (const layer of this.used()) void this.fetchLayer(layer);
    }, wait);
  }

  // When there is nothing better to do: the picture itself comes first.
  private fetchGroundsSoon(): void {
    clearTimeout(this.groundTimer);
    this.groundTimer = window.setTimeout(() => {
      for (const layer of this.used()) void layer.fetchGround(this.shown.window);
    }, 300);
  }

  private setBlinking(isOn: boolean): void {
    clearInterval(this.blinkTimer);
    this.showsA = false;
    if (!isOn) return;
    this.blinkTimer = window.setInterval(() => {
      this.showsA = !this.showsA;
      this.draw();
    }, kBlink);
  }

  private setView(view: Viewport, isFit: boolean): void {
    const frame = this.frame();
    this.view = frame ? keepInside(view, frame) : view;
    this.isFit = isFit;
    this.onView(this.view);
    this.fetchSoon();
    this.draw();
  }

  fit(): void {
    const frame = this.frame();
    if (frame) this.setView(fit(frame, this.half()), true);
  }

  setScale(scale: number, at?: { x: number; y: number }): void {
    if (!this.view) return;
    const half = this.half();
    const x = at?.x ?? half.width / 2;
    const y = at?.y ?? half.height / 2;
    this.setView(zoomAbout(this.view, half, x, y, scale / this.view.scale), false);
  }

  zoom(x: number, y: number, factor: number): void {
    if (this.view) this.setView(zoomAbout(this.view, this.half(), this.inHalf(x), y, factor), false);
  }

  // To the next of the usual sizes.
  step(direction: 1 | -1): void {
    if (this.view) this.setScale(nextScale(this.view.scale, direction));
  }

  pan(dx: number, dy: number): void {
    if (this.view) this.setView(pan(this.view, dx, dy), false);
  }

  private inHalf(x: number): number {
    const half = this.half();
    return this.shown.mode === 'side' && x >= half.width ? x - half.width : x;
  }

  // The frame's point under a point of the canvas.
  at(x: number, y: number): { x: number; y: number } | null {
    return this.view ? toFrame(this.view, this.half(), this.inHalf(x), y) : null;
  }

  // Whose pixels lie under a point of the canvas.
  sideAt(x: number): 'left' | 'right' {
    if (this.shown.a === null) return 'right';
    if (this.shown.mode === 'side') return x < this.half().width ? 'left' : 'right';
    const rule = this.swipeX;
    return rule !== null && x < rule ? 'left' : 'right';
  }

  get swipeX(): number | null {
    return this.shown.mode === 'swipe' && this.shown.a && this.shown.b ? this.shown.swipe * this.screen.width : null;
  }

  draw(): void {
    if (this.isDrawing) return;
    this.isDrawing = true;
    requestAnimationFrame(() => {
      this.isDrawing = false;
      this.paint();
    });
  }

  private paint(): void {
    const { context, screen, shown } = this;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.fillStyle = getComputedStyle(this.canvas).getPropertyValue('--surround');
    context.fillRect(0, 0, screen.width, screen.height);
    if (!this.view) return;
    const hasA = shown.a !== null;
    if (shown.mode === 'difference') {
      this.paintSide(this.d, 0, screen);
    } else if (shown.mode === 'side') {
      const half = this.half();
      this.paintSide(this.a, 0, half);
      this.paintSide(this.b, half.width, half);
      this.rule(half.width);
    } else if (shown.mode === 'blink') {
      this.paintSide(this.showsA && hasA ? this.a : this.b, 0, screen);
    } else {
      this.paintSide(this.b, 0, screen);
      const x = this.swipeX;
      if (x !== null) {
        this.paintClipped(this.a, x);
        this.rule(x);
      }
    }
  }

  // A layer over the left part of the view.
  private paintClipped(layer: Layer, width: number): void {
    const { context, screen } = this;
    context.save();
    context.beginPath();
    context.rect(0, 0, width, screen.height);
    context.clip();
    context.fillRect(0, 0, screen.width, screen.height);
    layer.draw(context, this.view!, screen);
    this.paintMarks(screen);
    context.restore();
  }

  private paintSide(layer: Layer, left: number, size: Size): void {
    const { context } = this;
    context.save();
    context.beginPath();
    context.rect(left, 0, size.width, size.height);
    context.clip();
    context.translate(left, 0);
    layer.draw(context, this.view!, size);
    this.paintMarks(size);
    context.restore();
  }

  private rule(x: number): void {
    const { context, screen } = this;
    context.fillStyle = '#000';
    context.fillRect(Math.round(x) - 2, 0, 4, screen.height);
    context.fillStyle = '#fff';
    context.fillRect(Math.round(x) - 1, 0, 2, screen.height);
  }

  private paintMarks(size: Size): void {
    const { context } = this;
    const ratio = window.devicePixelRatio || 1;
    context.font = `${12 * ratio}px system-ui, sans-serif`;
    for (const mark of this.shown.marks) {
      const from = toScreen(this.view!, size, { x: mark.x0, y: mark.y0, w: mark.x1 - mark.x0, h: mark.y1 - mark.y0 });
      for (const [colour, width] of [
        ['#000', 4],
        ['#ffd24a', 2],
      ] as const) {
        context.strokeStyle = colour;
        context.lineWidth = width * ratio;
        context.beginPath();
        this.trace(mark.kind, from, ratio);
        context.stroke();
      }
      context.lineWidth = 3 * ratio;
      context.strokeStyle = '#000';
      context.strokeText(mark.label, from.x + 8 * ratio, from.y - 6 * ratio);
      context.fillStyle = '#ffd24a';
      context.fillText(mark.label, from.x + 8 * ratio, from.y - 6 * ratio);
    }
  }

  private trace(kind: Mark['kind'], rect: Rect, ratio: number): void {
    const { context } = this;
    if (kind === 'area') {
      context.rect(rect.x, rect.y, rect.w, rect.h);
    } else if (kind === 'line') {
      context.moveTo(rect.x, rect.y);
      context.lineTo(rect.x + rect.w, rect.y + rect.h);
    } else {
      const reach = 7 * ratio;
      context.moveTo(rect.x - reach, rect.y);
      context.lineTo(rect.x + reach, rect.y);
      context.moveTo(rect.x, rect.y - reach);
      context.lineTo(rect.x, rect.y + reach);
    }
  }
}
