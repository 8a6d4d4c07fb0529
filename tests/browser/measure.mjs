// SPDX-License-Identifier: Apache-2.0

// How fast the workbench is in a browser of this machine: from key press to new picture, while panning and zooming, at
// loading, and how much memory is in use after 200 runs. Prints a table; nothing is passed or failed by it.
//
//     scripts/measure-workbench.sh
import { readFileSync } from "node:fs";
import { begin, browser, chooseStage, closePages, end, latest, open, pause, settled, startTool } from "./desk.mjs";

const kPresses = 60;
const kRuns = 200;

const sorted = (values) => [...values].sort((one, other) => one - other);
const share = (values, part) => sorted(values)[Math.min(values.length - 1, Math.floor(part * values.length))];
const row = (words, ...values) => console.log(`${words.padEnd(44)} ${values.join(", ")}`);
const ms = (value) => `${value.toFixed(0)} ms`;

// Writes down when a key went down, and when the picture of a newer run was painted.
function watch() {
  const picture = document.querySelector("[data-test=picture]");
  window.measured = { pressed: 0, shown: [], frames: [] };
  addEventListener("keydown", (event) => (window.measured.pressed = event.timeStamp), true);
  new MutationObserver(() => requestAnimationFrame(() => setTimeout(() =>
    window.measured.shown.push(performance.now() - window.measured.pressed)))).observe(picture, { attributeFilter: ["data-on-screen"] });
}

async function measurePresses(page) {
  await page.evaluate(watch);
  await chooseStage(page, "CLAHE");
  await page.locator("[data-test=slider-04_MAX_SLOPE]").focus();
  for (let i = 0; i < kPresses; ++i) {
    const before = await latest();
    await page.keyboard.press(i % 20 < 10 ? "ArrowRight" : "ArrowLeft");
    await settled(page, before);
    await pause(150);
  }
  const times = await page.evaluate(() => window.measured.shown);
  row(`key press to picture, ${times.length} presses`, `median ${ms(share(times, 0.5))}`, `95 % ${ms(share(times, 0.95))}`,
    `longest ${ms(Math.max(...times))}`);
}

async function measureMoves(page) {
  const box = await page.locator("[data-test=picture]").boundingBox();
  const x = box.x + box.width / 2, y = box.y + box.height / 2;
  await page.locator("[data-test=full]").click();
  await page.locator("[data-test=tool-hand]").click();
  await pause(1000);
  await page.evaluate(() => {
    const { frames } = window.measured;
    const tick = (at) => {
      frames.push(at);
      window.measured.handle = requestAnimationFrame(tick);
    };
    window.measured.handle = requestAnimationFrame(tick);
  });
  await page.mouse.move(x - 40, y);
  await page.mouse.down();
  for (let i = 0; i < 180; ++i) {
    await page.mouse.move(x - 40 + 90 * Math.sin(i / 15), y + 120 * Math.sin(i / 23));
    await pause(8);
  }
  await page.mouse.up();
  for (let i = 0; i < 120; ++i) {
    await page.mouse.wheel(0, i % 60 < 30 ? -60 : 60);
    await pause(8);
  }
  const frames = await page.evaluate(() => {
    cancelAnimationFrame(window.measured.handle);
    return window.measured.frames;
  });
  const gaps = frames.slice(1).map((at, index) => at - frames[index]);
  row(`frames while panning and zooming, ${gaps.length}`, `median ${share(gaps, 0.5).toFixed(1)} ms`,
    `99 % ${share(gaps, 0.99).toFixed(1)} ms`, `longest ${Math.max(...gaps).toFixed(1)} ms`, `${gaps.filter((gap) => gap > 33).length} above 33 ms`);
}

async function measureLoads() {
  const times = [];
  for (let i = 0; i < 10; ++i) {
    const start = performance.now();
    const page = await open();
    times.push(performance.now() - start);
    await page.context().close();
  }
  row("address to picture, 10 loads", `median ${ms(share(times, 0.5))}`, `longest ${ms(Math.max(...times))}`);
}

// Memory that a process has for itself, in MiB.
function ownMemory(pid) {
  const text = readFileSync(`/proc/${pid}/smaps_rollup`, "latin1");
  return Number(/^Pss:\s*(\d+)/m.exec(text)[1]) / 1024;
}

async function measureMemory(page, tool) {
  while (await latest() < kRuns) {
    const before = await latest();
    await page.keyboard.press(before % 20 < 10 ? "ArrowRight" : "ArrowLeft");
    await settled(page, before);
  }
  const session = await browser.newBrowserCDPSession();
  const { processInfo } = await session.send("SystemInfo.getProcessInfo");
  const largest = Math.max(...processInfo.filter((each) => each.type === "renderer").map((each) => ownMemory(each.id)));
  row(`memory after ${await latest()} runs`, `page ${largest.toFixed(0)} MiB`, `tool ${ownMemory(tool.child.pid).toFixed(0)} MiB`);
}

await begin();
try {
  const tool = await startTool();
  await measureLoads();
  const page = await open();
  await measurePresses(page);
  await measureMoves(page);
  await page.locator("[data-test=slider-04_MAX_SLOPE]").focus();
  await measureMemory(page, tool);
} finally {
  await closePages();
  await end();
}
