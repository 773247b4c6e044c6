// Printing the Bars view: the drawing as a file has it, in its own sheets.
import { documentAddress } from "/engine.js";
import { state } from "/state.js";

const kSheet = { width: 297, height: 210 };  // of the drawing, which is in sheets of A4 across
const kMostPreloaded = 100;  // drawn bars; the drawing of more is fetched when somebody prints

/** A window on each sheet of the drawing: pages of a printer are not just as high as sheets, so what
 * is cut by them drifts. */
function sheetsOf(picture) {
  const height = (picture.naturalHeight * kSheet.width) / picture.naturalWidth;
  return Array.from({ length: Math.max(Math.round(height / kSheet.height), 1) }, (_, index) => {
    const sheet = document.createElement("div");
    sheet.append(picture.cloneNode());
    sheet.firstChild.style.marginTop = `${-index * kSheet.height}mm`;
    return sheet;
  });
}

/** @return {prepare, print}: fetches the drawing for the browser's own print command where that is
 * cheap; fetches and prints it */
export function createPrinting(root, text, refused) {
  const sheets = document.createElement("div");
  sheets.className = "bar-sheets";
  const picture = document.createElement("img");
  const excuse = document.createElement("p");
  excuse.textContent = text("bars.notYet");
  sheets.append(excuse);
  root.append(sheets);
  let loading = null;
  let loaded = "";

  async function load() {
    const address = documentAddress(state.job, "drawing");
    if (loaded === address) return;
    picture.src = address;
    picture.alt = "";
    await picture.decode();
    loaded = address;
    sheets.replaceChildren(...sheetsOf(picture));
  }

  const print = async () => {
    try {
      await load();
      window.print();
    } catch {
      refused(new Error(text("bars.noDrawing")));
    }
  };

  document.addEventListener("keydown", (event) => {
    if (state.view !== "bars" || event.key !== "p" || !(event.ctrlKey || event.metaKey)) return;
    event.preventDefault();
    print();
  });
  return {
    print,
    prepare(drawnBars) {
      loaded = "";
      sheets.replaceChildren(excuse);
      clearTimeout(loading);
      if (drawnBars <= kMostPreloaded) loading = setTimeout(() => load().catch(() => {}), 500);
    },
  };
}
