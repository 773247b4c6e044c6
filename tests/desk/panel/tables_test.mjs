// The view Tables with a long job.
import assert from "node:assert/strict";
import { writeFileSync } from "node:fs";
import { join } from "node:path";

const kPieces = 8000;
const code = (number) => `T-${String(number).padStart(4, "0")}`;

/** Bars of eight; the second piece of each has no left angle of its own. */
function longJob(longest = "1500.0", pieces = kPieces) {
  const piece = (number) => ({
    PieceNumber: number, BarCode: code(number),
    cut: {
      Length: number === 3996 ? longest : `${100 + (number * 37) % 500}.0`, dxB: "90",
      ...(number % 8 === 2 ? {} : { sxB: "45" }),
    },
    work: [{ Name: "slot", ProfiLav: 1, PositionX: 50 }, { Name: "hole", ProfiLav: 1, PositionX: 60 }],
  });
  const bars = Array.from({ length: pieces / 8 }, (_, i) => ({
    BarNumber: i + 1, BarName: "Frame", length: 6500, MaxY: 60, MaxZ: 50,
    piece: Array.from({ length: 8 }, (_, k) => piece(8 * i + k + 1)),
  }));
  return JSON.stringify({ success: true, Version: "1.0", Bar: bars }, null, 1);
}

const head = (page, name) => page.locator("#grid th").filter({ hasText: new RegExp(`^${name}$`) });

/** Waits for the row of that place in the table, in sight, to hold a text. */
const rowHolds = (page, place, text) => page.waitForFunction(([row, words]) => {
  const shown = document.querySelector(`#grid tr[aria-rowindex="${row + 1}"]`);
  const room = document.querySelector(".grid-scroller").getBoundingClientRect();
  const { top, bottom } = shown?.getBoundingClientRect() ?? { top: -1, bottom: 0 };
  return top > room.top && bottom <= room.bottom + 1 && shown.innerText.includes(words);
}, [place, text]);

const marked = (page) => page.locator("#grid tbody tr[aria-selected=true]")
  .evaluateAll((rows) => rows.map((row) => row.ariaRowIndex - 1));

async function sortedAndFiltered(page) {
  await rowHolds(page, 1, code(1));
  await head(page, "CutLength").click();
  await rowHolds(page, 1, "100.0");
  await head(page, "CutLength").click();
  await rowHolds(page, 1, "1500.0");
  assert.equal(await head(page, "CutLength").getAttribute("aria-sort"), "descending");
  await page.keyboard.press("Enter");  // the head is the active cell: the job's order again
  await rowHolds(page, 2, code(2));
  await page.locator("#table-tools input").pressSequentially("t-012");
  await rowHolds(page, 10, code(129));
  assert.equal(await page.locator("#row-count").innerText(), "10 of 8000 rows");
  await page.locator("#table-tools input").fill("");
  await rowHolds(page, 12, code(12));
}

/** However fast it is scrolled, each row shows what stands there, and only those in sight are in the
 * page. */
async function scrolled(page) {
  await page.locator("#grid table").evaluate(async () => {
    const scroller = document.querySelector(".grid-scroller");
    for (let i = 0; i < 60; ++i) {
      scroller.scrollTop = (scroller.scrollHeight * ((i * 7) % 60)) / 60;
      await new Promise(requestAnimationFrame);
    }
  });
  await page.waitForFunction(() => document.querySelector("#grid tr.coming") === null);
  const rows = await page.locator("#grid tbody tr").evaluateAll((all) =>
    all.map((row) => [row.ariaRowIndex - 1, row.innerText]));
  assert.ok(rows.length > 10 && rows.length < 60, `${rows.length} rows`);
  for (const [place, text] of rows) assert.ok(text.includes(code(place)), `${place}: ${text}`);
  await page.locator("#grid table").focus();
  await page.keyboard.press("Control+End");
  await rowHolds(page, kPieces, code(kPieces));
}

async function selected(page) {
  await page.keyboard.press("ArrowUp");
  await page.keyboard.press("Enter");
  assert.match(page.url(), /#tables\/0\/1000\.7$/);
  assert.deepEqual(await marked(page), [kPieces - 1]);
  await page.evaluate(() => { location.hash = "#tables/0/500.3"; });
  await rowHolds(page, 3995, code(3995));
  assert.deepEqual(await marked(page), [3995]);
  await page.getByRole("button", { name: "Works" }).click();
  await rowHolds(page, 2 * 3995, "hole");
  assert.deepEqual(await marked(page), [2 * 3995 - 1, 2 * 3995]);
  await page.getByRole("button", { name: "Cuts" }).click();
  await rowHolds(page, 3995, code(3995));
}

async function carried(page) {
  const cell = page.locator('#grid tr[aria-rowindex="3995"] td.carried').first();
  const told = /^45 \(carried over from line \d+, piece 1 of bar 500\)$/;
  assert.match(await cell.getAttribute("aria-label"), told);
  await cell.click();
  const note = await page.locator("#cell-note").innerText();
  assert.match(note.replace("SxB: ", ""), told);
}

/** A save keeps what is in sight. */
async function saved(page, file) {
  const scrolledTo = () => page.locator(".grid-scroller").evaluate((one) => one.scrollTop);
  const before = await scrolledTo();
  writeFileSync(file, longJob("1499.0"));
  await rowHolds(page, 3996, "1499.0");
  assert.deepEqual(await marked(page), [3994]);
  assert.equal(await scrolledTo(), before);
}

/** The content policy lets the cut list have its style. */
async function printed(page) {
  const [list] = await Promise.all([page.waitForEvent("popup"), page.keyboard.press("Control+p")]);
  list.on("console", (message) => page.faults.push(message.text()));
  await list.locator("h1").waitFor();
  assert.equal(await list.evaluate(() => getComputedStyle(document.querySelector("h1")).margin), "0px");
  await list.close();
}

/** The browser's own print command has the whole list, or none of it. */
async function printedByBrowser(page, file) {
  const paper = () => page.evaluate(async () => {
    await new Promise((done) => setTimeout(done, 200));
    dispatchEvent(new Event("beforeprint"));
    const list = document.getElementById("cut-list").firstChild.shadowRoot?.firstChild.innerText ?? "";
    const printed = document.body.innerText.trim() + list;
    dispatchEvent(new Event("afterprint"));
    return printed;
  });
  await page.keyboard.press("Escape");  // what is selected will be gone
  await page.emulateMedia({ media: "print" });
  assert.match(await paper(), /^The cut list is not on this sheet: .*$/);
  const [list] = await Promise.all([page.waitForResponse(/\/cuts\?/),
    writeFileSync(file, longJob("1500.0", 96))]);
  await list.finished();
  const rows = await paper();
  for (let i = 1; i <= 96; ++i) assert.ok(rows.includes(code(i)), code(i));
  const pdf = await page.pdf({ preferCSSPageSize: true });
  assert.ok(/MediaBox \[0 0 594\.\d+ 841\.\d+\]/.test(pdf.toString("latin1")), "sheets of A4");
}

/** `open` and `start` as testPage has them. */
export async function testTables({ folder, open, start }) {
  const file = join(folder, "long.json");
  writeFileSync(file, longJob());
  const server = await start(0, file);
  try {
    const page = await open("en");
    await page.setViewportSize({ width: 1600, height: 700 });
    await page.goto(new URL("#tables/0", server.address).href);
    await sortedAndFiltered(page);
    await scrolled(page);
    await selected(page);
    await carried(page);
    await saved(page, file);
    await printed(page);
    await printedByBrowser(page, file);
    assert.deepEqual(page.faults.filter((fault) => !/404/.test(fault)), []);  // of what was there before a save
    await page.close();
  } finally {
    await server.stop();
  }
}
