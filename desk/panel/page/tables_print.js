// Printing the Tables view: the cut list, with its own style, from the browser's print command too.
import { element } from "/element.js";
import { askShort, pageFile } from "/engine.js";
import { state } from "/state.js";

const kLongest = 4 << 20;  // bytes of a cut list that is kept; a longer one has a window of its own
const kPause = 500;        // ms after a change
const kElements = new Set(["body", "h1", "p", "table", "colgroup", "col", "thead", "tbody", "tr", "th",
  "td", "div", "span", "svg", "path", "polygon"]);
const kAttributes = new Set(["class", "colspan", "xmlns", "width", "height", "d", "points", "fill",
  "stroke", "shape-rendering"]);

function check(one) {
  const isKnown = kElements.has(one.localName) &&
    [...one.attributes].every(({ name, value }) => kAttributes.has(name) && !/url\s*\(/i.test(value));
  if (!isKnown) throw new Error(`the cut list holds <${one.localName}>, which this page does not print`);
  for (const child of one.children) check(child);
}

/** The body of the list as an element. Raises when it holds anything but tables, shapes and texts. */
function imported(list) {
  const { body } = new DOMParser().parseFromString(list, "text/html");
  check(body);
  return document.importNode(body, true);
}

/** Sheets of paper as a style asks for them: in a shadow tree no browser heeds that. */
function paperOf(style) {
  const paper = new CSSStyleSheet();
  for (const rule of style.cssRules) if (rule instanceof CSSPageRule) paper.insertRule(rule.cssText);
  return paper;
}

/** @return {prepare, has}: fetches the list of the job that is shown, soon; whether it is there */
export function createPrinting(root, text) {
  const place = element("div", { id: "cut-list" });
  const excuse = element("p", { textContent: text("tables.notHere") });
  const style = new CSSStyleSheet();
  place.append(excuse);
  root.append(place);
  let kept = { list: null };  // and the id and version of its job
  let soon;

  const isOf = ({ id, version }) => state.job?.id === id && state.job.version === version;
  const has = () => kept.list !== null && isOf(kept);

  async function load() {
    const { id, version } = state.job;
    const list = await askShort(state.job, "cuts", kLongest);
    if (style.cssRules.length === 0) style.replaceSync(await pageFile("/cut_list.css"));
    if (isOf({ id, version })) kept = { id, version, list };
  }

  window.addEventListener("beforeprint", () => {
    if (state.view !== "tables" || !has()) return;
    const list = imported(kept.list);
    const { loads, reason } = state.job;
    if (!loads) list.prepend(element("p", { className: "remark", textContent: reason }));
    const tree = element("div").attachShadow({ mode: "open" });  // the style is for nothing else
    tree.append(list);
    tree.adoptedStyleSheets = [style];
    document.adoptedStyleSheets = [paperOf(style)];
    place.replaceChildren(tree.host);
  });
  window.addEventListener("afterprint", () => {
    place.replaceChildren(excuse);
    document.adoptedStyleSheets = [];
  });
  return {
    has,
    prepare() {
      clearTimeout(soon);
      if (state.job?.version > 0 && !isOf(kept)) {
        soon = setTimeout(() => load().catch(() => {}), kPause);
      }
    },
  };
}
