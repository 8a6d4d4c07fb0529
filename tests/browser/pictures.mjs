// SPDX-License-Identifier: Apache-2.0

// The pictures of the workbench's tour and of README.md: the built tool in a browser, at work on a real radiograph. Each
// is taken when the page shows what the tour tells of it.
//
//     scripts/workbench-pictures.sh
import { mkdirSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import {
  begin, chooseStage, closePages, edited, end, folder, frames, open, pause, runTool, setField, showScreen, startTool,
} from "./desk.mjs";

const target = process.argv[2];
if (!target) throw new Error("say which folder the pictures are to go to");
mkdirSync(target, { recursive: true });

const other = join(folder, "older.ini");

async function take(page, name) {
  await page.mouse.move(640, 719);
  await pause(700);  // small pictures and plots come after the picture
  await page.screenshot({ path: join(target, `${name}.jpg`), type: "jpeg", quality: 82 });
}

async function drag(page, from, to) {
  const box = await page.locator("[data-test=picture]").boundingBox();
  const at = ([x, y]) => [box.x + x * box.width, box.y + y * box.height];
  await page.mouse.move(...at(from));
  await page.mouse.down();
  await page.mouse.move(...at(to), { steps: 5 });
  await page.mouse.up();
}

// Off the field that was typed into, so that keys are commands again.
const leaveField = (page) => page.locator("[data-test=picture]").focus();

// Slider to picture, the two sides of the line, the curve over the histograms.
async function takeTune(page) {
  await chooseStage(page, "CLAHE");
  await setField(page, "04_MAX_SLOPE", "2.6");
  await leaveField(page);
  await take(page, "tune");
  await page.keyboard.press("d");
  await page.keyboard.press("2");
  await take(page, "side-by-side");
  await page.keyboard.press("d");
  await page.keyboard.press("4");
  await page.locator("label", { hasText: "Gain" }).locator("select").selectOption("0.25");
  await take(page, "difference");
  await page.keyboard.press("1");
}

async function takeNumbers(page) {
  await leaveField(page);
  await page.keyboard.press("p");
  const box = await page.locator("[data-test=picture]").boundingBox();
  for (const [x, y] of [[0.36, 0.3], [0.58, 0.36], [0.48, 0.62]])
    await page.mouse.click(box.x + x * box.width, box.y + y * box.height);
  await page.locator("[data-test=tab-probes]").click();
  await take(page, "probes");
  await page.keyboard.press("l");
  await drag(page, [0.34, 0.45], [0.62, 0.52]);
  await page.locator("[data-test=tab-line]").click();
  await take(page, "line");
  await page.keyboard.press("v");
}

async function takeHistory(page) {
  await chooseStage(page, "Pyramid");
  await setField(page, "03_ENHANCED_RATIO", "1.6");
  await page.locator("[data-test=tab-history]").click();
  await take(page, "history");
}

async function takeSave(page) {
  await page.keyboard.press("Control+s");
  await page.locator("[data-test=diff]").waitFor();
  await take(page, "save");
  await page.keyboard.press("Escape");
}

async function takeProfile(page) {
  await showScreen(page, "profile");
  await page.locator(".cm-content").click();
  await page.keyboard.press("Control+f");
  await page.keyboard.type("04_MAX_SLOPE");
  await page.keyboard.press("Enter");
  await page.keyboard.press("Escape");
  await page.keyboard.press("End");
  await page.keyboard.type("\n04_MAX_SLOP=2");
  await page.keyboard.press("Escape");
  await page.locator("aside", { hasText: "unknown-key" }).waitFor();
  await page.keyboard.press("ArrowUp");
  await take(page, "profile");
}

async function takeSheet(page) {
  await showScreen(page, "sheet");
  await page.locator("[data-test=sheet-key]").selectOption({ label: "04_MAX_SLOPE" });
  await page.locator("[data-test=sheet-values]").fill("1.2, 1.5, 2, 2.5, 3");
  await page.locator("[data-test=sheet-begin]").click();
  await page.getByText("5 made").waitFor();
  await take(page, "sheet");
}

async function takeCompare(page) {
  await showScreen(page, "compare");
  await page.locator("[data-test=compare-profile]").selectOption({ label: "older.ini" });
  await page.locator("[data-test=compare-begin]").click();
  await page.locator("[data-test=verdict]").filter({ hasText: "Pyramid" }).waitFor();
  await take(page, "compare");
}

await begin();
try {
  runTool("phantom", "--out", join(frames, "phantom_1300x1668.raw"));
  writeFileSync(other, edited("03_ENHANCED_RATIO", "1.1"), "latin1");
  await startTool("--against", other);
  const page = await open();
  await takeTune(page);
  await takeNumbers(page);
  await takeHistory(page);
  await takeSave(page);
  await takeProfile(page);
  await takeSheet(page);
  await takeCompare(page);
} finally {
  await closePages();
  await end();
}
