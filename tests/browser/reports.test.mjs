// SPDX-License-Identifier: Apache-2.0

// The reports of the built tool in a browser: what a reader does with the mouse, with the keyboard and on paper.
// Levels that are expected come from the files that were compared, read here.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";

const modules = createRequire(join(process.env.VASTRELLINE_MODULES, "package.json"));
const { chromium } = modules("playwright-core");
const axe = modules("axe-core");

const width = 1300, height = 1668;
const folder = mkdtempSync(join(tmpdir(), "vastrelline-browser-"));
const at = (...names) => join(folder, ...names);
const changes = [{ x: 30, y: 20, by: 2 }, { x: 700, y: 900, by: -9 }, { x: 1200, y: 1600, by: 5 }];
let browser;
let levels;  // of the first frame
let changed;

function runTool(...words) {
  try {
    return { code: 0, out: execFileSync(process.env.VASTRELLINE_TOOL, words, { stdio: ["ignore", "pipe", "pipe"] }) };
  } catch (error) {
    return { code: error.status, out: error.stdout };
  }
}

before(async () => {
  const source = join(process.env.VASTRELLINE_FRAMES, "bitewing_1300x1668.png");
  runTool("convert", source, at("a_1300x1668.raw"));
  levels = new Uint16Array(new Uint8Array(readFileSync(at("a_1300x1668.raw"))).buffer);
  changed = levels.slice();
  for (const { x, y, by } of changes) changed[y * width + x] += by;
  writeFileSync(at("b_1300x1668.raw"), new Uint8Array(changed.buffer));
  writeFileSync(at("small_3x2.raw"), new Uint8Array(new Uint16Array([10, 20, 30, 40, 50, 60]).buffer));

  const evil = "<img src=x onerror=alert(1)>\"'&\n";
  for (const name of ["one", "two"]) mkdirSync(at(name));
  const put = (name, bytes) => writeFileSync(Buffer.concat([Buffer.from(folder + "/"), Buffer.from(name)]), bytes);
  const small = Buffer.from([1, 0, 2, 0, 3, 0, 4, 0]), other = Buffer.from([1, 0, 2, 0, 9, 0, 4, 0]);
  put("one/same_2x2.raw", small);
  put("two/same_2x2.raw", small);
  put("one/only_2x2.raw", small);
  put("one/cut_2x2.raw", small.subarray(1));
  put("two/cut_2x2.raw", small);
  put(`one/${evil}_2x2.raw`, small);
  put(`two/${evil}_2x2.raw`, other);
  put(Buffer.concat([Buffer.from("one/"), Buffer.from([0xff, 0x3c]), Buffer.from("_2x2.raw")]), small);
  put(Buffer.concat([Buffer.from("two/"), Buffer.from([0xff, 0x3c]), Buffer.from("_2x2.raw")]), other);

  const compare = (first, second, report) => runTool("compare", at(first), at(second), "--report", at(report)).code;
  assert.equal(compare("a_1300x1668.raw", "b_1300x1668.raw", "different.html"), 1);
  assert.equal(compare("a_1300x1668.raw", "a_1300x1668.raw", "equal.html"), 0);
  assert.equal(compare("a_1300x1668.raw", "small_3x2.raw", "sizes.html"), 1);
  assert.equal(compare("one", "two", "folder.html"), 3);
  browser = await chromium.launch({
    executablePath: process.env.VASTRELLINE_CHROMIUM,
    timeout: 0,
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
      "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
});

after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true, force: true });
});

// A page that fails its test if the report says anything on the console, opens a dialog or asks for a file.
async function open(name, options = {}) {
  const page = await browser.newPage({ viewport: { width: 1280, height: 720 }, ...options });
  page.setDefaultTimeout(0);  // a slow machine is no fault
  page.faults = [];
  page.on("console", (message) => {
    // That is these tests reading the canvas, not the page.
    if (!message.text().startsWith("Canvas2D: Multiple readback")) page.faults.push(message.text());
  });
  page.on("pageerror", (error) => page.faults.push(String(error)));
  page.on("dialog", (dialog) => (page.faults.push(dialog.message()), dialog.dismiss()));
  page.on("request", (request) => {
    if (!request.url().startsWith("data:") && request.url() !== page.address) page.faults.push(request.url());
  });
  page.address = pathToFileURL(at(name)).href;
  await page.goto(page.address);
  if (options.javaScriptEnabled !== false) await page.locator(".viewer").first().scrollIntoViewIfNeeded();
  if (options.javaScriptEnabled !== false) await page.waitForSelector(".viewer[data-ready]");
  return page;
}

async function close(page) {
  assert.deepEqual(page.faults, []);
  await page.close();
}

const setMode = (page, mode) => page.locator(`.mode input[value="${mode}"]`).check();

// After two frames of the screen all that was asked for is drawn.
const drawn = (page) => page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));

// Colours of the canvas of a pane, at places from its upper left corner.
async function coloursAt(page, pane, places) {
  await drawn(page);
  return page.evaluate(([index, wanted]) => {
    const canvas = document.querySelectorAll(".pane canvas")[index];
    const context = canvas.getContext("2d");
    return wanted.map(([x, y]) => Array.from(context.getImageData(x, y, 1, 1).data.slice(0, 3)));
  }, [pane, places]);
}

async function paneSize(page, pane) {
  return page.evaluate((index) => {
    const canvas = document.querySelectorAll(".pane canvas")[index];
    return [canvas.width, canvas.height];
  }, pane);
}

// The place of the frame that is in the upper left corner of the first pane at 100 %, when its middle is shown.
async function cornerOfFrame(page) {
  const [paneWidth, paneHeight] = await paneSize(page, 0);
  return [-Math.round(paneWidth / 2 - width / 2), -Math.round(paneHeight / 2 - height / 2)];
}

const greyThrough = (level, low, high) => {
  const above = Math.min(Math.max(level - low, 0), high - low);
  return Math.floor((2 * above * 255 + (high - low)) / (2 * (high - low)));
};

test("says the verdict first, and all that it stands on", async () => {
  const page = await open("different.html");
  assert.equal(await page.locator("main > :nth-child(2) .headline").textContent(), "Different");
  assert.match(await page.locator(".verdict").textContent(), /3 of 2168400 pixels .*largest difference 9\./);
  const text = await page.locator("main").innerText();
  for (const { x, y } of changes) assert.match(text, new RegExp(`${x}\\s+${y}\\s+${levels[y * width + x]}\\s`));
  assert.match(text, /SHA-256 of the levels/);
  assert.match(text, /vastrelline compare .*a_1300x1668\.raw .*--report/);
  await close(page);
  const equal = await open("equal.html");
  assert.equal(await equal.locator(".headline").textContent(), "Equal");
  await close(equal);
});

test("shows exact pixels at 100 %", async () => {
  const page = await open("different.html");
  await setMode(page, "side");
  await page.locator(".preset").selectOption("0:4095");
  await page.getByRole("button", { name: "100 %" }).click();
  await drawn(page);
  assert.equal(await page.locator(".zoom-shown").textContent(), "100 %");
  const [left, top] = await cornerOfFrame(page);
  const places = [[0, 0], [1, 0], [0, 1], [250, 111], [333, 222], [500, 300]];
  const expected = (frame) => places.map(([x, y]) => {
    const grey = greyThrough(frame[(top + y) * width + left + x], 0, 4095);
    return [grey, grey, grey];
  });
  assert.deepEqual(await coloursAt(page, 0, places), expected(levels));
  assert.deepEqual(await coloursAt(page, 1, places), expected(changed));
  await close(page);
});

test("swipes by mouse and by keyboard", async () => {
  const page = await open("different.html");
  const share = () => page.locator(".divider").inputValue().then(Number);
  assert.equal(await share(), 50);
  const box = await page.locator(".pane").first().boundingBox();
  await page.mouse.move(box.x + box.width / 2, box.y + 40);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 4, box.y + 60, { steps: 4 });
  await page.mouse.up();
  assert.ok(Math.abs(await share() - 25) < 1, `divider at ${await share()} %`);
  await page.locator(".divider").focus();
  await page.keyboard.press("End");
  assert.equal(await share(), 100);
  await page.keyboard.press("ArrowLeft");
  assert.equal(await share(), 99.5);
  // The place that differs most, at 12 times its size: A is left of the divider, B to its right.
  await page.locator(".preset").selectOption("0:4095");
  const { x, y } = changes[1];
  await page.locator(`button[data-x="${x}"][data-y="${y}"]`).click();
  const [paneWidth, paneHeight] = await paneSize(page, 0);
  const middle = [[Math.round(paneWidth / 2), Math.round(paneHeight / 2)]];
  const grey = (frame) => [Array(3).fill(greyThrough(frame[y * width + x], 0, 4095))];
  assert.notDeepEqual(grey(levels), grey(changed));
  assert.deepEqual(await coloursAt(page, 0, middle), grey(levels));
  await page.locator(".divider").press("Home");
  assert.deepEqual(await coloursAt(page, 0, middle), grey(changed));
  await close(page);
});

test("blinks, stops, and shows the other one when asked", async () => {
  const page = await open("different.html");
  await setMode(page, "blink");
  const tag = page.locator(".pane").first().locator(".tag").first();
  await page.waitForFunction(() => document.querySelector(".tag").textContent.startsWith("B:"));
  await page.waitForFunction(() => document.querySelector(".tag").textContent.startsWith("A:"));
  await page.getByRole("button", { name: "Pause" }).click();
  await drawn(page);
  const shown = (await tag.textContent())[0];
  const other = shown === "A" ? "B" : "A";
  await page.getByRole("button", { name: "Show the other one" }).click();
  await drawn(page);
  assert.equal((await tag.textContent())[0], other);
  await page.locator(".stage").press(" ");
  await drawn(page);
  assert.equal((await tag.textContent())[0], shown);
  assert.ok(await page.getByRole("button", { name: "Go on" }).isVisible());
  await close(page);
});

test("does not begin to blink for readers who want no motion", async () => {
  const page = await open("different.html", { reducedMotion: "reduce" });
  await setMode(page, "blink");
  assert.ok(await page.getByRole("button", { name: "Go on" }).isVisible());
  await close(page);
});

test("shows where frames differ, and loses none when zoomed out", async () => {
  const page = await open("different.html");
  await setMode(page, "difference");
  await page.locator(".gain").selectOption("any");
  await drawn(page);
  const spots = await page.evaluate(() => {
    const canvas = document.querySelector(".pane canvas");
    const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
    const found = { orange: 0, blue: 0 };
    for (let i = 0; i < data.length; i += 4) {
      if (data[i] > 150 && data[i + 2] < 60) ++found.orange;
      if (data[i + 2] > 150 && data[i] < 90) ++found.blue;
    }
    return found;
  });
  assert.ok(spots.orange >= 2, "both brighter pixels of a frame shown at a third of its size");
  assert.ok(spots.blue >= 1, "the darker pixel");
  await page.getByRole("button", { name: "show" }).first().waitFor();
  for (const { x, y, by } of changes) {
    await page.locator(`button[data-x="${x}"][data-y="${y}"]`).click();
    const [paneWidth, paneHeight] = await paneSize(page, 0);
    const middle = [Math.round(paneWidth / 2), Math.round(paneHeight / 2)];
    const [own, beside] = await coloursAt(page, 0, [middle, [middle[0] - 24, middle[1]]]);
    assert.deepEqual(beside, [0, 0, 0], "an equal pixel is black");
    assert.ok(by > 0 ? own[0] > own[2] : own[2] > own[0], `${by} is ${own}`);
    assert.equal(await page.locator(".readout output").textContent(),
      `(${x}, ${y}): A ${levels[y * width + x]}, B ${changed[y * width + x]}, ` +
      `B \u2212 A = ${by < 0 ? "\u2212" : ""}${Math.abs(by)}`);
  }
  await close(page);
});

test("shares zoom and place between both frames, by keyboard and wheel", async () => {
  const page = await open("equal.html");
  await setMode(page, "side");
  const picture = async (pane) => {
    await drawn(page);
    return page.evaluate((index) => document.querySelectorAll(".pane canvas")[index].toDataURL(), pane);
  };
  const seen = new Set();
  const look = async (what) => {
    const first = await picture(0);
    assert.equal(first, await picture(1), what);
    assert.ok(!seen.has(first), `${what} changes the view`);
    seen.add(first);
  };
  await look("fitted");
  const stage = page.locator(".stage");
  await stage.press("1");
  await look("100 %");
  await stage.press("ArrowRight");
  await look("to the right");
  await stage.press("ArrowDown");
  await look("down");
  await stage.press("+");
  await look("in");
  const box = await stage.boundingBox();
  await page.mouse.move(box.x + 100, box.y + 100);
  await page.mouse.wheel(0, -200);
  await look("by the wheel");
  await page.mouse.down();
  await page.mouse.move(box.x + 160, box.y + 130, { steps: 3 });
  await page.mouse.up();
  await look("dragged");
  await stage.press("0");
  await drawn(page);
  assert.ok(seen.has(await picture(0)), "fitted again");
  await close(page);
});

test("takes any window", async () => {
  const page = await open("different.html");
  await setMode(page, "side");
  await page.getByRole("button", { name: "100 %" }).click();
  await page.locator(".low").fill("1000");
  await page.locator(".high").fill("2000");
  assert.equal(await page.locator(".preset").inputValue(), "own");
  const [left, top] = await cornerOfFrame(page);
  const places = [[10, 10], [200, 100], [400, 300]];
  assert.deepEqual(await coloursAt(page, 0, places), places.map(([x, y]) =>
    Array(3).fill(greyThrough(levels[(top + y) * width + left + x], 1000, 2000))));
  await close(page);
});

test("shows frames of different sizes side by side only", async () => {
  const page = await open("sizes.html");
  assert.match(await page.locator(".verdict").textContent(), /sizes are 1300x1668 and 3x2/);
  assert.deepEqual(await page.locator(".mode input").evaluateAll((all) => all.map((each) => each.disabled)),
    [true, false, true, true]);
  assert.equal(await page.locator(".pane:visible").count(), 2);
  await close(page);
});

test("leads from the overview of folders to each pair, whatever the names hold", async () => {
  const page = await open("folder.html");
  assert.equal(await page.locator(".headline").textContent(), "Unreadable");
  const states = await page.locator(".overview tbody td:first-child").allTextContents();
  assert.deepEqual(states, ["unreadable", "different", "different", "only in A", "equal"]);
  const names = await page.locator(".overview code").allTextContents();
  assert.ok(names.includes("<img src=x onerror=alert(1)>\"'&\u240a_2x2.raw"), names.join(", "));
  assert.ok(names.includes("\ufffd<_2x2.raw"));
  for (const link of await page.locator(".overview a").all()) {
    const target = page.locator(await link.getAttribute("href"));
    assert.equal(await target.locator("h2").textContent(), await link.textContent());
    await target.locator(".viewer").scrollIntoViewIfNeeded();
    await target.locator(".viewer[data-ready]").waitFor();
  }
  assert.equal(await page.locator(".overview a").count(), 2);
  assert.equal(await page.locator("img[src=x]").count(), 0);
  await close(page);
});

test("has no fault that axe-core finds, dark or light, in any view", async () => {
  for (const colorScheme of ["light", "dark"]) {
    for (const name of ["different.html", "sizes.html", "folder.html"]) {
      const page = await open(name, { colorScheme });
      const modes = name === "different.html" ? ["swipe", "side", "blink", "difference"] : ["side"];
      for (const mode of modes) {
        await page.locator(`.viewer`).first().locator(`.mode input[value="${mode}"]`).check();
        await page.evaluate(axe.source);
        const found = await page.evaluate(() => axe.run());
        assert.deepEqual(found.violations.map((each) => [each.id, each.nodes.map((node) => node.html.slice(0, 200))]), [],
          `${name}, ${colorScheme}, ${mode}`);
        assert.ok(found.passes.length > 10);
      }
      await close(page);
    }
  }
});

test("fits a telephone", async () => {
  for (const name of ["different.html", "folder.html"]) {
    const page = await open(name, { viewport: { width: 390, height: 844 }, hasTouch: true });
    assert.ok(await page.evaluate(() => document.scrollingElement.scrollWidth <= innerWidth), name);
    await close(page);
  }
});

test("prints the pictures and no controls", async () => {
  const page = await open("different.html", { colorScheme: "dark" });
  await page.emulateMedia({ media: "print", colorScheme: "dark" });
  assert.ok(!await page.locator(".live").isVisible());
  assert.equal(await page.locator(".still img:visible").count(), 3);
  assert.equal(await page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor), "rgb(255, 255, 255)");
  const paper = await page.pdf({ format: "A4" });
  assert.equal(paper.subarray(0, 5).toString(), "%PDF-");
  assert.ok(paper.length > 50000, "the pictures are in it");
  await close(page);
});

test("shows small pictures where scripts are off", async () => {
  const page = await open("different.html", { javaScriptEnabled: false });
  const pictures = page.locator(".still img:visible");
  assert.equal(await pictures.count(), 3);
  for (const picture of await pictures.all()) assert.ok((await picture.boundingBox()).height > 300);
  assert.ok(!await page.locator(".live").isVisible());
  await close(page);
});
