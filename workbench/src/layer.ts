// SPDX-License-Identifier: Apache-2.0
import { getBytes } from './client';
import { expand, type Window } from './greys';
import type { Rect, Size, Viewport } from './viewport';
import { toScreen, visiblePart } from './viewport';

// What a layer shows: an address of the tool that gives views, and the frame's size.
export interface Source {
  path: string;
  fields: Record<string, string | number>;
  frame: Size;
}

export function isSameSource(one: Source | null, other: Source | null): boolean {
  return JSON.stringify(one) === JSON.stringify(other);
}

// A rendering of a part of the frame. Its canvas is used again for the next one of its size.
class Rendering {
  readonly canvas = document.createElement('canvas');
  rect: Rect | null = null; // in the frame; none: nothing is there
  private image: ImageData | null = null;

  put(bytes: Uint8Array, part: Rect & { pw: number; ph: number }): void {
    if (this.canvas.width !== part.pw || this.canvas.height !== part.ph || !this.image) {
      this.canvas.width = part.pw;
      this.canvas.height = part.ph;
      this.image = new ImageData(part.pw, part.ph);
    }
    expand(bytes, new Uint32Array(this.image.data.buffer));
    this.canvas.getContext('2d')!.putImageData(this.image, 0, 0);
    this.rect = { x: part.x, y: part.y, w: part.w, h: part.h };
  }

  clear(): void {
    this.rect = null;
    this.image = null;
    this.canvas.width = 0;
    this.canvas.height = 0;
  }
}

const kGroundSide = 700; // of the whole frame behind the sharp part, at most

// One side of the comparison: the part that is looked at, sharp, over the whole frame, coarse, which fills the gap
// while a new part is on its way.
export class Layer {
  private sharp = new Rendering();
  private ground = new Rendering();
  private aborts: AbortController | null = null;
  private groundAborts: AbortController | null = null;
  source: Source | null = null;

  constructor(
    private readonly onNews: () => void,
    private readonly onError: (error: unknown) => void,
  ) {}

  // Shows something else. Until its pixels are there what was shown stays, if it is a frame of the same size.
  setSource(source: Source | null): boolean {
    if (isSameSource(source, this.source)) return false;
    const keeps =
      source !== null &&
      this.source !== null &&
      source.frame.width === this.source.frame.width &&
      source.frame.height === this.source.frame.height;
    this.source = source;
    // What is on its way is of something else: late, it would be shown as this.
    this.aborts?.abort();
    this.groundAborts?.abort();
    if (!keeps) {
      this.sharp.clear();
      this.ground.clear();
    }
    return true;
  }

  // Asks for what the view shows. `done` is called when it is there.
  async fetch(view: Viewport, screen: Size, window: Window, done: () => void): Promise<void> {
    this.aborts?.abort();
    const source = this.source;
    const part = source ? visiblePart(view, screen, source.frame) : null;
    if (!source || !part) return;
    const own = new AbortController();
    this.aborts = own;
    try {
      const bytes = await getBytes(source.path, { ...source.fields, ...part, low: window.low, high: window.high }, own.signal);
      if (own.signal.aborted) return;
      this.sharp.put(bytes, part);
      this.onNews();
      done();
    } catch (error) {
      if (!own.signal.aborted) this.onError(error);
    }
  }

  async fetchGround(window: Window): Promise<void> {
    this.groundAborts?.abort();
    const source = this.source;
    if (!source) return;
    const own = new AbortController();
    this.groundAborts = own;
    const { width, height } = source.frame;
    const scale = Math.min(1, kGroundSide / Math.max(width, height));
    const part = {
      x: 0,
      y: 0,
      w: width,
      h: height,
      pw: Math.max(1, Math.round(width * scale)),
      ph: Math.max(1, Math.round(height * scale)),
    };
    try {
      const bytes = await getBytes(source.path, { ...source.fields, ...part, low: window.low, high: window.high }, own.signal);
      if (own.signal.aborted) return;
      this.ground.put(bytes, part);
      this.onNews();
    } catch (error) {
      if (!own.signal.aborted) this.onError(error);
    }
  }

  draw(context: CanvasRenderingContext2D, view: Viewport, screen: Size): void {
    for (const rendering of [this.ground, this.sharp]) {
      if (!rendering.rect) continue;
      const to = toScreen(view, screen, rendering.rect);
      context.imageSmoothingEnabled = view.scale < 1 || rendering === this.ground;
      context.drawImage(rendering.canvas, to.x, to.y, to.w, to.h);
    }
  }
}
