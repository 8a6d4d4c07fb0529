// SPDX-License-Identifier: Apache-2.0

// A workbench to drive: the built tool on frames and a profile of its own, and a browser that opens its page.
import assert from "node:assert/strict";
import { execFileSync, spawn } from "node:child_process";
import { createHash } from "node:crypto";
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";

const modules = createRequire(join(process.env.VASTRELLINE_MODULES, "package.json"));
const { chromium } = modules("playwright-core");
export const axe = modules("axe-core");

const kPatience = 60000;  // ms; a slow machine is no fault, a machine that waits for ever is

export const folder = mkdtempSync(join(tmpdir(), "vastrelline-workbench-"));
export const profile = join(folder, "dental.ini");
export const frames = join(folder, "frames");
export const original = readFileSync(join(process.env.VASTRELLINE_PROFILES, "dental.ini"));
export let browser;
let tool;  // the running one: process, address
let pages = [];

export function runTool(...words) {
  return execFileSync(process.env.VASTRELLINE_TOOL, words, { stdio: ["ignore", "pipe", "pipe"] });
}

export async function startTool(...more) {
  writeFileSync(profile, original);
  const child = spawn(process.env.VASTRELLINE_TOOL,
    ["tune", frames, "--profile", profile, "--section", "General", "--no-browser", "--no-history", ...more],
    { stdio: ["ignore", "pipe", "pipe"] });
  const address = await new Promise((resolve, reject) => {
    let said = "";
    child.stdout.on("data", (bytes) => {
      said += bytes;
      if (said.includes("\n")) resolve(said.split("\n")[0]);
    });
    child.on("exit", (code) => reject(new Error(`the tool ended with ${code}`)));
  });
  tool = { child, address };
  return tool;
}

export async function stopTool() {
  if (!tool || tool.child.exitCode !== null) return tool?.child.exitCode;
  const end = new Promise((resolve) => tool.child.on("exit", resolve));
  tool.child.kill("SIGINT");
  return end;
}

export async function begin() {
  mkdirSync(frames);
  for (const name of ["bitewing_1300x1668", "periapical_a_1012x1316"])
    runTool("convert", join(process.env.VASTRELLINE_FRAMES, `${name}.png`), join(frames, `${name}.raw`));
  browser = await chromium.launch({
    executablePath: process.env.VASTRELLINE_CHROMIUM,
    timeout: 0,
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
      "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
}

export async function end() {
  await browser?.close();
  rmSync(folder, { recursive: true, force: true });
}

// Closes what a test has opened, and fails it if a page said anything.
export async function closePages() {
  const own = pages;
  pages = [];
  for (const page of own) await page.context().close();
  await stopTool();
  for (const page of own) assert.deepEqual(page.faults, []);
}

// A page whose faults are looked at by nobody.
export async function forget(page) {
  await page.context().close();
  pages = pages.filter((each) => each !== page);
}

// A page that fails its test if it says anything on the console, as when the content policy is broken.
export async function open(options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 720 }, ...options });
  const page = await context.newPage();
  page.setDefaultTimeout(kPatience);
  page.faults = [];
  page.on("console", (message) => page.faults.push(message.text()));
  page.on("pageerror", (error) => page.faults.push(String(error)));
  pages.push(page);
  await page.goto(tool.address);
  await settled(page);
  return page;
}

export const api = async (path) => (await fetch(tool.address + path)).json();

export const pause = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

export async function until(condition) {
  for (const start = Date.now(); !await condition();) {
    if (Date.now() - start > kPatience) throw new Error(`this did not come: ${condition}`);
    await pause(20);
  }
}

// Waits until a run behind the given one is whole, and its result is on the screen.
export async function settled(page, after = 0) {
  const start = Date.now();
  await until(async () => {
    const state = await api("api/state");
    const run = state.run === null ? null : await api(`api/runs/${state.run}`);
    const shown = await page.evaluate(() => document.querySelector("[data-test=picture]")?.dataset.onScreen ?? null);
    if (Date.now() - start > kPatience - 5000)
      throw new Error(`run ${state.run} is not behind ${after}, not complete but ${run?.state}, or not shown, but ${shown}`);
    if (state.run === null || state.run <= after || run.state !== "complete") return false;
    return shown === null || shown.startsWith(`api/runs/${state.pinned.B ?? state.run}/`);
  });
}

export const latest = async () => (await api("api/state")).run;

// The levels of the library's own run of a profile.
export function levelsOf(text, name = "bitewing_1300x1668", section = "General") {
  const own = join(folder, "own.ini");
  writeFileSync(own, text);
  const result = join(folder, "result.raw");
  runTool("run", join(frames, `${name}.raw`), "--profile", own, "--section", section, "--out", result, "--force");
  return readFileSync(result);
}

export const shownHash = async () => (await api("api/runs/latest")).sha256;
export const hash = (bytes) => createHash("sha256").update(bytes).digest("hex");

// The profile with another value of a key of General, as bytes of one character each.
export const edited = (key, value) =>
  original.toString("latin1").replace(new RegExp(`(\\[General\\][^]*?${key}=)[^\\r\\n]*`), `$1${value}`);

export async function chooseStage(page, title) {
  await page.locator("[data-test=strip] button", { hasText: title }).first().click();
}

// Gives a field of the panel another value, and waits for the picture.
export async function setField(page, key, value) {
  const before = await latest();
  await page.locator(`[data-test=field-${key}]`).fill(value);
  await settled(page, before);
}

export const showScreen = (page, name) => page.locator(`[data-test=screen-${name}]`).click();
