// The view Bars with many bars, equal ones among them.
import assert from "node:assert/strict";
import { writeFileSync } from "node:fs";
import { join } from "node:path";

const kBars = 1000;

/** Bars of eight pieces, each longer than the one before; the last two are equal. */
function longJob(code = "B") {
  const piece = (bar, place) => ({
    PieceNumber: place, BarCode: `${code}-${bar}-${place}`,
    cut: { Length: `${100 + Math.min(bar, kBars - 1) / 2}`, sxB: "45", dxB: "90" },
    work: [{ Name: "slot", ProfiLav: 1, PositionX: 50, PositionY: 20, PositionZ: 5 }],
  });
  const bars = Array.from({ length: kBars }, (_, i) => ({
    BarNumber: i + 1, BarName: "Frame", DXF_Name: "F-1", length: 6500, MaxY: 60, MaxZ: 50,
    piece: Array.from({ length: 8 }, (_, k) => piece(i + 1, k + 1)),
  }));
  return JSON.stringify({ success: true, Version: "1.0", Bar: bars });
}

const go = (page, hash) => page.evaluate((to) => { location.hash = to; }, hash);

/** Waits for a piece to be in sight and marked as it should be. */
const isSeen = (page, id, selected = "true") => page.waitForFunction(([piece, wanted]) => {
  const item = document.querySelector(`#view-bars [data-piece="${piece}"]`);
  const box = item?.getBoundingClientRect() ?? { top: -1 };
  const room = document.querySelector(".bar-scroller").getBoundingClientRect();
  return box.top >= room.top && box.bottom <= room.bottom && item.ariaSelected === wanted;
}, [id, selected]);

const place = (page) => page.locator(".bar-scroller").evaluate((one) =>
  [one.scrollLeft, one.scrollTop, one.scrollWidth, one.scrollHeight]);

/** However fast it is scrolled, what is in sight gets its drawing, and the rest is not in the page. */
async function scrolled(page) {
  await isSeen(page, "1.1", "false");
  await page.locator(".bar-scroller").evaluate(async (scroller) => {
    for (let i = 0; i < 60; ++i) {
      scroller.scrollTop = (scroller.scrollHeight * ((i * 7) % 60)) / 60;
      await new Promise(requestAnimationFrame);
    }
  });
  const groups = page.locator("#view-bars .group");
  await page.waitForFunction(() => [...document.querySelectorAll("#view-bars .group")]
    .every((one) => one.querySelector(".drawing") !== null));
  assert.ok(await groups.count() > 5 && await groups.count() < 40, `${await groups.count()} groups`);
}

/** A bar that is drawn with another one is meant all the same. */
async function selected(page) {
  await go(page, `#bars/0/${kBars}.3`);
  await isSeen(page, `${kBars - 1}.3`);
  const meant = page.locator(".group.chosen .meant");
  assert.match(await meant.innerText(), new RegExp(`${kBars}$`));
  await page.locator(`[data-piece="${kBars - 1}.5"] .target`).click({ position: { x: 20, y: 40 } });
  assert.match(page.url(), new RegExp(`/${kBars}\\.5$`));
  await page.locator(".bar-tools select").selectOption(`${kBars - 1}`);
  assert.match(page.url(), new RegExp(`/${kBars - 1}\\.5$`));
  await go(page, "#bars/0/500.2");
  await isSeen(page, "500.2");
}

async function byKeyboard(page) {
  await page.locator('[data-piece="500.2"]').focus();
  for (const [key, told] of [["ArrowRight", "B-500-3"], ["ArrowDown", "B-501-3"],
    ["Shift+ArrowRight", "slot: side 1"]]) {
    await page.keyboard.press(key);
    await page.locator(".bar-tip", { hasText: told }).waitFor();
  }
  await page.keyboard.press("Enter");
  assert.match(page.url(), /\/501\.3\.1$/);
}

/** Zoom, place and focus outlast a save and another view. */
async function kept(page, file) {
  await page.keyboard.press("+");
  await page.keyboard.press("+");
  await page.locator('[data-piece="501.3"]').focus();
  const before = await place(page);
  await page.locator("#tab-tables").click();
  await page.locator("#tab-bars").click();
  await page.locator('[data-piece="501.3"]').evaluate((one) => one.focus({ preventScroll: true }));
  writeFileSync(file, longJob("C"));
  await page.locator('[data-piece="501.3"][aria-label*="C-501-3"]:focus').waitFor();
  assert.deepEqual(await place(page), before);
}

/** What is printed are the sheets of the drawing and nothing else, each on a page. */
async function printed(page, file) {
  await page.keyboard.press("Escape");
  await page.keyboard.press("Escape");  // the tip, then the selection
  const job = JSON.parse(longJob());
  writeFileSync(file, JSON.stringify({ ...job, Bar: job.Bar.slice(0, 30) }));
  await page.locator(".bar-sheets img").first().waitFor({ state: "attached" });
  const sheets = await page.locator(".bar-sheets img").count();
  const pages = (await page.pdf({ preferCSSPageSize: true })).toString("latin1").match(/\/Type \/Page\b/g);
  assert.ok(sheets > 3);
  assert.equal(pages.length, sheets);
}

/** What is written on paper is on the page where it can be read; else dots say that there is more. */
async function written(page, file) {
  const piece = (length, i) => ({
    PieceNumber: i + 1, cut: { Length: `${length}`, sxB: "90", dxB: "90" }, work: [],
  });
  for (const [lengths, width, height, areLeft] of [
    [[1000, 9, 60, 6000], 1024, 600, false], [[1000, 9, 60, 6000], 390, 844, false],
    [Array.from({ length: 60 }, (_, i) => 60 + i), 390, 844, true]]) {
    await page.setViewportSize({ width, height });
    const bar = { BarNumber: 1, length: 7100, piece: lengths.map(piece) };
    writeFileSync(file, JSON.stringify({ success: true, Version: "1.0", Bar: [bar] }));
    await page.waitForFunction((count) =>
      document.querySelectorAll("#view-bars [data-piece]").length === count, lengths.length);
    await page.locator(".bar-tools button").nth(3).click();  // fit the width
    const [left, dots, covered] = await page.evaluate(() => {
      const all = [...document.querySelectorAll(".drawing [aria-hidden] text")];
      const boxes = all.filter((one) => !one.matches(".left-out")).map((one) => one.getBoundingClientRect());
      const isOn = (a, b) => a !== b && a.top === b.top && a.left < b.right && b.left < a.right;
      return [all.length - boxes.length, document.querySelectorAll(".drawing .more").length,
        boxes.filter((a) => boxes.some((b) => isOn(a, b))).length];
    });
    assert.deepEqual([left > 0, dots > 0, covered], [areLeft, areLeft, 0], `${lengths.length} at ${width}`);
  }
}

/** A drawing that holds more than shapes and texts does not get into the page. */
async function refused(page) {
  const taken = await page.evaluate(async () => {
    const { imported } = await import("/bars_drawing.js");
    const isTaken = (inner) => {
      try {
        return imported(`<svg xmlns="http://www.w3.org/2000/svg">${inner}</svg>`) !== null;
      } catch {
        return false;
      }
    };
    return ["<g><text>fine</text></g>", "<script>1</script>", '<g onclick="1"/>', "<foreignObject/>",
      '<a href="/x"/>', '<rect fill="url(/x)"/>', '<g style="fill:red"/>', "<g"].map(isTaken);
  });
  assert.deepEqual(taken, [true, false, false, false, false, false, false, false]);
}

/** `open` and `start` as testPage has them. */
export async function testBars({ folder, open, start }) {
  const file = join(folder, "bars.json");
  writeFileSync(file, longJob());
  const server = await start(0, file);
  try {
    const page = await open("en");
    await page.setViewportSize({ width: 1280, height: 800 });
    await page.goto(new URL("#bars/0", server.address).href);
    for (const test of [scrolled, selected, byKeyboard, kept, printed, written]) await test(page, file);
    assert.deepEqual(page.faults, []);
    await refused(page);
    await page.close();
  } finally {
    await server.stop();
  }
}
