// SPDX-License-Identifier: Apache-2.0

// Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image: the library's eight functions for Node, by
// koffi. A frame is {width, height, pixels}: a Uint16Array of width * height levels, row after row from the top. What
// the caller hands over stays as it is. VASTRELLINE_LIBRARY names the library's file; else the system looks for it.

import koffi from "koffi";

const windows = process.platform === "win32";
const library = koffi.load(process.env.VASTRELLINE_LIBRARY || (windows ? "Vastrelline.dll" : "libvastrelline.so.1"));

const fields = ["Rotation", "Flip", "RCCutOff", "RCCutOffR", "FrameWidth", "FrameHeight", "ImgCutLeft", "ImgCutTop",
  "ImgCutRight", "ImgCutBottom"];
koffi.struct("SensorGeometry", Object.fromEntries(fields.map((name) => [name, "int32_t"])));

const frameArguments = "int32_t width, int32_t height, const char *iniPath, const char *sectionName";
const switches = "uint8_t applyMapping, uint8_t applySpotCorrection";
const functions = Object.fromEntries([
  ["ImageProcessing", `uint16_t *input, uint16_t *output, ${frameArguments}, ${switches}`],
  ["ImageProcessingS", `uint16_t *input, uint16_t *output, ${frameArguments}, ${switches}, const SensorGeometry *geometry`],
  ["ImageProcessing_N", `uint16_t *input, ${frameArguments}, ${switches}, const char *bitmapPath`],
  ["ImageProcessing_NS", `uint16_t *input, ${frameArguments}, ${switches}, const char *bitmapPath, ` +
    "const SensorGeometry *geometry"],
  ["ImageProcessing_NE", `uint16_t *input, ${frameArguments}, ${switches}, const char *bitmapPath, ` +
    "const char *sensorFolder, int32_t sensorMode"],
  ["ImageProcessingCR", `uint16_t *input, uint16_t *output, ${frameArguments}`],
  ["RotateImage", "uint16_t *frame, int32_t width, int32_t height, int32_t rotation, int32_t flip"],
].map(([name, list]) => [name, library.func(`int32_t __cdecl ${name}(${list})`)]));
const getDose = library.func("void __cdecl Getdose_ImageInfo(_Out_ int32_t *objectMedian, _Out_ int32_t *objectTotal, " +
  "_Out_ int32_t *lowSignal, _Out_ double *lowRatio, _Out_ int32_t *lowExposure)");

const words = {
  1: "the profile cannot be opened and read",
  2: "there is no input",
  3: "there is no output",
  4: "the profile selects a chain that needs a section, and none is named",
  5: "the frame was processed, but the bitmap could not be saved",
  6: "memory ran out, or the system failed to read the profile",
};

/** The library returned another code than 0: `code` has it. */
export class ProcessingError extends Error {
  constructor(name, code, profile) {
    super(`${name} returned ${code}: ${words[code] ?? "an unknown code"} (${profile})`);
    this.code = code;
  }
}

/** Sizes that are none, or another number of pixels than they say. */
export class InvalidFrameError extends TypeError {}

function copyOf(frame) {
  const { width, height, pixels } = frame;
  if (!Number.isInteger(width) || !Number.isInteger(height) || width < 1 || height < 1 || width * height >= 2 ** 29)
    throw new InvalidFrameError(`a frame has between 1 and 536870911 pixels, not ${width} x ${height}`);
  if (!(pixels instanceof Uint16Array) || pixels.length !== width * height)
    throw new InvalidFrameError(`a frame of ${width} x ${height} needs a Uint16Array of as many levels`);
  return { width, height, pixels: pixels.slice() };
}

function required(value) {
  if (typeof value !== "string" || value.includes("\0")) throw new TypeError("a text without null characters is needed");
  // UTF-8 has none: koffi would put a replacement character there, and with it another file.
  if (/\p{Surrogate}/u.test(value)) throw new RangeError("a text has half of a surrogate pair, which UTF-8 does not hold");
  return value;
}

// As all functions but ImageProcessing_NS take it. koffi hands on UTF-8, which Windows reads by the code page of a thread
// of koffi's: no other letters than those that all code pages share there.
function text(value) {
  if (windows && /[^\x00-\x7f]/.test(required(value))) throw new RangeError(`"${value}": saveBitmapS takes such letters`);
  return required(value);
}

// ImageProcessing_NS takes a longer text for an empty one.
function utf8(value) {
  if (required(value).length > 260) throw new RangeError("a text has more than 260 characters");
  return value;
}

// The library takes an empty path for "no bitmap": it processes the frame, saves nothing and tells success.
function named(bitmap) {
  if (bitmap === "") throw new RangeError("the path of the bitmap is empty");
  return bitmap;
}

const corrections = (options) => [Number(Boolean(options.mapping)), Number(Boolean(options.spotCorrection))];

// Calls on a thread of koffi's, so that the event loop goes on; the library takes calls one after the other. Until a call
// has ended its frames are in the hands of the library alone, so that the promise holds them.
function call(name, profile, list) {
  return new Promise((resolve, reject) => functions[name].async(...list, (error, code) => {
    if (error) reject(error);
    else if (code !== 0) reject(new ProcessingError(name, code, profile));
    else resolve();
  })).finally(() => void list);
}

async function processBy(name, frame, profile, section, more) {
  const input = copyOf(frame);
  const output = { width: input.width, height: input.height, pixels: new Uint16Array(input.pixels.length) };
  await call(name, profile, [input.pixels, output.pixels, input.width, input.height, text(profile), text(section), ...more]);
  return output;
}

/** The enhanced frame, by ImageProcessing. options: mapping, spotCorrection. */
const processPlain = async (frame, profile, section, options = {}) =>
  processBy("ImageProcessing", frame, profile, section, corrections(options));
export { processPlain as process };

/** By ImageProcessingS. options: geometry (the ten values of SensorGeometry), mapping, spotCorrection. */
export const processS = async (frame, profile, section, options = {}) =>
  processBy("ImageProcessingS", frame, profile, section, [...corrections(options), options.geometry ?? null]);

/** By ImageProcessingCR: of a frame without the sensor's rounded corners. */
export const processCr = async (frame, profile, section) => processBy("ImageProcessingCR", frame, profile, section, []);

/** By ImageProcessing_N: the result becomes an 8-bit bitmap file, which replaces one that is there. */
export async function saveBitmap(frame, profile, section, bitmap, options = {}) {
  const { width, height, pixels } = copyOf(frame);
  await call("ImageProcessing_N", profile,
    [pixels, width, height, text(profile), text(section), ...corrections(options), text(named(bitmap))]);
}

/** By ImageProcessing_NS. Its texts have 260 characters at most, and any letters. */
export async function saveBitmapS(frame, profile, section, bitmap, options = {}) {
  const { width, height, pixels } = copyOf(frame);
  await call("ImageProcessing_NS", profile, [pixels, width, height, utf8(profile), utf8(section), ...corrections(options),
    utf8(named(bitmap)), options.geometry ?? null]);
}

/** By ImageProcessing_NE. options: sensorFolder, sensorMode (2: twice the sensor's resolution), mapping ... */
export async function saveBitmapNe(frame, profile, section, bitmap, options = {}) {
  const { width, height, pixels } = copyOf(frame);
  await call("ImageProcessing_NE", profile, [pixels, width, height, text(profile), text(section), ...corrections(options),
    text(named(bitmap)), text(options.sensorFolder ?? ""), options.sensorMode ?? 0]);
}

/** By Getdose_ImageInfo: of the last processS or saveBitmapS with a PROCMODE of 3. */
export function exposure() {
  const [median, total, low, ratio, isLow] = [[0], [0], [0], [0], [0]];
  getDose(median, total, low, ratio, isLow);
  return { objectMedian: median[0], objectTotal: total[0], lowSignal: low[0], lowRatio: ratio[0], isLow: isLow[0] !== 0 };
}

/** By RotateImage: turned (1: clockwise, 2: counterclockwise, 3: half), then mirrored (1: left to right, 2: top to
 * bottom, 3: both). */
export function rotate(frame, rotation, flip = 0) {
  const turned = copyOf(frame);
  // Two calls: after a quarter turn the library's mirror would still take the old width.
  const turn = (by, mirror) => {
    if (functions.RotateImage(turned.pixels, turned.width, turned.height, by, mirror) === 0)
      throw new Error("RotateImage had no memory");
  };
  turn(rotation, 0);
  if (rotation === 1 || rotation === 2) [turned.width, turned.height] = [turned.height, turned.width];
  turn(0, flip);
  return turned;
}
