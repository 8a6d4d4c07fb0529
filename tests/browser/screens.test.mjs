// SPDX-License-Identifier: Apache-2.0

// The screens beside Tune: sheets, comparisons and reports in a browser. Hashes that are expected come from the tool's
// own runs, made beside it.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, afterEach, before, beforeEach, test } from "node:test";
import {
  api, axe, begin, browser, chooseStage, closePages, edited, end, folder, hash, levelsOf, open, original, profile,
  setField, settled, showScreen, shownHash, latest, startTool, until,
} from "./desk.mjs";

const other = join(folder, "other.ini");

before(begin);
beforeEach(async () => {
  writeFileSync(other, edited("04_MAX_SLOPE", "2.5"), "latin1");
  await startTool("--against", other);
});
afterEach(closePages);
after(end);

test("a sheet shows one frame by many values, and a value of it is taken", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  await showScreen(page, "sheet");
  await page.locator("[data-test=sheet-key]").selectOption({ label: "04_MAX_SLOPE" });
  await page.locator("[data-test=sheet-values]").fill("1.2, 1.5, 3");
  await page.locator("[data-test=sheet-begin]").click();
  await page.getByText("3 made").waitFor();
  assert.equal(await page.locator("[data-test=cells] [data-test^=cell-take-]").count(), 3);
  const before = await latest();
  await page.locator("[data-test=cell-take-2]").click();
  await until(async () => await latest() > before);
  await showScreen(page, "tune");
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(Buffer.from(edited("04_MAX_SLOPE", "3"), "latin1"))));
  assert.deepEqual(readFileSync(profile), original);
});

test("a sheet shows many frames by the profile, and one of them is opened", async () => {
  const page = await open();
  await showScreen(page, "sheet");
  await page.locator("[data-test=sheet-kind-frames]").click();
  await page.locator("[data-test=sheet-begin]").click();
  await page.getByText("2 made").waitFor();
  const before = await latest();
  await page.locator("[data-test=cell-open-1]").click();
  await settled(page, before);
  assert.equal(await shownHash(), hash(levelsOf(original, "periapical_a_1012x1316")));
});

test("a sheet tells keys that change nothing on this frame", async () => {
  const page = await open();
  const before = await latest();
  await page.locator("[data-test=section]").selectOption("LowDose");
  await settled(page, before);
  await showScreen(page, "sheet");
  const idle = page.locator("[data-test=sheet-key] optgroup[label='00 Gaussian of a weak frame, section IP_LOWMODE (does not run on this frame)']");
  const name = await idle.locator("option").first().getAttribute("value");
  assert.equal(name, "IP_LOWMODE 00_GAUSSIAN_SIZE");
  await page.locator("[data-test=sheet-key]").selectOption(name);
  await page.locator("[data-test=sheet-values]").fill("0.5, 2");
  await page.locator("[data-test=sheet-begin]").click();
  await page.getByText("2 made, all alike").waitFor();
  await page.locator("[data-test=sheet-key]").selectOption("LowDose 00_GAUSSIAN_SIZE");
  await page.locator("[data-test=sheet-values]").fill("0.5, 2");
  await page.locator("[data-test=sheet-begin]").click();
  await page.getByText("2 made", { exact: true }).waitFor();
});

test("a sheet says what is wrong with its values", async () => {
  const page = await open();
  await showScreen(page, "sheet");
  await page.locator("[data-test=sheet-values]").fill("1:3:0");
  assert.equal(await page.locator("[data-test=sheet-begin]").isDisabled(), true);
  assert.notEqual(await page.locator("[data-test=sheet-says]").textContent(), "");
});

test("a comparison marks the first stage that differs", async () => {
  const page = await open();
  await showScreen(page, "compare");
  assert.equal(await page.locator("[data-test=compare-begin]").isDisabled(), true);
  await page.locator("[data-test=compare-profile]").selectOption({ label: "other.ini" });
  await page.locator("[data-test=compare-begin]").click();
  const rows = page.locator("[data-test=pairs] tr");
  await page.locator("[data-test=verdict]").filter({ hasText: "CLAHE" }).waitFor();
  const words = await rows.allTextContents();
  const first = words.findIndex((each) => each.includes("CLAHE"));
  assert.ok(first > 0);
  for (const each of words.slice(0, first).filter((row) => /Gaussian|Gamma|Linear|Pyramid/.test(row))) assert.match(each, /equal/);
  assert.doesNotMatch(words[first], /equal/);
  assert.match(await page.locator("[data-test=compare-keys]").textContent(), /MAX_SLOPE.*1\.5.*2\.5/s);
});

test("a report is one file that loads nothing", async () => {
  const page = await open();
  await chooseStage(page, "CLAHE");
  await setField(page, "04_MAX_SLOPE", "2.5");
  await showScreen(page, "report");
  const [download] = await Promise.all([page.waitForEvent("download"), page.locator("[data-test=report-make]").click()]);
  const file = join(folder, "report.html");
  await download.saveAs(file);
  const context = await browser.newContext({ offline: true, bypassCSP: true });
  const report = await context.newPage();
  const asked = [];
  report.on("request", (request) => asked.push(request.url()));
  await report.goto(`file://${file}`);
  assert.match(await report.locator("body").textContent(), /04_MAX_SLOPE/);
  assert.ok(await report.locator("img").count() >= 2);
  for (const image of await report.locator("img").all())
    assert.ok(await image.evaluate((each) => each.complete && each.naturalWidth > 0));
  assert.deepEqual(asked.filter((each) => !each.startsWith("file:") && !each.startsWith("data:")), []);
  await report.addScriptTag({ content: axe.source });
  const { violations } = await report.evaluate(() => window.axe.run());
  assert.deepEqual(violations.map((each) => each.id), []);
  await context.close();
});
