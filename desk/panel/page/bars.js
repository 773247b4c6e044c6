// The Bars view: the drawing of each bar, to scale.
import { Canvas } from "/bars_canvas.js";
import { legendItems } from "/bars_drawing.js";
import { startGestures } from "/bars_gestures.js";
import { startKeys, stepOf } from "/bars_keys.js";
import { askMarks, Marks } from "/bars_marks.js";
import { createPrinting } from "/bars_print.js";
import { createTip } from "/bars_tip.js";
import { createTools } from "/bars_tools.js";
import { ask } from "/engine.js";
import { change, state } from "/state.js";

const kStep = 1.25;         // of a zoom by button or key
const kOpening = 1000;      // ms in which what a selection opens makes the window smaller
const kItem = "[data-work], [data-piece], [data-bar]";

const barOf = (id) => id.split(".")[0];
const placeOf = (id) => id.slice(barOf(id).length);  // on the bar: ".2" of "1.2"
const idOf = (item) => item.dataset.work ?? item.dataset.piece ?? item.dataset.bar;

export function create(root, text, refused) {
  const scroller = document.createElement("div");
  let shown = null;            // the job whose groups are shown
  let groupOf = new Map();     // index of the group that a bar is drawn with
  let marks = new Marks();     // of the findings
  let current = null;          // the item that the tabulator key leads to
  let awaited = null;          // {index, pick}: goes to an item of a group once that is drawn
  let selectedAt = -Infinity;  // ms
  let ownSelection = "";       // what was selected here: nothing is scrolled for it

  const tools = createTools(root, text, {
    zoom: (isIn) => canvas.zoom(isIn ? kStep : 1 / kStep, tools.isAlongOnly()),
    fit: () => canvas.fit(),
    print: () => printing.print(),
    choose: (bar) => select(`${bar}${placeOf(state.selection)}`),
  });
  scroller.className = "bar-scroller";
  scroller.tabIndex = 0;
  root.append(scroller);
  const tip = createTip(root);
  const printing = createPrinting(root, text, refused);
  const canvas = new Canvas(scroller, {
    load: (group) => ask(shown, "bar", { group: group.group }),
    describe, shown: takeDrawing,
    resized: () => { if (performance.now() - selectedAt < kOpening) revealSelection(); },
    failed: complain,
  });
  canvas.content.setAttribute("role", "tree");
  canvas.content.setAttribute("aria-label", text("bars.title"));

  /** Of another version an event tells, and of a lost connection the header. */
  function complain(error) {
    if (error instanceof TypeError) console.error(error);
    else if (error.status !== 409) refused(error);
  }

  /** The id of an element of the bar that is drawn, for an element of one drawn with it. */
  const drawnId = (id, group) => `${group.bars[0]}${placeOf(id)}`;
  const selectedIndex = () => groupOf.get(barOf(state.selection));

  /** Puts what there is to say about a group above its drawing. */
  function describe(group, section) {
    const isChosen = selectedIndex() === section.index;
    const parts = [["", group.title]];
    for (const [severity, count] of marks.at("", group.bars)) {
      parts.push([severity, text(`bars.${severity}`, count)]);
    }
    if (isChosen && group.count > 1) parts.push(["meant", text("bars.meant", barOf(state.selection))]);
    if (section.drawing !== null) parts.push(["sum", section.drawing.sum]);
    section.caption.replaceChildren(...parts.map(([kind, words]) => {
      const part = document.createElement("span");
      part.className = kind;
      part.textContent = words;
      part.title = kind === "" ? words : "";  // may be cut
      return part;
    }));
    section.element.setAttribute("aria-label", section.drawing?.bar.values ?? group.title);
    section.element.classList.toggle("chosen", isChosen);
  }

  function showMarks(section) {
    const group = canvas.layout.groups[section.index];
    describe(group, section);
    section.drawing?.flag((piece) => {
      const found = marks.at(placeOf(piece.dataset.piece), group.bars);
      const words = found.map(([severity, count]) => text(`bars.${severity}`, count));
      return [found[0]?.[0] ?? "", words.join(", ")];
    });
  }

  function showSelection({ index, drawing }) {
    const group = canvas.layout.groups[index];
    drawing.choose(selectedIndex() === index ? drawnId(state.selection, group) : "");
  }

  function takeDrawing(section, focused) {
    showMarks(section);
    showSelection(section);
    if (focused !== null) {
      makeCurrent(section.drawing.find(idOf(focused)));
      current?.focus({ preventScroll: true });
    }
    if (current === null || !current.isConnected) makeCurrent(section.drawing.pieces[0] ?? null);
    if (awaited?.index !== section.index) return;
    const { pick, take } = awaited;
    awaited = null;
    const item = pick(section.drawing);
    if (item !== null) take(item, section.index);
  }

  function makeCurrent(item) {
    current?.setAttribute("tabindex", "-1");
    current = item;
    current?.setAttribute("tabindex", "0");
  }

  function goTo(index, pick, take) {
    if (canvas.layout.groups[index] === undefined) return;
    canvas.reveal(index);
    const { drawing } = canvas.section(index);
    awaited = drawing === null ? { index, pick, take } : null;
    if (awaited !== null) return canvas.askNext();
    const item = pick(drawing);
    if (item !== null) take(item, index);
  }

  function focus(item, index) {
    makeCurrent(item);
    canvas.reveal(index, item);
    item.focus({ preventScroll: true });
    tip.show(item);
  }

  /** Shows what was selected elsewhere. */
  function revealSelection() {
    const index = selectedIndex();
    if (index === undefined) return;
    const id = drawnId(state.selection, canvas.layout.groups[index]);
    goTo(index, (drawing) => drawing.find(id), (item) => {
      makeCurrent(item);
      canvas.reveal(index, item);
    });
  }

  function select(id) {
    ownSelection = id;
    change({ selection: id });
  }

  const sectionOf = (item) => [...canvas.sections.values()].find((one) => one.element.contains(item));

  function selectItem(item) {
    const { index } = sectionOf(item);
    const group = canvas.layout.groups[index];
    const bar = selectedIndex() === index ? barOf(state.selection) : group.bars[0];
    makeCurrent(item.closest("[data-piece]") ?? current);
    select(`${bar}${placeOf(idOf(item))}`);
  }

  function updateSelection(isOther = state.selection !== ownSelection) {
    selectedAt = performance.now();
    for (const section of canvas.sections.values()) {
      describe(canvas.layout.groups[section.index], section);
      if (section.drawing !== null) showSelection(section);
    }
    const group = canvas.layout.groups[selectedIndex()];
    tools.offer(group !== undefined && group.count > 1 ? group.bars : [], barOf(state.selection));
    if (isOther) revealSelection();
    ownSelection = "";
  }

  async function askBars() {
    const job = state.job;
    tip.hide();
    canvas.expect();
    try {
      const { groups, legend } = job?.version > 0 ? await ask(job, "bars") : { groups: [], legend: "" };
      if (job !== state.job) return;
      const isOther = job?.id !== shown?.id;
      if (isOther) Object.assign(scroller, { scrollTop: 0, scrollLeft: 0 });
      shown = job;
      if (isOther) marks = new Marks();
      groupOf = new Map(groups.flatMap((group, index) => group.bars.map((bar) => [`${bar}`, index])));
      tools.explain(legendItems(legend));
      canvas.show(groups);
      updateSelection(isOther);
      canvas.content.hidden = groups.length === 0;  // a tree without items is none
      if (groups.length === 0) return;
      printing.prepare(groups.length);
      const found = await askMarks(job);
      if (job !== state.job) return;
      marks = found;
      for (const section of canvas.sections.values()) showMarks(section);
    } catch (error) {
      complain(error);
    }
  }

  startGestures(scroller, (factor, x, y) => {
    const frame = scroller.getBoundingClientRect();
    canvas.zoom(factor, tools.isAlongOnly(), x - frame.left, y - frame.top);
  });
  scroller.addEventListener("scroll", () => tip.follow(), { passive: true });
  canvas.content.addEventListener("click", (event) => {
    const item = event.target.closest(kItem);
    if (item === null) return tip.hide();
    selectItem(item);
    tip.show(item);
  });
  canvas.content.addEventListener("pointerover", (event) => {
    const item = event.target.closest(kItem);
    if (item === null || event.pointerType === "touch") tip.hideSoon();
    else tip.show(item);
  });
  canvas.content.addEventListener("pointerleave", () => tip.hideSoon());
  canvas.content.addEventListener("focusout", () => tip.hideSoon());
  canvas.content.addEventListener("focusin", (event) => {
    if (event.target.matches(":focus-visible")) tip.show(event.target);
  });
  startKeys(canvas.content, {
    step(event) {
      const { index, drawing } = sectionOf(event.target);
      const step = stepOf(event, event.target, drawing);
      if (step !== null) goTo(index + step.by, step.pick, focus);
      return step !== null;
    },
    select: selectItem,
    isShown: () => state.view === "bars",
    zoom: (isIn) => canvas.zoom(isIn ? kStep : 1 / kStep, tools.isAlongOnly()),
    fit: () => canvas.fit(),
    closeTip: () => tip.isShown() && (tip.hide(), true),
  });

  return {
    update(changed) {
      if (changed.has("job")) askBars();
      else if (changed.has("selection")) updateSelection();
    },
  };
}
