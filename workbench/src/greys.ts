// SPDX-License-Identifier: Apache-2.0

// The pixels of a canvas for each grey, as the machine stores four bytes.
const kPixels = new Uint32Array(256);
for (let grey = 0; grey < 256; ++grey) kPixels[grey] = (0xff000000 | (grey * 0x010101)) >>> 0;

// Greys as a canvas takes them.
export function expand(greys: Uint8Array, pixels: Uint32Array): void {
  for (let i = 0; i < greys.length; ++i) pixels[i] = kPixels[greys[i]!]!;
}

export interface Window {
  low: number;
  high: number;
}

export const kTopLevel = 65535;

// A window by its middle and width, as it is dragged; both sides within the levels, at least one apart.
export function dragWindow(window: Window, dx: number, dy: number, top: number): Window {
  const width = Math.max(1, (window.high - window.low) * Math.exp(dx / 250));
  const middle = (window.low + window.high) / 2 + (dy * top) / 600;
  return cleanWindow(Math.round(middle - width / 2), Math.round(middle + width / 2));
}

export function cleanWindow(low: number, high: number): Window {
  const cleanLow = Math.min(kTopLevel - 1, Math.max(0, low));
  return { low: cleanLow, high: Math.min(kTopLevel, Math.max(cleanLow + 1, high)) };
}

// "812:3100", as the tool's own --window; null for anything else.
export function parseWindow(text: string): Window | null {
  const found = /^\s*(\d{1,5})\s*:\s*(\d{1,5})\s*$/.exec(text);
  if (!found) return null;
  const low = Number(found[1]);
  const high = Number(found[2]);
  return low < high && high <= kTopLevel ? { low, high } : null;
}
