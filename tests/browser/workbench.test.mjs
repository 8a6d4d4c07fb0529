// SPDX-License-Identifier: Apache-2.0

// The workbench of the built tool in a browser: what an engineer does with it, from slider to picture. Levels that
// are expected come from the tool's own runs, made beside it.
import assert from "node:assert/strict";
import { readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, afterEach, before, beforeEach, test } from "node:test";
import {
  api, axe, begin, chooseStage, closePages, edited, end, folder, forget, frames, hash, latest, levelsOf, open, original,
  pause, profile, runTool, setField, settled, showScreen, shownHash, startTool, stopTool, until,
} from "./desk.mjs";

let tool;

before(begin);
beforeEach(async () => {
  tool = await startTool();
});
afterEach(closePages);
after(end);

test("a slider gives the picture that the library gives for its value", async () => {
  const page = await open();
  assert.equal(await shownHash(), hash(levelsOf(original)));
  await chooseStage(page, "CLAHE");
  const before = await latest();
  const slider = page.locator("[data-test=slider-04_MAX_SLOPE]");
  await slider.focus();
  for (let i = 0; i < 10; ++i) await page.keyboard.press("ArrowRight");
  await settled(page, before);
  const value = await page.locator("[data-test=field-04_MAX_SLOPE]").inputValue();
  assert.notEqual(value, "1.5");
  const text = edited("04_MAX_SLOPE", value);
  assert.notEqual(text, original.toString("latin1"));
  assert.equal(await shownHash(), hash(levelsOf(Buffer.from(text, "latin1"))));
  assert.match(await page.locator("[data-test=unsaved]").textContent(), /1 unsaved/);
  assert.deepEqual(readFileSync(profile), original);
});

test("the canvas shows the pixels of the result, one to one at 100 %", async () => {
  const page = await open();
  await page.locator("[data-test=mode-side]").click();
  await page.locator("[data-test=mode-swipe]").click();
  await page.locator("[data-test=full]").click();
  await page.waitForFunction(() => document.querySelector("[data-test=scale]").textContent === "100 %");
  await page.waitForTimeout(400);
  const levels = new Uint16Array(new Uint8Array(levelsOf(original)).buffer);
  const seen = await page.evaluate(() => {
    const canvas = document.querySelector("[data-test=picture]");
    const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
    return { width: canvas.width, height: canvas.height, greys: Array.from(data.filter((_, index) => index % 4 === 0)) };
  });
  // The middle of the frame stands in the middle of the canvas.
  const left = Math.round(seen.width / 2 - 650), top = Math.round(seen.height / 2 - 834);
  for (let y = 0; y < seen.height; y += 7) {
    for (let x = 0; x < seen.width; x += 5) {
      const level = levels[(y - top) * 1300 + (x - left)];
      assert.equal(seen.greys[y * seen.width + x], Math.floor((2 * level * 255 + 4095) / (2 * 4095)), `${x}, ${y}`);
    }
  }
});

test("probes tell what the library's dumps hold", async () => {
  const page = await open();
  await page.locator("[data-test=tool-probe]").click();
  const box = await page.locator("[data-test=picture]").boundingBox();
  await page.mouse.click(box.x + box.width / 2 - 30, box.y + box.height / 2 + 11);
  await page.locator("[data-test=tab-probes]").click();
  const head = page.locator("[data-test=probe-1]");
  await head.waitFor();
  const [, x, y] = /\((\d+), (\d+)\)/.exec(await head.textContent()).map(Number);
  const shown = (await page.locator("[data-test=level-1]").allTextContents()).map(Number);
  const stages = join(folder, "stages");
  rmSync(stages, { recursive: true, force: true });
  runTool("stages", join(frames, "bitewing_1300x1668.raw"), "--profile", profile, "--section", "General", "--out", stages);
  const index = JSON.parse(readFileSync(join(stages, "stages.json")));
  assert.equal(shown.length, index.points.length);
  const result = new Uint16Array(new Uint8Array(levelsOf(original)).buffer);
  assert.equal(shown.at(-1), result[y * 1300 + x]);
  const raw = new Uint16Array(new Uint8Array(readFileSync(join(frames, "bitewing_1300x1668.raw"))).buffer);
  assert.equal(shown[0], raw[y * 1300 + x]);
});

test("undo goes back to the first state, redo forth", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  const first = await shownHash();
  for (const value of ["2", "2.5"]) {
    await setField(page, "04_MAX_SLOPE", value);
    await page.waitForTimeout(2100);  // a step of its own
  }
  const last = await shownHash();
  for (const expected of [null, first]) {
    const before = await latest();
    await page.locator("[data-test=undo]").click();
    await settled(page, before);
    if (expected) assert.equal(await shownHash(), expected);
  }
  assert.equal(await page.locator("[data-test=undo]").isDisabled(), true);
  assert.equal(await page.locator("[data-test=unsaved]").textContent(), "saved");
  for (let i = 0; i < 2; ++i) {
    const before = await latest();
    await page.locator("[data-test=redo]").click();
    await settled(page, before);
  }
  assert.equal(await shownHash(), last);
});

test("save shows the change first, and changes nothing else", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  await setField(page, "04_MAX_SLOPE", "2.25");
  await page.keyboard.press("Control+s");
  assert.match(await page.locator("[data-test=diff]").textContent(), /04_MAX_SLOPE=1\.5.*04_MAX_SLOPE=2\.25/s);
  assert.deepEqual(readFileSync(profile), original);
  await page.locator("[data-test=save-now]").click();
  await page.waitForFunction(() => document.querySelector("[data-test=unsaved]").textContent === "saved");
  assert.equal(readFileSync(profile, "latin1"), edited("04_MAX_SLOPE", "2.25"));
});

test("the text is an editor of the same profile", async () => {
  const page = await open();
  // Late, so that an editor which takes keys before it has the text would lose them.
  await page.route(/\/api\/text$/, async (route) => {
    await pause(500);
    await route.continue();
  });
  await page.keyboard.press("e");
  await page.locator(".cm-content").waitFor();
  assert.equal(await page.locator(".cm-activeLine").textContent(), "[General]");
  const before = await latest();
  await page.keyboard.press("Control+End");
  await page.keyboard.type("\n[Mine]\nPROCMODE=2\n");
  await until(async () => (await api("api/text")).text.endsWith("PROCMODE=2\n"));
  assert.ok(await latest() >= before);
  const { text } = await api("api/text");
  assert.equal(text, original.toString("latin1") + "\n[Mine]\nPROCMODE=2\n");
  assert.equal(await page.locator("[data-test=key-help] h2").textContent(), "Help");
  await page.keyboard.press("ArrowUp");
  await page.waitForFunction(() => document.querySelector("[data-test=key-help] h2").textContent === "PROCMODE");
});

test("a file that another editor saves is run at once, and asked about where there are edits", async () => {
  const page = await open();
  let before = await latest();
  const other = edited("04_MAX_SLOPE", "2.75");
  writeFileSync(profile, other, "latin1");
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(Buffer.from(other, "latin1"))));
  await chooseStage(page, "CLAHE");
  before = await latest();
  await page.locator("[data-test=field-04_MAX_SLOPE]").fill("2");
  await settled(page, before);
  writeFileSync(profile, original);
  await page.locator("[data-test=changed-on-disk]").waitFor();
  before = await latest();
  await page.getByText("Take its text").click();
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(original)));
});

test("a broken profile keeps the last picture, with lint above it", async () => {
  const page = await open();
  const first = await shownHash();
  writeFileSync(profile, "nothing at all\n");
  await page.locator("[data-test=failure]").waitFor();
  assert.match(await page.locator("[data-test=failure]").textContent(), /holds no section with settings/);
  assert.equal(await shownHash(), first);
  assert.match(await page.locator("[data-test=picture]").getAttribute("data-on-screen"), /\/result\//);
  const before = await latest();
  writeFileSync(profile, edited("04_MAX_SLOPE", "2"), "latin1");
  await settled(page, before);
  assert.equal(await page.locator("[data-test=failure]").count(), 0);
});

test("a worker that is killed costs its run and nothing else", { skip: process.platform === "win32" }, async () => {
  const page = await open();
  const first = await shownHash();
  // A list that takes its time.
  let slow = "[General]\nPROCMODE=2\nFunctionCount=90\n";
  for (let i = 0; i < 90; ++i) slow += `${String(i).padStart(2, "0")}_Function_Number=6\n`;
  writeFileSync(profile, slow);
  const workers = () => readdirSync("/proc").filter((each) => /^\d+$/.test(each)).filter((each) => {
    try {
      const parent = /^PPid:\s*(\d+)/m.exec(readFileSync(`/proc/${each}/status`, "latin1"))[1];
      return Number(parent) === tool.child.pid && readFileSync(`/proc/${each}/cmdline`, "latin1").includes("__worker");
    } catch {
      return false;
    }
  });
  let found = [];
  while (found.length === 0) {
    found = workers();
    await pause(5);
  }
  process.kill(Number(found[0]), "SIGKILL");
  await page.locator("[data-test=failure]").waitFor();
  assert.match(await page.locator("[data-test=failure]").textContent(), /was ended by signal 9/);
  assert.equal(await shownHash(), first);
  const before = await latest();
  writeFileSync(profile, edited("04_MAX_SLOPE", "2"), "latin1");
  await settled(page, before);
});

test("stages go off and on, alone and together, and the profile stays", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  let before = await latest();
  await page.locator("[data-test=off]").click();
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(Buffer.from(edited("04_Function_Number", "0"), "latin1"))));
  assert.equal(await page.locator("[data-test=unsaved]").textContent(), "saved");
  before = await latest();
  await page.keyboard.press("o");
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(original)));
});

test("another frame is compared with the same settings as before", async () => {
  const page = await open();
  const before = await latest();
  await page.locator("[data-test=frames]").selectOption({ label: "periapical_a_1012x1316.raw" });
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(original, "periapical_a_1012x1316")));
  // Side A is another run now, of the settings that a person knows by the first one's number.
  await until(async () => (await api("api/state")).pinned.A > before + 1);
  assert.match(await page.locator(".sides").textContent(), new RegExp(`A run ${before}\\b`));
  await page.locator("[data-test=tab-history]").click();
  await page.locator(`[data-test=pin-A-${before}][aria-pressed=true]`).waitFor();
});

test("what is looked at stays from screen to screen", async () => {
  const page = await open();
  await page.locator("[data-test=full]").click();
  const picture = page.locator("[data-test=picture]");
  const box = await picture.boundingBox();
  await page.mouse.move(box.x + 300, box.y + 200);
  await page.mouse.down();
  await page.mouse.move(box.x + 420, box.y + 260, { steps: 3 });
  await page.mouse.up();
  const under = async () => {
    await page.mouse.move(box.x + 200, box.y + 100);
    await page.mouse.move(box.x + 201, box.y + 100);
    return /\d+, \d+/.exec(await page.locator("[data-test=hover]").textContent())[0];
  };
  const before = await under();
  await showScreen(page, "report");
  await showScreen(page, "tune");
  await page.waitForFunction(() => document.querySelector("[data-test=scale]").textContent === "100 %");
  assert.equal(await under(), before);
});

test("a value stays under the fingers while the tool is slow", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  let release;
  const held = new Promise((resolve) => (release = resolve));
  await page.route(/\/api\/set$/, async (route) => {
    await held;
    await route.continue();
  });
  const field = page.locator("[data-test=field-04_MAX_SLOPE]");
  await field.fill("2.");
  await page.waitForTimeout(1500);  // longer than a control waits after an answer
  await field.press("End");
  await field.pressSequentially("25");
  assert.equal(await field.inputValue(), "2.25");
  const before = await latest();
  release();
  await until(async () => (await api("api/text")).text.includes("04_MAX_SLOPE=2.25"));
  await settled(page, before);
});

test("the level under the pointer is that of the side that it is over", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  await setField(page, "04_MAX_SLOPE", "3");
  const box = await page.locator("[data-test=picture]").boundingBox();
  const first = new Uint16Array(new Uint8Array(levelsOf(original)).buffer);
  const second = new Uint16Array(new Uint8Array(levelsOf(Buffer.from(edited("04_MAX_SLOPE", "3"), "latin1"))).buffer);
  const told = { A: 0, B: 0 };
  for (const dx of [-60, -45, -30, 30, 45, 60]) {
    await page.mouse.move(box.x + box.width / 2 + dx, box.y + box.height / 2 + 11);
    const hover = page.locator("[data-test=hover]", { hasText: "=" });
    await hover.waitFor();
    const [, name, x, y, level] = /^([AB]) (\d+), (\d+) = (\d+)$/.exec((await hover.textContent()).trim());
    assert.equal(name, dx < 0 ? "A" : "B");
    const levels = name === "A" ? first : second;
    assert.equal(Number(level), levels[Number(y) * 1300 + Number(x)]);
    if (first[Number(y) * 1300 + Number(x)] !== second[Number(y) * 1300 + Number(x)]) ++told[name];
  }
  // Levels that are the same on both sides would tell nothing.
  assert.ok(told.A > 0 && told.B > 0);
});

test("a mark opens its numbers", async () => {
  const page = await open();
  const box = await page.locator("[data-test=picture]").boundingBox();
  const x = box.x + box.width / 2 - 60, y = box.y + box.height / 2;
  const draw = async (name) => {
    await page.locator(`[data-test=tool-${name}]`).click();
    await page.mouse.move(x, y);
    await page.mouse.down();
    await page.mouse.move(x + 40, y + 30, { steps: 4 });
    await page.mouse.up();
  };
  const isOpen = (name) => page.locator(`[data-test=tab-${name}][aria-selected=true]`).waitFor();
  await draw("line");
  await isOpen("line");
  await draw("area");
  await isOpen("noise");
  await page.locator("[data-test=tab-edge]").click();
  await draw("area");
  await isOpen("edge");
  await page.locator("[data-test=tool-probe]").click();
  await page.mouse.click(x, y);
  await isOpen("probes");
  // What lies under the area is no edge, and the tool says so.
  page.faults = page.faults.filter((text) => !text.includes("status of 400"));
});

test("history goes back, pins, and lets choose without knowing", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  const first = { run: await latest(), hash: await shownHash() };
  await page.locator("[data-test=field-04_MAX_SLOPE]").fill("2.5");
  await settled(page, first.run);
  const second = await latest();
  await page.locator("[data-test=tab-history]").click();
  await page.locator(`[data-test=history-${first.run}] .go`).click();
  await settled(page, second);
  assert.equal(await shownHash(), first.hash);
  await page.locator(`[data-test=pin-A-${second}]`).click();
  await until(async () => (await api("api/state")).pinned.A === second);
  await page.locator("[data-test=blind-open]").click();
  for (let i = 0; i < 3; ++i) await page.locator("[data-test=blind-left]").click();
  await page.getByText("3 chosen").waitFor();
  await page.getByText("Tell").click();
  await page.waitForFunction(() => document.querySelector("[data-test=blind-told]").textContent !== "");
  const numbers = (await page.locator("[data-test=blind-told]").textContent()).match(/(\d+) times/g).map((each) => parseInt(each, 10));
  assert.equal(numbers.reduce((sum, each) => sum + each, 0), 3);
});

test("two pages show one desk", async () => {
  const one = await open();
  const other = await open();
  await chooseStage(one, "CLAHE");
  const before = await latest();
  await one.locator("[data-test=field-04_MAX_SLOPE]").fill("2.5");
  await settled(one, before);
  await settled(other, before);
  assert.match(await other.locator("[data-test=unsaved]").textContent(), /1 unsaved/);
});

test("the keyboard does everything, and ? tells how", async () => {
  const page = await open();
  await page.keyboard.press("?");
  assert.ok(await page.locator("[data-test=keys] dt").count() >= 25);
  await page.keyboard.press("Escape");
  for (const [key, mode] of [["2", "side"], ["3", "blink"], ["4", "difference"], ["1", "swipe"]]) {
    await page.keyboard.press(key);
    assert.equal(await page.locator(`[data-test=mode-${mode}]`).getAttribute("aria-pressed"), "true");
  }
  for (const [key, name] of [["p", "probe"], ["l", "line"], ["n", "area"], ["v", "hand"]]) {
    await page.keyboard.press(key);
    assert.equal(await page.locator(`[data-test=tool-${name}]`).getAttribute("aria-pressed"), "true");
  }
  await page.keyboard.press("d");
  assert.equal(await page.evaluate(() => document.documentElement.dataset.room), "light");
});

test("axe finds no violation, in either room and at any size", async () => {
  for (const viewport of [{ width: 1280, height: 720 }, { width: 1920, height: 1080 }, { width: 390, height: 844 }]) {
    const page = await open({ viewport, bypassCSP: true });
    await page.addScriptTag({ content: axe.source });
    for (const key of ["", "d"]) {
      if (key) await page.keyboard.press(key);
      for (const screen of ["sheet", "compare", "report", "profile", "tune"]) {
        await showScreen(page, screen);
        if (screen === "tune") await chooseStage(page, "CLAHE");
        await page.waitForTimeout(300);
        const { violations } = await page.evaluate(() => window.axe.run());
        assert.deepEqual(violations.map((each) => [each.id, each.nodes.map((node) => node.html.slice(0, 120))]), [], `${screen} ${key}`);
      }
    }
  }
});

test("nothing moves beyond the window at 1280 x 720", async () => {
  const page = await open();
  for (const screen of ["tune", "sheet", "profile", "compare", "report"]) {
    await showScreen(page, screen);
    const size = await page.evaluate(() => [document.documentElement.scrollWidth, document.documentElement.scrollHeight]);
    assert.deepEqual(size, [1280, 720]);
  }
});

test("a page whose tool has ended says so", async () => {
  const page = await open();
  assert.equal(await stopTool(), 0);
  await page.locator("[data-test=lost]").waitFor();
  await forget(page);
});
