// The page with its views, as people use it who write, check or cut a job.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const kViews = ["bars", "tables", "findings", "panel"];
const kHostile = `</title><img src=x onerror="window.hacked=1"><script>window.hacked=1</script>'"&`;

/** A job of so many pieces on bars of six, each with a work on a side that is not there. */
export function jobOf(pieces, text = "Frame 70") {
  const piece = (number) => ({
    PieceNumber: number, BarCode: `${text}-${number}`, Field1: text, [text]: text,
    cut: { Length: `${1000 + number}.0`, sxB: "45", dxB: "90" },
    work: [{ Name: text, ProfiLav: 9, PositionX: 10, PositionY: 5, PositionZ: 5 }],
  });
  const all = Array.from({ length: pieces }, (_, i) => piece(i + 1));
  const bars = Array.from({ length: Math.ceil(pieces / 6) }, (_, i) => ({
    BarNumber: i + 1, BarName: text, BarColor: text, length: 6500, MaxY: 60, MaxZ: 50,
    piece: all.slice(6 * i, 6 * i + 6),
  }));
  return JSON.stringify({ success: true, Version: "1.0", Name: text, Bar: bars }, null, 1);
}

const showsText = (page, selector, text) => page.waitForFunction(([where, wanted]) =>
  document.querySelector(where)?.innerText.includes(wanted), [selector, text]);

/** The view that is shown: each has its tab, and only one of them is in sight. */
const viewOf = (page) => page.evaluate(() =>
  [...document.querySelectorAll("[role=tabpanel]:not([hidden])")].map((one) => one.id).join());

/** Tab keys until something that fits, with such a text, has the focus. */
async function tabTo(page, selector, text = "") {
  for (let i = 0; i < 60; ++i) {
    const isThere = await page.evaluate(([where, words]) => document.activeElement.matches(where) &&
      document.activeElement.innerText.includes(words), [selector, text]);
    if (isThere) return;
    await page.keyboard.press("Tab");
  }
  assert.fail(`the Tab key never reaches ${selector} ${text}`);
}

/** What the page is given: another view of the same page loads it anew. */
async function goTo(page, address, hash) {
  await page.goto("about:blank");
  await page.goto(new URL(`#${hash}`, address).href);
  await page.locator(`#view-${hash.split("/")[0]}:not([hidden])`).waitFor();
  await page.waitForFunction(() => document.getElementById("state").dataset.kind === "live");
}

async function keyboardAndSelection(page, { address, file }) {
  await goTo(page, address, "bars/0");
  await tabTo(page, "#tab-bars");
  for (const view of ["tables", "findings", "panel", "bars", "tables", "findings"]) {
    await page.keyboard.press("ArrowRight");
    assert.equal(await viewOf(page), `view-${view}`);
  }
  await showsText(page, "#facts", "21 pieces");
  await tabTo(page, "#view-findings button", "piece 1 of bar 1");
  await page.keyboard.press("Enter");
  await showsText(page, "#details", "Frame 70-1");
  await showsText(page, "#details .source", '"sxB": "45"');
  const address1 = page.url();
  assert.match(address1, /#findings\/0\/1\.1(\.1)?$/);
  for (const view of ["tables", "bars"]) {
    await page.locator(`#tab-${view}`).click();
    await page.locator(`#view-${view} :is(.selected, [aria-selected=true])`).first().waitFor();
  }
  await page.context().grantPermissions(["clipboard-read", "clipboard-write"]);
  await page.locator("#details [data-key=copy]").click();
  await page.waitForFunction(async (link) => await navigator.clipboard.readText() === link, page.url());
  await page.locator("#details tbody button").click();
  assert.match(page.url(), /#bars\/0\/1\.1\.1$/);

  const before = await page.locator("#details").evaluate((one) => (one.scrollTop = 40, one.scrollTop));
  writeFileSync(file, jobOf(21).replace("1001.0", "777.0"));
  await showsText(page, "#details", "777.0");
  assert.match(page.url(), /#bars\/0\/1\.1\.1$/);
  assert.equal(await page.locator("#details").evaluate((one) => one.scrollTop), before);
  await page.keyboard.press("Escape");
  await page.locator("#details").waitFor({ state: "hidden" });
}

async function brokenJob(page, { address, file }) {
  await goTo(page, address, "bars/0/1.2");
  await showsText(page, "#details", "Frame 70-2");
  writeFileSync(file, '{"success": true,\n "Bar": [}');
  await showsText(page, "#reason", `${file}:2:10`);
  await showsText(page, "#state", "Not loading");
  assert.ok(await page.locator("#view-bars svg [data-piece]").first().isVisible());
  writeFileSync(file, jobOf(21));
  await page.locator("#reason").waitFor({ state: "hidden" });
  await showsText(page, "#details", "Frame 70-2");
}

async function dropped(page, { address }) {
  await goTo(page, address, "findings/0");
  await page.evaluate((text) => {
    const files = new DataTransfer();
    files.items.add(new File([text], "dropped.json"));
    document.body.dispatchEvent(new DragEvent("drop", { dataTransfer: files, bubbles: true }));
  }, jobOf(2));
  await showsText(page, "#facts", "2 pieces");
  assert.equal(await page.locator("#jobs option:checked").innerText(), "dropped.json");
  await page.locator("#file").setInputFiles({
    name: "notes.txt", mimeType: "text/plain", buffer: Buffer.from("no job"),
  });
  await showsText(page, "#reason", "notes.txt");
  await showsText(page, "#view-findings mark", "no");
  await showsText(page, "#state", "Not loading");
  assert.equal(await page.locator("#facts li:visible").count(), 0);
  await showsText(page, "#severities", "1 error");
  await page.locator("#tab-bars").click();
  await page.locator("#to-findings").click();
  assert.equal(await viewOf(page), "view-findings");
  await page.locator("#file").setInputFiles({
    name: "none.json", mimeType: "", buffer: Buffer.from(jobOf(0, "Nothing")),
  });
  await showsText(page, "#job-name", "Nothing");
  await page.locator("#tab-tables").click();
  await showsText(page, "#absence", "no bars");
  await page.locator("#jobs").selectOption("0");
  await showsText(page, "#facts", "21 pieces");
  await showsText(page, "#state", "Following");
}

/** Texts of a job are texts on the page, wherever they stand; what is long is not in it whole. */
async function hostileAndLong(page, { address, file }) {
  await goTo(page, address, "bars/0");
  await showsText(page, "#facts", "21 pieces");
  writeFileSync(file, jobOf(3000, kHostile));
  await showsText(page, "#facts", "3000 pieces");
  for (const view of kViews) {
    await goTo(page, address, `${view}/0/1.1`);
    await showsText(page, "#facts", "3000 pieces");
    if (view !== "panel") await showsText(page, "#details", kHostile);
    assert.equal(await page.evaluate(() => window.hacked), undefined);
    const foreign = "img:not(#picture, .bar-sheets img), script:not([src='/main.js']), foreignObject, iframe";
    assert.equal(await page.locator(foreign).count(), 0);
  }
  await goTo(page, address, "findings/0/300.2");
  await page.locator("#view-findings li.selected", { hasText: "of bar 300" }).first().waitFor();
  const list = page.locator("#view-findings ol > li[aria-posinset]");
  await list.first().waitFor();
  const all = Number(await list.first().getAttribute("aria-setsize"));
  assert.ok(all > 1000);
  await page.locator("#finding-list").focus();
  await page.keyboard.press("End");
  await page.locator(`li[aria-posinset="${all}"] .message`).waitFor();
  assert.ok(await list.count() < 40);
  await page.keyboard.press("Home");
  await page.locator("li[aria-posinset='1'] .message").waitFor();
  await tabTo(page, "li[aria-posinset='12'] *");
  await page.keyboard.press("Escape");
  writeFileSync(file, jobOf(21));
  await showsText(page, "#facts", "21 pieces");
}

/** What has less room than its words (words for screen readers only aside), and what of the frame
 * and the panel is not in sight. */
function cutOff() {
  const isCut = (one) => one.scrollWidth > one.clientWidth + 1 &&
    ![...one.children].some((child) => getComputedStyle(child).position === "absolute");
  const isOut = (one) => {
    const { right, bottom } = one.getBoundingClientRect();
    return one.closest("#header, #tabs, #case") && (right > innerWidth || bottom > innerHeight);
  };
  return [...document.querySelectorAll("button, select, h1, #state")]
    .filter((one) => one.checkVisibility() && (isCut(one) || isOut(one)))
    .map((one) => one.outerHTML);
}

/** Nothing sticks out and no button's words are cut. */
async function allInSight(page, view, [width, height]) {
  await page.setViewportSize({ width, height });
  await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => setTimeout(done))));
  assert.deepEqual(await page.evaluate(cutOff), [], `${view} ${width}x${height}`);
}

/** axe-core finds nothing, in light and dark. */
async function accessible(page, what) {
  await page.evaluate(axe);
  for (const colorScheme of ["light", "dark"]) {
    await page.emulateMedia({ colorScheme });
    const { violations } = await page.evaluate(() => axe.run());
    assert.deepEqual(violations.map((one) => [one.id, one.nodes.map((node) => node.html)]), [],
      `${what} ${colorScheme}`);
  }
}

async function everySize(page, { address }) {
  for (const view of kViews) {
    await goTo(page, address, `${view}/0/1.2`);
    await page.locator("#facts li").nth(2).waitFor();
    for (const size of [[1920, 1080], [1024, 600], [390, 844], [844, 390]]) {
      await allInSight(page, view, size);
    }
    for (const size of [[800, 480], [1280, 800]]) {
      await allInSight(page, view, size);
      await accessible(page, `${view} ${size}`);
    }
  }
}

async function chinese(page, { address }) {
  for (const view of kViews) {
    await goTo(page, address, `${view}/0/1.2`);
    await page.locator("#facts li").nth(2).waitFor();
    await allInSight(page, view, [800, 480]);
  }
  assert.equal(await page.locator("#tab-panel").innerText(), "面板");
  assert.equal(await page.locator("html").getAttribute("lang"), "zh-CN");
  const lacking = await page.evaluate(async () => {
    const slots = (text) => [...new Set(text.match(/\{\d\}/g))].sort().join();
    return Object.entries((await import("/texts.js")).kTexts).filter(([, texts]) =>
      texts.length !== 2 || texts.includes("") || slots(texts[0]) !== slots(texts[1]))
      .map(([key]) => key);
  });
  assert.deepEqual(lacking, []);
}

async function lostConnection(page, shop) {
  await goTo(page, shop.address, "findings/0/1.2");
  await shop.stop();
  await page.waitForFunction(() => document.getElementById("state").dataset.kind === "lost");
  writeFileSync(shop.file, jobOf(5));
  await shop.start(new URL(shop.address).port);
  await showsText(page, "#facts", "5 pieces");
  await showsText(page, "#details", "Frame 70-2");
}

/** A page that nobody sees takes no connection from those that are seen. */
async function unseen(page, shop) {
  await goTo(page, shop.address, "bars");
  const setHidden = (isHidden) => page.evaluate((value) => {
    Object.defineProperty(document, "hidden", { value, configurable: true });
    document.dispatchEvent(new Event("visibilitychange"));
  }, isHidden);
  const ended = page.waitForEvent("requestfailed", (request) => /events$/.test(request.url()));
  await setHidden(true);
  await ended;
  writeFileSync(shop.file, jobOf(6));
  await setHidden(false);
  await showsText(page, "#facts", "6 pieces");
}

/** Runs all on a page of its own each. `open(languages)` gives a page whose faults are gathered in
 * `page.faults`; `start(port, file)` starts the server and gives its address and how to stop it. */
export async function testPage({ folder, open, start }) {
  const file = join(folder, "shop.json");
  const shop = { file };
  shop.start = async (port) => Object.assign(shop, await start(port, file));
  writeFileSync(file, jobOf(21));
  await shop.start(0);
  try {
    for (const test of [keyboardAndSelection, brokenJob, dropped, everySize, chinese, hostileAndLong,
      unseen, lostConnection]) {
      const page = await open(test === chinese ? "zh-CN" : "en");
      await test(page, shop);
      const isExpected = (fault) => test === lostConnection && /ERR_/.test(fault);
      assert.deepEqual(page.faults.filter((fault) => !isExpected(fault)), [], test.name);
      await page.close();
    }
  } finally {
    await shop.stop();
  }
}
