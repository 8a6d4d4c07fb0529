// SPDX-License-Identifier: Apache-2.0
//
// What all cells of a sheet look at: one point, as shares of a frame's width and height, so that frames of other sizes
// show the same part of the picture; and one size of a pixel, so that grain can be compared.
import { fit, fitScale, keepInside, nextScale, pan, zoomAbout, type Size, type Viewport } from './viewport';

export interface SheetView {
  u: number;
  v: number;
  scale: number | null; // null: each frame whole
}

export const kWhole: SheetView = { u: 0.5, v: 0.5, scale: null };

export function viewportOf(view: SheetView, frame: Size, screen: Size): Viewport {
  if (view.scale === null) return fit(frame, screen);
  return { cx: view.u * frame.width, cy: view.v * frame.height, scale: view.scale };
}

// A view of one cell for all of them. What is smaller than the whole frame is the whole frame.
function toAll(viewport: Viewport, frame: Size, screen: Size): SheetView {
  if (viewport.scale <= fitScale(frame, screen)) return kWhole;
  const inside = keepInside(viewport, frame);
  return { u: inside.cx / frame.width, v: inside.cy / frame.height, scale: inside.scale };
}

export function zoomSheet(view: SheetView, frame: Size, screen: Size, x: number, y: number, factor: number): SheetView {
  return toAll(zoomAbout(viewportOf(view, frame, screen), screen, x, y, factor), frame, screen);
}

export function panSheet(view: SheetView, frame: Size, screen: Size, dx: number, dy: number): SheetView {
  return view.scale === null ? view : toAll(pan(viewportOf(view, frame, screen), dx, dy), frame, screen);
}

// To the next of the usual sizes; from the whole frames, whose sizes differ, to 100 % or half of it.
export function stepSheet(view: SheetView, direction: 1 | -1): SheetView {
  return { ...view, scale: view.scale === null ? (direction > 0 ? 1 : 0.5) : nextScale(view.scale, direction) };
}

// By pixels of the screen, without a cell: whole frames stay.
export function slideSheet(view: SheetView, dx: number, dy: number, frame: Size): SheetView {
  if (view.scale === null) return view;
  const clamp = (share: number): number => Math.min(1, Math.max(0, share));
  return { ...view, u: clamp(view.u - dx / view.scale / frame.width), v: clamp(view.v - dy / view.scale / frame.height) };
}
