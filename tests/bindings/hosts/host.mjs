// SPDX-License-Identifier: Apache-2.0

// As host.cpp, by the module for Node, which VASTRELLINE_MODULE names.

import fs from "node:fs";
import path from "node:path";
import { pathToFileURL } from "node:url";

const vastrelline = await import(pathToFileURL(process.env.VASTRELLINE_MODULE));
const [folder, width, height] = [process.argv[2], Number(process.argv[3]), Number(process.argv[4])];
const at = (...names) => path.join(folder, ...names);

const raw = fs.readFileSync(at("frame.raw"));
const frame = { width, height, pixels: new Uint16Array(width * height) };
frame.pixels.forEach((_, i) => (frame.pixels[i] = raw.readUInt16LE(2 * i)));
const kept = frame.pixels.slice();

function write(name, written) {
  const bytes = Buffer.alloc(2 * written.pixels.length);
  written.pixels.forEach((level, i) => bytes.writeUInt16LE(level, 2 * i));
  fs.writeFileSync(at(name), bytes);
}

async function failureOf(call) {
  try {
    await call();
  } catch (error) {
    if (error instanceof vastrelline.ProcessingError) return error.message.length > 20 ? error.code : "without words";
    if (error instanceof vastrelline.InvalidFrameError) return "frame";
    return error instanceof TypeError || error instanceof RangeError ? "text" : "other";
  }
  return "none";
}

// In the folder, and so many UTF-16 units long; the name begins with a letter of four bytes in UTF-8.
const pathOfUnits = (units) => folder + "\u{1F9B7}.bmp".padStart(units - folder.length, "/");

const dental = at("t\u00E4glich.ini");
const geometry = { Rotation: 0, Flip: 0, RCCutOff: 8, RCCutOffR: 12, FrameWidth: width, FrameHeight: height, ImgCutLeft: 0,
  ImgCutTop: 0, ImgCutRight: 0, ImgCutBottom: 0 };

write("plain.raw", await vastrelline.process(frame, dental, "General"));
write("corrected.raw", await vastrelline.process(frame, dental, "General", { mapping: true, spotCorrection: true }));
const none = vastrelline.exposure();
write("s.raw", await vastrelline.processS(frame, dental, "LowDose", { geometry }));
const figures = vastrelline.exposure();
write("cr.raw", await vastrelline.processCr(frame, at("fixed.ini"), "Cr"));
await vastrelline.saveBitmap(frame, dental, "General", at("n.bmp"));
await vastrelline.saveBitmapS(frame, dental, "LowDose", at("ns.bmp"), { geometry });
await vastrelline.saveBitmapNe(frame, at("extended.ini"), "General", at("ne.bmp"));
write("turned.raw", vastrelline.rotate(frame, 1, 1));
const isKept = kept.every((level, i) => level === frame.pixels[i]);
await vastrelline.processS({ width, height, pixels: new Uint16Array(width * height) }, dental, "LowDose", { geometry });
const { lowRatio } = vastrelline.exposure();

const isRatio = figures.lowRatio === figures.lowSignal / figures.objectTotal;
fs.writeFileSync(at("facts.txt"), [
  `kept ${isKept ? "yes" : "no"}`,
  `before ${none.objectTotal}`,
  `dose ${figures.objectMedian} ${figures.objectTotal} ${figures.lowSignal} ${Number(figures.isLow)} ${Number(isRatio)}`,
  `empty ${Number.isNaN(lowRatio) ? "nan" : "number"}`,
  `profile ${await failureOf(() => vastrelline.process(frame, at("none.ini"), "General"))}`,
  `bitmap ${await failureOf(() => vastrelline.saveBitmap(frame, dental, "General", at("no", "a.bmp")))}`,
  `length ${await failureOf(() => vastrelline.process({ width, height, pixels: kept.subarray(1) }, dental, "General"))}`,
  `null ${await failureOf(() => vastrelline.process(frame, dental, "Gen\0eral"))}`,
  `long ${await failureOf(() => vastrelline.saveBitmapS(frame, dental, "S".repeat(261), at("a.bmp")))}`,
  `strange ${await failureOf(() => vastrelline.saveBitmapS(frame, dental, "Low\uD83E", at("a.bmp")))}`,
  "border " + [
    await failureOf(() => vastrelline.saveBitmapS(frame, dental, "LowDose", pathOfUnits(260), { geometry })),
    await failureOf(() => vastrelline.saveBitmapS(frame, dental, "LowDose", pathOfUnits(261), { geometry })),
  ].join(" "),
  "pathless " + [
    await failureOf(() => vastrelline.saveBitmap(frame, dental, "General", "")),
    await failureOf(() => vastrelline.saveBitmapS(frame, dental, "LowDose", "", { geometry })),
    await failureOf(() => vastrelline.saveBitmapNe(frame, at("extended.ini"), "General", "")),
  ].join(" "),
].join("\n") + "\n");
