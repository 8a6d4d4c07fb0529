// SPDX-License-Identifier: Apache-2.0

"use strict";

// The viewers of two frames. Each has its frames inside as 16-bit PNG files; they are read here and not by the
// browser, so that every level is what it was, and windows and differences are those of the levels.

// The levels of a grey PNG of 16 bits, as the tool writes it.
async function readLevels(text) {
  const letters = atob(text.trim());
  const file = Uint8Array.from(letters, (letter) => letter.charCodeAt(0));
  const view = new DataView(file.buffer);
  const width = view.getUint32(16);
  const height = view.getUint32(20);
  const parts = [];
  for (let at = 8; at < file.length; ) {
    const length = view.getUint32(at);
    if (view.getUint32(at + 4) === 0x49444154) parts.push(file.subarray(at + 8, at + 8 + length));  // IDAT
    at += length + 12;
  }
  const stream = new Blob(parts).stream().pipeThrough(new DecompressionStream("deflate"));
  const bytes = new Uint8Array(await new Response(stream).arrayBuffer());
  return { width, height, levels: unfilter(bytes, width, height) };
}

function paeth(a, b, c) {
  const p = a + b - c;
  const pa = Math.abs(p - a), pb = Math.abs(p - b), pc = Math.abs(p - c);
  return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

function unfilter(bytes, width, height) {
  const row = 2 * width;
  const levels = new Uint16Array(width * height);
  let above = new Uint8Array(row);
  for (let y = 0; y < height; ++y) {
    const filter = bytes[y * (row + 1)];
    const own = bytes.subarray(y * (row + 1) + 1, (y + 1) * (row + 1));
    for (let i = 0; i < row; ++i) {
      const a = i > 1 ? own[i - 2] : 0, b = above[i], c = i > 1 ? above[i - 2] : 0;
      const add = filter === 1 ? a : filter === 2 ? b : filter === 3 ? (a + b) >> 1 : filter === 4 ? paeth(a, b, c) : 0;
      own[i] += add;
    }
    for (let x = 0; x < width; ++x) levels[y * width + x] = (own[2 * x] << 8) | own[2 * x + 1];
    above = own;
  }
  return levels;
}

function makeCanvas(width, height) {
  const canvas = document.createElement("canvas");
  canvas.width = width;
  canvas.height = height;
  return canvas;
}

// A frame through a window, as RenderThroughWindow of the tool does it.
function renderWindow(picture, low, high) {
  const shades = new Uint32Array(65536);
  const span = high - low;
  for (let level = 0; level < 65536; ++level) {
    const above = Math.min(Math.max(level - low, 0), span);
    const grey = Math.floor((2 * above * 255 + span) / (2 * span));
    shades[level] = 0xff000000 | (grey << 16) | (grey << 8) | grey;
  }
  picture.canvas = picture.canvas || makeCanvas(picture.width, picture.height);
  const context = picture.canvas.getContext("2d");
  const image = context.createImageData(picture.width, picture.height);
  const pixels = new Uint32Array(image.data.buffer);
  for (let i = 0; i < pixels.length; ++i) pixels[i] = shades[picture.levels[i]];
  context.putImageData(image, 0, 0);
}

// Half as wide and high; of four differences the largest stays, so that none is lost by zooming out.
function halve(source) {
  const width = Math.ceil(source.width / 2), height = Math.ceil(source.height / 2);
  const values = new Int32Array(width * height);
  for (let y = 0; y < source.height; ++y) {
    for (let x = 0; x < source.width; ++x) {
      const value = source.values[y * source.width + x];
      const at = (y >> 1) * width + (x >> 1);
      if (Math.abs(value) > Math.abs(values[at])) values[at] = value;
    }
  }
  return { width, height, values };
}

function renderDifference(step, gain) {
  step.canvas = step.canvas || makeCanvas(step.width, step.height);
  step.gain = gain;
  const context = step.canvas.getContext("2d");
  const image = context.createImageData(step.width, step.height);
  const data = image.data;
  for (let i = 0; i < step.values.length; ++i) {
    const value = step.values[i];
    const size = value === 0 ? 0 : Math.min(255, Math.max(1, Math.abs(value) * gain));
    data[4 * i] = value > 0 ? size : 0.3 * size;
    data[4 * i + 1] = 0.62 * size;
    data[4 * i + 2] = value > 0 ? 0.15 * size : size;
    data[4 * i + 3] = 255;
  }
  context.putImageData(image, 0, 0);
}
