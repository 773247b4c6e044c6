// The drawings of a job's bars one below the other. Only those in or near the window are in the page
// and asked for.
import { Drawing } from "/bars_drawing.js";
import { Layout } from "/bars_layout.js";

const kReadable = 3.4;  // px of a unit across at which the smallest texts of a drawing can be read
const kTiny = 3.0;      // below that they are left out
const kLeast = 0.5;     // px of a unit
const kMost = 80;
const kHighest = 1e7;   // px that browsers scroll through without faults
const kAtOnce = 4;      // requests
const kNarrow = 640;    // px of the window, in which a caption and a sum need two lines
const kAround = 24;     // px kept free around what is scrolled to

export class Canvas {
  /** @param load(group) promises the SVG of a drawn bar
   *  @param describe(group, section) fills a section's caption, `shown(section, focused)` is told of
   *  each new drawing, and which item of the old one had the focus, resized() after the window was */
  constructor(scroller, { load, describe, shown, resized, failed }) {
    Object.assign(this, { scroller, load, describe, shown, resized, failed });
    this.content = document.createElement("div");
    this.content.className = "bars";
    scroller.append(this.content);
    this.layout = new Layout([]);
    this.sections = new Map();  // in the page, by index
    this.version = 0;           // of the groups
    this.isOutdated = false;
    this.isFitted = true;
    this.size = "";             // of the window; empty while it is hidden
    this.scrolledTo = { scrollTop: 0, scrollLeft: 0 };
    this.asked = 0;
    scroller.addEventListener("scroll", () => this.refresh(), { passive: true });
    new ResizeObserver(() => this.resize()).observe(scroller);
  }

  /** Asks for nothing more until it is to show other groups. */
  expect() {
    this.isOutdated = true;
  }

  /** Shows other groups, where the old ones are, at their zoom. */
  show(groups) {
    const anchor = this.layout.anchorAt(this.scroller.scrollTop);
    const { along, across } = this.layout;
    this.layout = new Layout(groups);
    this.version += 1;
    this.isOutdated = false;
    for (const [index, section] of this.sections) {
      if (index >= groups.length) this.remove(section);
      else this.describe(groups[index], section);
    }
    if (this.isFitted) return this.fit(anchor);
    this.place(along, across);
    this.scroller.scrollTop = this.layout.yOf(anchor);
    this.refresh();
  }

  /** The whole length in the window, and texts that can be read. */
  fit(anchor = this.layout.anchorAt(this.scroller.scrollTop)) {
    const { unitsWide } = this.layout;
    this.isFitted = true;
    if (unitsWide === 0 || this.scroller.clientWidth === 0) return;
    const along = this.scroller.clientWidth / unitsWide;
    this.place(along, Math.max(along, kReadable));
    this.scroller.scrollLeft = 0;
    this.scroller.scrollTop = this.layout.yOf(anchor);
    this.refresh();
  }

  /** Zooms around a point of the window. */
  zoom(factor, isAlongOnly, x = this.scroller.clientWidth / 2, y = this.scroller.clientHeight / 2) {
    const { scroller, layout } = this;
    const within = (value) => Math.min(Math.max(value, kLeast), kMost);
    const along = within(layout.along * factor);
    const across = isAlongOnly ? layout.across : within(layout.across * factor);
    if (layout.height * (across / layout.across) > kHighest && factor > 1) return;
    const units = (scroller.scrollLeft + x) / layout.along;
    const anchor = layout.anchorAt(scroller.scrollTop + y);
    this.isFitted = false;
    this.place(along, across);
    scroller.scrollLeft = units * along - x;
    scroller.scrollTop = layout.yOf(anchor) - y;
    this.refresh();
  }

  /** Takes the size of the window as it is now. A view that is shown again may have had another one for
   * a moment, which moved what it shows. */
  resize() {
    const { clientWidth, clientHeight } = this.scroller;
    const wasHidden = this.size === "";
    this.size = clientWidth === 0 ? "" : `${clientWidth} ${clientHeight}`;
    if (this.size === "") return;
    const { scrollTop, scrollLeft } = this.scrolledTo;
    if (this.isFitted) this.fit(this.layout.anchorAt(scrollTop));
    else {
      this.place(this.layout.along, this.layout.across);
      Object.assign(this.scroller, { scrollTop, scrollLeft });
      this.refresh();
    }
    if (!wasHidden) this.resized();
  }

  place(along, across) {
    const { layout, content } = this;
    const isNarrow = this.scroller.clientWidth < kNarrow;
    layout.place(along, across, isNarrow);
    content.classList.toggle("narrow", isNarrow);
    content.style.width = `${layout.width}px`;
    content.style.height = `${layout.height}px`;
    content.style.setProperty("--window", `${this.scroller.clientWidth}px`);
    content.style.setProperty("--along", along);
    content.style.setProperty("--across", across);
    content.classList.toggle("tiny", across < kTiny);
    for (const section of this.sections.values()) this.put(section);
  }

  put({ index, element, drawing }) {
    const { layout } = this;
    element.style.top = `${layout.tops[index]}px`;
    if (drawing === null) return;
    drawing.root.style.marginTop = `${layout.above}px`;
    drawing.root.setAttribute("width", layout.groups[index].width * layout.along);
    drawing.root.setAttribute("height", layout.groups[index].height * layout.across);
    drawing.fit(layout.along, layout.across);
  }

  /** Puts into the page what is near the window now, and takes out the rest but what has the focus. */
  refresh() {
    const { scrollTop, scrollLeft, clientHeight } = this.scroller;
    if (this.size === "" || this.layout.groups.length === 0) return;
    this.scrolledTo = { scrollTop, scrollLeft };
    const from = this.layout.indexAt(scrollTop - clientHeight);
    const to = this.layout.indexAt(scrollTop + 2 * clientHeight);
    for (const section of this.sections.values()) {
      const isNear = section.index >= from && section.index <= to;
      if (!isNear && !section.element.contains(document.activeElement)) this.remove(section);
    }
    for (let index = from; index <= to; ++index) this.section(index);
    this.askNext();
  }

  /** The section of a group, which is put into the page when it is not there. */
  section(index) {
    if (this.sections.has(index)) return this.sections.get(index);
    const element = document.createElement("div");
    const caption = document.createElement("p");
    element.className = "group";
    element.setAttribute("role", "group");
    element.append(caption);
    const section = { index, element, caption, drawing: null, version: 0, isAsked: false };
    this.sections.set(index, section);
    this.describe(this.layout.groups[index], section);
    const next = [...this.sections.values()].filter((one) => one.index > index)
      .sort((a, b) => a.index - b.index)[0];
    this.content.insertBefore(element, next?.element ?? null);
    this.put(section);
    return section;
  }

  remove(section) {
    section.element.remove();
    this.sections.delete(section.index);
  }

  /** Asks for what is missing, the middle of the window first. */
  askNext() {
    if (this.isOutdated) return;
    const middle = this.layout.indexAt(this.scroller.scrollTop + this.scroller.clientHeight / 2);
    const missing = [...this.sections.values()]
      .filter((one) => one.version !== this.version && !one.isAsked)
      .sort((a, b) => Math.abs(a.index - middle) - Math.abs(b.index - middle));
    for (const section of missing.slice(0, kAtOnce - this.asked)) this.ask(section);
  }

  async ask(section) {
    const version = this.version;
    section.isAsked = true;
    this.asked += 1;
    try {
      const markup = await this.load(this.layout.groups[section.index]);
      const isWanted = version === this.version && this.sections.get(section.index) === section;
      if (isWanted) this.take(section, new Drawing(markup));
    } catch (error) {
      if (version === this.version) this.failed(error);
      section.version = version;  // not again before the job is another one
    }
    section.isAsked = false;
    this.asked -= 1;
    this.askNext();
  }

  take(section, drawing) {
    const old = section.drawing?.root;
    const focused = old?.contains(document.activeElement) ? document.activeElement : null;
    old?.remove();
    section.drawing = drawing;
    section.version = this.version;
    section.element.append(drawing.root);
    drawing.measure();
    this.put(section);
    this.shown(section, focused);
  }

  /** Scrolls as little as it takes to show a group, and of it an item. */
  reveal(index, item = null) {
    const { scroller, layout } = this;
    const top = layout.tops[index];
    const bottom = layout.tops[index + 1] ?? layout.height;
    const fits = bottom - top <= scroller.clientHeight;
    if (top < scroller.scrollTop || !fits) scroller.scrollTop = top;
    else if (bottom > scroller.scrollTop + scroller.clientHeight) {
      scroller.scrollTop = bottom - scroller.clientHeight;
    }
    if (item !== null) this.revealAlong(item);
    this.refresh();
  }

  revealAlong(item) {
    const frame = this.scroller.getBoundingClientRect();
    const box = item.getBoundingClientRect();
    const left = box.left - frame.left - kAround;
    const right = box.right - frame.left - this.scroller.clientWidth + kAround;
    if (left < 0 || right > left) this.scroller.scrollLeft += left;
    else if (right > 0) this.scroller.scrollLeft += right;
  }
}
