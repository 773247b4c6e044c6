// The selected bar, piece or work: its values, works, label, findings and lines in the source.
import { element } from "/element.js";
import { ask } from "/engine.js";
import { change, pieceOf, state } from "/state.js";

const kMostFindings = 20;
const kMostLines = 200;
const kLinesOfBar = 12;  // its own values, before those of its pieces
const kCopiedTime = 2000;  // ms
const kApart = ["id", "group", "findings", "lastLine", "column", "lastColumn",
  "label", "works"];  // shown elsewhere, or not

export function create(root, text) {
  let shown = "";       // the bar or piece that stands in the pane
  let isStale = false;  // whether its job is another one by now
  let asked = 0;        // counts what was asked for: only the last answer counts

  const nameOf = (key) => (text.has(`details.${key}`) ? text(`details.${key}`) : key);

  const part = (key, ...children) =>
    element("section", {}, element("h3", { textContent: text(key) }), ...children);

  function button(words, key, action) {
    const made = element("button", { type: "button", textContent: words });
    made.dataset.key = key;
    made.addEventListener("click", action);
    return made;
  }

  function facts(pairs) {
    return element("dl", {}, ...pairs.map(([name, value]) => element("div", {},
      element("dt", { textContent: name }), element("dd", { textContent: value }))));
  }

  function values(document) {
    return facts(Object.entries(document).filter(([key, value]) =>
      !kApart.includes(key) && typeof value !== "object" && value !== "")
      .map(([key, value]) => [nameOf(key), value]));
  }

  function works(id, all) {
    const keys = [...new Set(all.flatMap((work) => Object.keys(work)))];
    const heads = keys.map((key) => element("th", { scope: "col", textContent: nameOf(key) }));
    const rows = all.map((work, index) => {
      const workId = `${id}.${index + 1}`;
      const [name, ...cells] = keys.map((key) => work[key] ?? "");
      const choose = button("", workId, () => change({ selection: workId }));
      choose.title = name || `${index + 1}`;
      choose.append(element("span", { textContent: choose.title }));
      const row = element("tr", {}, element("td", {}, choose),
      ...cells.map((cell) => element("td", { textContent: cell })));
      row.dataset.work = workId;
      return row;
    });
    return element("table", {}, element("thead", {}, element("tr", {}, ...heads)),
      element("tbody", {}, ...rows));
  }

  function findings(id, found) {
    const items = found.findings.map((one) => {
      const item = element("li", { lang: "en", textContent: one.message });
      item.dataset.severity = one.severity;
      return item;
    });
    const all = button(text("details.allFindings", found.rows), "findings", () =>
      change({ view: "findings", selection: id, severity: "", onlySelected: true }));
    return [element("ul", { className: "found" }, ...items), all];
  }

  function source(lines, found) {
    const faulty = new Set(found.flatMap((one) => one.excerpt ?? []).map((one) => one.line));
    const rows = lines.lines.map((line, index) => {
      const row = element("li", { textContent: line });
      row.value = lines.from + index;
      row.classList.toggle("faulty", lines.all > 1 && faulty.has(lines.from + index));
      return row;
    });
    const list = element("ol", { className: "source", tabIndex: 0, lang: "en" }, ...rows);
    list.setAttribute("aria-label", text("details.source"));
    return list;
  }

  /** Where the browser refuses that, the link stands there to be copied by hand. */
  async function copyLink(copy) {
    try {
      await navigator.clipboard.writeText(location.href);
      copy.textContent = text("details.copied");
      setTimeout(() => { copy.textContent = text("details.copy"); }, kCopiedTime);
    } catch {
      const field = element("input", { value: location.href, readOnly: true });
      field.setAttribute("aria-label", text("details.link"));
      copy.replaceWith(field);
      field.select();
    }
  }

  function head(id, code) {
    const [bar, piece] = id.split(".");
    const place = piece === undefined
      ? text("details.barPlace", bar) : text("details.piecePlace", piece, bar);
    const copy = button(text("details.copy"), "copy", () => copyLink(copy));
    const close = button("\u00d7", "close", () => change({ selection: "" }));
    close.setAttribute("aria-label", text("details.close"));
    return element("header", {}, element("h2", {}, element("span", { textContent: code, title: code }),
      element("small", { textContent: place })), copy, close);
  }

  /** What a bar is: its row of the table of bars. */
  async function barValues(job, bar) {
    const answer = await ask(job, "table", { name: "bars", id: bar, count: 1 });
    const [cells = []] = answer.cells ?? [];
    const pairs = cells.map((cell, index) => [answer.columns[index].name, cell]);
    const { line = 0, column = 0 } = answer.origins?.[0]?.find((origin) => origin?.line > 0) ?? {};
    return { document: Object.fromEntries(pairs), line, column, lastLine: line + kLinesOfBar - 1 };
  }

  async function pieceValues(job, id) {
    const document = await ask(job, "piece", { id });
    const { line, column = 0, lastLine = line, lastColumn = 0 } = document;
    return { document, line, column, lastLine, until: lastLine === line ? lastColumn : 0 };
  }

  /** The parts of the pane. */
  async function contents(job, id) {
    const isPiece = id.includes(".");
    const { document, line, column, lastLine, until = 0 } = await (isPiece ? pieceValues : barValues)(job, id);
    const count = Math.min(lastLine - line + 1, kMostLines);
    const [found, lines] = await Promise.all([
      ask(job, "findings", { id, count: kMostFindings }),
      line > 0 ? ask(job, "source", { line, column, until, count }) : null,
    ]);
    const parts = [head(id, document.barcode ?? document.BarName ?? ""), values(document)];
    if (document.works?.length > 0) parts.push(part("details.works", works(id, document.works)));
    if (found.rows > 0) parts.push(part("details.findings", ...findings(id, found)));
    if (lines !== null) parts.push(part("details.source", source(lines, found.findings)));
    if (document.label) parts.push(part("details.label", facts(Object.entries(document.label))));
    return parts;
  }

  /** Puts new contents in the place of the old ones; what has the focus keeps it. */
  function replace(parts) {
    const focused = root.contains(document.activeElement) ? document.activeElement.dataset.key : null;
    const top = root.scrollTop;
    root.replaceChildren(...parts);
    root.scrollTop = top;
    if (focused) root.querySelector(`[data-key="${focused}"]`)?.focus();
  }

  function mark() {
    for (const row of root.querySelectorAll("[data-work]")) {
      const isSelected = row.dataset.work === state.selection;
      if (isSelected && !row.classList.contains("selected")) row.scrollIntoView({ block: "nearest" });
      row.classList.toggle("selected", isSelected);
    }
  }

  async function show(job, id) {
    const isOther = shown !== id;
    const number = ++asked;
    let parts;
    try {
      parts = await contents(job, id);
    } catch (error) {
      if (error.status === 409) return;  // an event will tell of another version
      parts = [head(id, ""), element("p", { lang: "en", textContent: error.message })];
    }
    if (number !== asked) return;
    shown = id;
    isStale = false;
    replace(parts);
    if (isOther) root.scrollTop = 0;
    mark();
  }

  return {
    update(changed) {
      if (changed.has("job")) isStale = true;
      root.hidden = state.selection === "" || !(state.job?.version > 0) || state.view === "panel";
      if (root.hidden) return;
      const id = pieceOf(state.selection) || state.selection;
      if (isStale || shown !== id) show(state.job, id);
      else mark();
    },
  };
}
