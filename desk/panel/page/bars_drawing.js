// Drawings of bars as elements of the page: taken over from the engine's SVG after a check, fitted
// to the zoom, marked.
import { Texts } from "/bars_texts.js";

const kSvg = "http://www.w3.org/2000/svg";
const kElements = new Set(["svg", "g", "title", "text", "tspan", "rect", "line", "polyline", "polygon",
  "path", "circle", "ellipse"]);
const kAttributes = new Set(["xmlns", "class", "width", "height", "viewBox", "x", "y", "x1", "y1",
  "x2", "y2", "dx", "dy", "cx", "cy", "r", "rx", "ry", "d", "points", "transform", "fill", "stroke",
  "stroke-width", "stroke-dasharray", "text-anchor", "font-family", "font-size", "font-weight",
  "font-style", "data-bar", "data-piece", "data-work"]);
const kAround = 1.7;  // radius of the circle around a selected sign, in the drawing's units
const kFlag = 14;     // px that a flag takes
const kMore = "M-3.5 3h0m3.5 0h0m3.5 0h0";  // three dots below a point, in px
const kMoreWidth = 12;
const kSigns = {   // in px around a point
  error: ["M-3.3-8h6.6l4.7 4.7v6.6l-4.7 4.7h-6.6l-4.7-4.7v-6.6z", "M-3-3l6 6m0-6l-6 6"],
  warning: ["M0-8l9 16h-18z", "M0-2.5v4.5m0 2v2"],
};

function svg(name, attributes = {}) {
  const element = document.createElementNS(kSvg, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  return element;
}

function check(element) {
  const isKnown = element.namespaceURI === kSvg && kElements.has(element.localName) &&
    [...element.attributes].every((one) => kAttributes.has(one.name) && !/url\s*\(/i.test(one.value));
  if (!isKnown) throw new Error(`the drawing holds <${element.localName}>, which this page does not show`);
  for (const child of element.children) check(child);
}

/** The engine's SVG as an element. Raises when it holds anything but shapes and texts. */
export function imported(markup) {
  const root = new DOMParser().parseFromString(markup, "image/svg+xml").documentElement;
  check(root);
  return document.importNode(root, true);
}

/** Takes an element's title: a viewer would show it late and where it likes. */
function takeValues(element) {
  const title = element.querySelector(":scope > title");
  element.values = title?.textContent ?? "";
  title?.remove();
}

/** Makes a piece or a work an item that can be pointed at and read out. */
function prepare(item) {
  takeValues(item);
  item.setAttribute("aria-label", item.values);
  item.setAttribute("role", "treeitem");
  item.setAttribute("tabindex", "-1");
  item.setAttribute("aria-selected", "false");
}

/** The outlines of a piece, one for each side that is drawn, or the sign of a work. */
const shapesOf = (item) => (item.dataset.work ? [item] :
  [...item.querySelectorAll(item.querySelector("polygon") ? "polygon" : "line")]);

/** The outline of a piece again, or a circle around the sign of a work. */
function outlineOf(shape, kind) {
  if (shape.dataset.work) {
    const { x, y, width, height } = shape.getBBox();
    return svg("circle", { class: `${kind} work`, cx: x + width / 2, cy: y + height / 2, r: kAround });
  }
  const outline = svg(shape.localName, { class: kind });
  for (const name of ["points", "x1", "y1", "x2", "y2"]) {
    if (shape.hasAttribute(name)) outline.setAttribute(name, shape.getAttribute(name));
  }
  return outline;
}

/** What is drawn in px, whatever the zoom. */
const inPx = (x, y) => `translate(${x}px, ${y}px) scale(calc(1 / var(--along)), calc(1 / var(--across)))`;

/** A sign in the middle above a piece. */
function flagOf(place, severity) {
  const flag = svg("g", { class: `flag ${severity}` });
  flag.append(...kSigns[severity].map((d) => svg("path", { d })));
  flag.severity = severity;
  flag.x = place.x + place.width / 2;
  flag.style.transform = inPx(flag.x, place.y);
  return flag;
}

/** The signs of a legend with their names, as items of a list: it is as wide as the page has room. */
export function legendItems(markup) {
  if (markup === "") return [];
  return [...imported(markup).querySelectorAll("text")].map((text) => {
    const item = document.createElement("li");
    const sign = text.previousElementSibling;
    if (sign?.localName === "path") {
      const [x, y] = sign.getAttribute("d").match(/-?[\d.]+/g).map(Number);
      const picture = svg("svg", { viewBox: `${x - 1} ${y - 1} 2 2`, "aria-hidden": "true" });
      picture.append(sign);
      item.append(picture);
    }
    item.append(text.textContent);
    return item;
  });
}

/** One drawing in the page. */
export class Drawing {
  constructor(markup) {
    this.root = imported(markup);
    this.root.classList.add("drawing");
    this.root.setAttribute("preserveAspectRatio", "none");
    this.root.setAttribute("role", "presentation");
    this.pieces = [...this.root.querySelectorAll("[data-piece]")];
    this.texts = svg("g", { "aria-hidden": "true" });  // at the pieces: their labels say the same
    for (const piece of this.pieces) {
      piece.texts = [...piece.querySelectorAll("text")];
      piece.leaders = [...piece.querySelectorAll(".leader")];
      const works = svg("g", { role: "group" });
      works.append(...piece.querySelectorAll("[data-work]"));
      if (works.firstChild !== null) piece.append(works);
    }
    this.items = [...this.root.querySelectorAll("[data-piece], [data-work]")];
    for (const item of this.items) prepare(item);
    this.bar = this.root.querySelector("[data-bar]");
    for (const one of [this.root, this.bar]) takeValues(one);
    this.flags = svg("g", { class: "flags" });
    this.more = svg("g", { "aria-hidden": "true" });  // where numbers are left out
    this.root.append(this.texts, this.more, this.flags);
    this.along = 1;    // px of a unit
    this.fitted = null;
    this.chosen = [];  // elements that show the selection
  }

  /** Measures it, once it is in the page; changes nothing until all is measured, as each change would
   * make the browser lay it out again. */
  measure() {
    const bar = this.root.querySelector(".bar, .open").getBBox();
    const free = [...this.root.querySelectorAll("text")].filter((one) => !one.closest("[data-piece]"));
    for (const piece of this.pieces) {
      const shapes = shapesOf(piece);
      piece.place = shapes[0].getBBox();
      const last = shapes.length === 1 ? piece.place : shapes.at(-1).getBBox();
      piece.bottom = last.y + last.height;
      piece.all = piece.getBBox();
    }
    this.fitted = new Texts(this.pieces, free, bar.x + bar.width);
    for (const piece of this.pieces) this.open(piece);
    for (const text of this.root.querySelectorAll("text")) {
      text.style.transformOrigin = `${text.getAttribute("x")}px 0`;
    }
  }

  /** Lets all of a piece's place, texts included, be pointed at. */
  open(piece) {
    const { place, all } = piece;
    this.texts.append(...piece.texts);
    piece.prepend(svg("rect", { class: "target", x: place.x, y: place.y, width: place.width,
      height: all.y + all.height - place.y }));
  }

  /** How much of the bar is used. */
  get sum() { return this.root.querySelector(".sum")?.textContent ?? ""; }

  find(id) {
    return this.items.find((item) => (item.dataset.work ?? item.dataset.piece) === id) ?? null;
  }

  /** Makes texts fit where a unit takes so many px along and across. Three dots are below a piece whose
   * number has no room. */
  fit(along, across) {
    this.along = along;
    this.thinOut();
    let end = -Infinity;
    this.more.replaceChildren(...this.fitted.fit(across / along).flatMap(({ piece, x }) => {
      if ((x - end) * along < kMoreWidth) return [];
      end = x;
      const dots = svg("path", { class: "more", d: kMore });
      dots.style.transform = inPx(x, piece.bottom);
      return [dots];
    }));
  }

  /** Shows that the piece or work of that id is selected; "" or a bar's: none is. */
  choose(id) {
    for (const one of this.chosen) one.remove();
    this.chosen = [];
    for (const item of this.items) item.setAttribute("aria-selected", "false");
    const item = this.find(id);
    if (item === null) return;
    item.setAttribute("aria-selected", "true");
    for (const kind of ["halo", "ring"]) {
      this.chosen.push(...shapesOf(item.closest("[data-piece]")).map((one) => outlineOf(one, kind)));
      if (item.dataset.work) this.chosen.push(outlineOf(item, kind));
    }
    this.flags.before(...this.chosen);
  }

  /** Marks pieces for findings. `markOf(piece)` gives the severity, "" for none, and words that are
   * added to what the piece is called. */
  flag(markOf) {
    this.flags.replaceChildren();
    for (const piece of this.pieces) {
      const [severity, words] = markOf(piece);
      piece.setAttribute("aria-label", [piece.values, words].filter((one) => one !== "").join("\n"));
      if (severity !== "") this.flags.append(flagOf(piece.place, severity));
    }
    this.thinOut();
  }

  /** Leaves out flags that would lie on another one which is no less severe. */
  thinOut() {
    let last = { x: -Infinity };
    for (const flag of this.flags.children) {
      const isNear = (flag.x - last.x) * this.along < kFlag;
      const isHidden = isNear && (last.severity === "error" || last.severity === flag.severity);
      flag.classList.toggle("left-out", isHidden);
      if (!isHidden) last = flag;
    }
  }
}
