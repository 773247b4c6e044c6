// The view Tables: the rows that scripts get of the job, to sort and to filter.
import { element } from "/element.js";
import { ask, documentAddress } from "/engine.js";
import { Grid } from "/grid.js";
import { kWindow, RowWindows } from "/row_windows.js";
import { change, isWithin, state } from "/state.js";
import { createPrinting } from "/tables_print.js";

const kTables = ["bars", "pieces", "cuts", "works", "labels", "holes"];

/** Whether one is the other, lies in it or holds it: "1.2" and "1.2.3". */
const belong = (id, other) => id !== "" && (isWithin(id, other) || isWithin(other, id));

const button = (words, onclick) =>
  element("button", { type: "button", textContent: words, onclick });

function labelled(made, label) {
  made.setAttribute("aria-label", label);
  return made;
}

/** How to show the answer to two questions of which the earlier one was never shown. */
const merged = (how, earlier) => ({
  isOther: Boolean(how.isOther || earlier?.isOther),
  keepsPlace: Boolean(how.keepsPlace && (earlier === null || earlier.keepsPlace)),
  reveals: Boolean(how.reveals || earlier?.reveals),
});

class Tables {
  constructor(root, text, refused) {
    this.text = text;
    this.refused = refused;
    this.sorting = {};      // table -> {sort, order}
    this.due = null;        // the question to ask next
    this.isAsking = false;
    this.build(root);
    document.addEventListener("keydown", (event) => {
      const isPrint = (event.ctrlKey || event.metaKey) && event.key === "p" && !event.shiftKey;
      if (isPrint && state.view === "tables") this.printList(event);
    });
  }

  build(root) {
    const { text } = this;
    this.raised = element("p", { id: "raised", hidden: true, lang: "en" });
    this.place = element("div", { id: "grid" });
    this.note = element("p", { id: "cell-note" });
    root.append(
      this.tools(),
      this.raised, this.place,
      element("footer", {}, this.note,
        element("p", { id: "carried-legend", textContent: text("tables.legend") })));
    this.printing = createPrinting(root, text);
    this.grid = new Grid(this.place, {
      onSort: (column) => this.sort(column),
      onSelect: (record) => record.id !== "" && this.select(record.id),
      onMove: () => this.showNote(),
      isSelected: (id) => belong(id, state.selection),
      titleOf: (record, column) => this.titleOf(record, column),
    });
  }

  /** Which table, what is left of it, and printing; the list is for narrow windows. */
  tools() {
    const { text } = this;
    const label = text("tables.choice");
    this.choices = kTables.map((table) =>
      button(text(`tables.${table}`), () => change({ table })));
    this.list = labelled(element("select", {
      id: "table-list", onchange: (event) => change({ table: event.target.value }),
    }, ...kTables.map((table) => new Option(text(`tables.${table}`), table))), label);
    this.filter = labelled(element("input", {
      type: "search", placeholder: text("tables.filter"), autocomplete: "off", spellcheck: false,
      maxLength: 100, oninput: () => this.ask({}),
    }), text("tables.filter"));
    this.count = element("p", { id: "row-count" });
    this.count.setAttribute("role", "status");
    this.print = button(text("tables.print"), (event) => this.printList(event));
    this.print.title = text("tables.printHint");
    const group = labelled(element("div", { id: "table-choice" }, ...this.choices), label);
    group.setAttribute("role", "group");
    return element("div", { id: "table-tools" },
      group, this.list, this.filter, this.count, this.print);
  }

  update(changed) {
    if (changed.has("job") || changed.has("table") || changed.has("view") && !this.rows) {
      const isOther = changed.has("table") || this.job?.id !== state.job?.id;
      this.ask({ isOther, keepsPlace: !isOther, reveals: isOther });
    } else if (changed.has("selection") && state.selection !== this.ownSelection) {
      this.find();
    }
    this.ownSelection = null;
    this.grid.render();
    this.printing.prepare();
  }

  // What is asked

  /** Asks the engine; while it answers only the latest question waits.
   * @param how isOther: of another table; keepsPlace: as it is scrolled now; reveals: scrolls to the
   *            selection */
  async ask(how) {
    this.due = merged(how, this.due);
    if (this.isAsking) return;
    this.isAsking = true;
    while (this.due !== null) {
      const next = this.due;
      this.due = null;
      const isShown = await this.askOne(next);
      if (!isShown && this.due !== null) this.due = merged(this.due, next);
    }
    this.isAsking = false;
  }

  question() {
    return { name: state.table, filter: this.filter.value, ...this.sorting[state.table] };
  }

  /** @return whether the answer is shown */
  async askOne(how) {
    const { job } = state;
    const question = this.question();
    this.showChoice();
    this.job = job;
    this.print.disabled = !(job?.version > 0);
    if (!(job?.version > 0)) {
      this.show(null, question, how);
      return true;
    }
    const place = how.keepsPlace ? this.grid.firstInSight : 0;
    const fetchRows = (from, count, more = {}) =>
      ask(job, "table", { ...question, ...more, from, count });
    let answer;
    try {
      answer = await fetchRows(place - (place % kWindow), kWindow,
        how.reveals && state.selection !== "" ? { find: state.selection } : {});
    } catch (error) {
      this.failed(error);
      return false;
    }
    if (this.due !== null) return false;  // that is out of date
    const rows = answer.raises ? null
      : new RowWindows(answer, fetchRows, () => this.rowsCame());
    this.show(rows, question, how);
    this.showAnswer(answer, how);
    return true;
  }

  /** A version that is no longer there or a lost connection: an event will tell. */
  failed(error) {
    if (error.status !== undefined && error.status !== 409) this.refused(error);
  }

  async find() {
    const { job, selection } = state;
    const { rows } = this;
    if (selection === "" || !rows) return;
    try {
      const answer = await ask(job, "table",
        { ...this.question(), from: 0, count: 1, find: selection });
      if (rows !== this.rows || selection !== state.selection) return;
      this.reveal(answer.found);
    } catch (error) {
      this.failed(error);
    }
  }

  // What is shown

  show(rows, question, how) {
    this.rows = rows;
    this.raised.hidden = true;
    this.place.hidden = rows === null;
    this.count.textContent = "";
    this.note.textContent = "";
    if (rows === null) return;
    if (!how.keepsPlace) this.grid.toStart();
    this.grid.show(rows, this.text(`tables.${question.name}`), how.isOther);
    this.grid.showOrder(question.sort, question.order);
    this.showNote();
  }

  showChoice() {
    this.list.value = state.table;
    this.choices.forEach((one, i) =>
      one.setAttribute("aria-pressed", String(kTables[i] === state.table)));
  }

  showAnswer(answer, how) {
    this.raised.hidden = !answer.raises;
    this.raised.textContent = answer.raises ?? "";
    if (answer.raises) return;
    const isAll = answer.rows === answer.all;
    this.count.textContent = isAll ? this.text("tables.rows", answer.all)
      : this.text("tables.someRows", answer.all, answer.rows);
    if (how.reveals) this.reveal(answer.found);
  }

  rowsCame() {
    this.grid.render();
    this.showNote();
  }

  reveal(index) {
    if (index === null || index === undefined) return;
    this.grid.activate(index);
    this.showNote();
  }

  titleOf(record, column) {
    const value = record.cells[column];
    const origin = record.origins[column];
    if (!origin) return value;
    const words = origin.carried
      ? this.text("tables.carried", origin.line, origin.element)
      : this.text("tables.line", origin.line);
    return `${value} (${words})`;
  }

  showNote() {
    const { row, column } = this.grid.active;
    const heading = this.rows?.columns[column];
    const record = row < 0 ? null : this.rows?.row(row);
    const words = record ? this.titleOf(record, column) : row < 0 ? heading?.about : "";
    this.note.textContent = heading && words ? `${heading.name}: ${words}` : "";
  }

  // What the user does

  /** Up, down, and then the job's order again. */
  sort(column) {
    const { sort, order } = this.sorting[state.table] ?? {};
    const next = sort !== column ? "up" : order === "up" ? "down" : null;
    this.sorting[state.table] = next === null ? {} : { sort: column, order: next };
    this.ask({});
  }

  select(id) {
    this.ownSelection = id;
    change({ selection: id });
    this.grid.render();
  }

  /** The cut list; in a window of its own, which then asks for the printer, where it is not here. */
  printList(event) {
    if (!(state.job?.version > 0)) return;
    event.preventDefault();
    if (this.printing.has()) return window.print();
    const list = window.open(documentAddress(state.job, "cuts"), "_blank");
    list?.addEventListener("load", () => list.print());
  }
}

export function create(root, text, refused) {
  const tables = new Tables(root, text, refused);
  return { update: (changed) => tables.update(changed) };
}
