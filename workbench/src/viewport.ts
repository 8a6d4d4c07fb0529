// SPDX-License-Identifier: Apache-2.0
//
// The geometry of looking at a frame: where on the screen its pixels lie. All lengths on the screen are pixels of
// the device, so that 100 % is one pixel of the frame on one of the screen.

export interface Size {
  width: number;
  height: number;
}

export interface Rect {
  x: number;
  y: number;
  w: number;
  h: number;
}

// The frame's point that stands in the middle of the view, and how large a pixel of the frame is.
export interface Viewport {
  cx: number;
  cy: number;
  scale: number;
}

export const kLeastScale = 1 / 32;
export const kLargestScale = 64;

export function fitScale(frame: Size, screen: Size): number {
  return Math.min(screen.width / frame.width, screen.height / frame.height);
}

export function fit(frame: Size, screen: Size): Viewport {
  return { cx: frame.width / 2, cy: frame.height / 2, scale: fitScale(frame, screen) };
}

// Where the frame's first pixel begins on the screen. At whole scales that is a whole pixel, so that nothing blurs.
function cornerOf(view: Viewport, screen: Size): { left: number; top: number } {
  const left = screen.width / 2 - view.cx * view.scale;
  const top = screen.height / 2 - view.cy * view.scale;
  return Number.isInteger(view.scale) ? { left: Math.round(left), top: Math.round(top) } : { left, top };
}

// The point of the frame that is drawn at a point of the screen.
export function toFrame(view: Viewport, screen: Size, x: number, y: number): { x: number; y: number } {
  const { left, top } = cornerOf(view, screen);
  return { x: (x - left) / view.scale, y: (y - top) / view.scale };
}

// Where a part of the frame is drawn on the screen.
export function toScreen(view: Viewport, screen: Size, rect: Rect): Rect {
  const { left, top } = cornerOf(view, screen);
  return { x: left + rect.x * view.scale, y: top + rect.y * view.scale, w: rect.w * view.scale, h: rect.h * view.scale };
}

// The point of the frame under (x, y) stays there.
export function zoomAbout(view: Viewport, screen: Size, x: number, y: number, factor: number): Viewport {
  const scale = Math.min(kLargestScale, Math.max(kLeastScale, view.scale * factor));
  const dx = x - screen.width / 2;
  const dy = y - screen.height / 2;
  return { cx: view.cx + dx / view.scale - dx / scale, cy: view.cy + dy / view.scale - dy / scale, scale };
}

export function pan(view: Viewport, dx: number, dy: number): Viewport {
  return { ...view, cx: view.cx - dx / view.scale, cy: view.cy - dy / view.scale };
}

// The frame never leaves the view wholly.
export function keepInside(view: Viewport, frame: Size): Viewport {
  return {
    ...view,
    cx: Math.min(frame.width, Math.max(0, view.cx)),
    cy: Math.min(frame.height, Math.max(0, view.cy)),
  };
}

// What is to be asked of the tool for a view: a part of the frame and its size on the screen. Where pixels of the
// frame are larger than those of the screen they come as they are, and the browser makes them larger.
export function visiblePart(view: Viewport, screen: Size, frame: Size): (Rect & { pw: number; ph: number }) | null {
  const begin = toFrame(view, screen, 0, 0);
  const end = toFrame(view, screen, screen.width, screen.height);
  const x = Math.max(0, Math.floor(begin.x));
  const y = Math.max(0, Math.floor(begin.y));
  const w = Math.min(frame.width, Math.ceil(end.x)) - x;
  const h = Math.min(frame.height, Math.ceil(end.y)) - y;
  if (w <= 0 || h <= 0) return null;
  const scale = Math.min(view.scale, 1);
  return { x, y, w, h, pw: Math.max(1, Math.round(w * scale)), ph: Math.max(1, Math.round(h * scale)) };
}

// The next of the usual scales in a direction: fit, and halves and doubles of 100 %.
export function nextScale(scale: number, direction: 1 | -1): number {
  const power = Math.log2(scale);
  const next = direction > 0 ? Math.floor(power + 1e-6) + 1 : Math.ceil(power - 1e-6) - 1;
  return Math.min(kLargestScale, Math.max(kLeastScale, 2 ** next));
}
