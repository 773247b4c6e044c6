// The page in a real browser, as an operator uses it: node browser_test.mjs CUSDESK
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import { chromium } from "playwright-core";
import { testBars } from "./bars_test.mjs";
import { testPage } from "./page_test.mjs";
import { testTables } from "./tables_test.mjs";

const cusdesk = process.argv[2];
const folder = mkdtempSync(join(tmpdir(), "cus-browser-"));
const job = join(folder, "shop.json");

function writeJob(pieces, profile) {
  const piece = (number) => ({
    PieceNumber: number, BarCode: `TEST-${number}`,
    cut: { Length: `${1000 + number}.0`, sxB: "45", dxB: "90" }, work: [],
  });
  const bar = {
    BarNumber: 1, BarName: profile, length: 6500,
    piece: Array.from({ length: pieces }, (_, i) => piece(i + 1)),
  };
  writeFileSync(job, JSON.stringify({ success: true, Version: "1.0", Bar: [bar] }));
}

/** Starts a command that serves the page, and tells where. */
async function start(...words) {
  const process = spawn(cusdesk, words, { stdio: ["ignore", "pipe", "inherit"] });
  const [address] = await once(createInterface(process.stdout), "line");
  const stop = async () => {
    process.kill("SIGTERM");
    return once(process, "exit");
  };
  return { process, address, stop };
}

/** What the picture shows: its texts, and whether a row is marked. */
async function picture(page) {
  const svg = await page.evaluate(async () =>
    (await fetch(document.getElementById("picture").src)).text());
  return {
    texts: [...svg.matchAll(/<text[^>]*>([^<]*)/g)].map((match) => match[1]),
    marked: svg.includes("#ffd24d"),
  };
}

/** Waits for the picture to show what it should. */
async function pictureWith(page, wanted, what) {
  for (let i = 0; i < 100; ++i) {
    const shown = await picture(page);
    if (wanted(shown)) return shown;
    await page.waitForTimeout(100);
  }
  assert.fail(`the picture never showed ${what}`);
}

/** Waits for an element to show just this text: news reach the page after the picture that it asks
 * the server for. */
const showsText = (page, id, text) => page.waitForFunction(
  ([name, wanted]) => document.getElementById(name).innerText === wanted, [id, text]);

/** Clicks the middle of a band of the picture, wherever and however large it is shown. */
async function clickBand(page, band, bands = 10) {
  const box = await page.locator("#picture").boundingBox();
  await page.mouse.click(box.x + box.width / 3, box.y + (box.height * (band + 0.5)) / bands);
}

async function test(page, address) {
  await page.goto(address);
  await page.waitForFunction(() => document.getElementById("picture").naturalWidth === 800);
  await showsText(page, "page", "Page 1 / 3");
  await showsText(page, "name", "shop.json");
  await pictureWith(page, (shown) => shown.texts.includes("1001.0"), "page 1");
  assert.ok(await page.locator("#up").isDisabled());

  for (const [width, height, row] of [[1280, 800, 3], [420, 800, 7]]) {
    await page.setViewportSize({ width, height });
    await clickBand(page, row);
    await showsText(page, "row", `Row ${row} of 21`);
    await pictureWith(page, (shown) => shown.marked, "a selected row");
    const line = page.locator("#lines li", { hasText: `Cut ${row}: ${1000 + row}.0 mm` });
    await line.waitFor();
    assert.equal(await line.count(), 1);
  }
  await page.setViewportSize({ width: 1280, height: 800 });
  await clickBand(page, 0);  // the head

  await page.locator("#down").click();
  await pictureWith(page, (shown) => shown.texts.includes("1010.0"), "page 2");
  await page.keyboard.press("PageDown");
  await pictureWith(page, (shown) => shown.texts.includes("1020.0"), "page 3");
  await showsText(page, "page", "Page 3 / 3");
  assert.ok(await page.locator("#down").isDisabled());
  await page.keyboard.press("PageUp");
  await showsText(page, "page", "Page 2 / 3");

  writeJob(12, "<img src=x onerror=document.title='hacked'>");
  await pictureWith(page, (shown) => shown.texts.some((one) => one.startsWith("&lt;img")), "the new job");
  await showsText(page, "page", "Page 2 / 2");
  await clickBand(page, 1);
  await page.locator("#lines li", { hasText: "Cut 10: 1010.0 mm of <img" }).waitFor();
  assert.equal(await page.locator("#lines img").count(), 0);
  assert.equal(await page.title(), "shop.json - Panel");

  const quiet = () => page.locator("#lines li[data-speaker=plugin]").first().isVisible();
  assert.ok(await quiet());
  await page.locator("#plugin-lines").uncheck();
  assert.ok(!(await quiet()));
  assert.deepEqual(page.faults, []);
}

const watchdog = setTimeout(() => process.exit(2), 570_000);
writeJob(21, "Frame 70");
const panel = await start("panel", "--no-open", "--job", job);
const browser = await chromium.launch({
  executablePath: "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync"],
});

/** A page that notes whatever its console says, but what the browser says of answers that the page
 * knows: 409 while a file is saved, 503 of a server that is busy or ends. */
async function open(locale) {
  const page = await browser.newPage({ locale });
  page.setDefaultTimeout(60_000);
  page.faults = [];
  page.on("pageerror", (error) => page.faults.push(String(error)));
  page.on("console", (message) => {
    if (!/status of (409|503) /.test(message.text())) page.faults.push(message.text());
  });
  return page;
}

try {
  const page = await open("en");
  await test(page, panel.address);
  assert.deepEqual(await panel.stop(), [0, null]);
  await page.waitForFunction(() => document.getElementById("state").dataset.kind === "lost");
  const view = (port, file) => start("view", "--no-open", "--port", `${port}`, file);
  await testBars({ folder, open, start: view });
  await testTables({ folder, open, start: view });
  await testPage({ folder, open, start: view });
} finally {
  panel.process.kill("SIGKILL");
  await browser.close();
  rmSync(folder, { recursive: true });
  clearTimeout(watchdog);
}
