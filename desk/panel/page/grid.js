// A table of any length of which only the rows in sight are in the page. One cell is the active one;
// the active row -1 is the heads.
import { element } from "/element.js";
import { listenTo } from "/grid_keys.js";

const kAround = 6;            // rows beyond the edge that are in the page too
const kTallest = 8_000_000;   // pixels that every browser can scroll
const kWidest = 22;           // em of a column
const kPadding = 0.7;         // em at each side of a text
const kArrow = 2.2;           // em that a head needs beside its name

const canvas = document.createElement("canvas").getContext("2d");

export class Grid {
  /**
   * @param hooks onSort(column name), onSelect(record), onMove(), isSelected(id),
   *              titleOf(record, column): what a cell says of itself
   */
  constructor(root, hooks) {
    this.hooks = hooks;
    this.rows = null;  // RowWindows
    this.active = { row: 0, column: 0 };
    this.shown = new Map();  // index -> tr
    this.head = element("tr");
    this.body = element("tbody");
    this.widths = element("colgroup");
    this.table = element("table", { tabIndex: 0 },
      this.widths, element("thead", {}, this.head), this.body);
    this.table.setAttribute("role", "grid");
    this.table.setAttribute("aria-multiselectable", "true");
    this.head.setAttribute("aria-rowindex", "1");
    this.sizer = element("div", { className: "grid-sizer" }, this.table);
    this.scroller = element("div", { className: "grid-scroller" }, this.sizer);
    root.append(this.scroller);
    this.listen();
  }

  listen() {
    let isDue = false;
    const soon = () => {
      if (isDue) return;
      isDue = true;
      requestAnimationFrame(() => { isDue = false; this.render(); });
    };
    this.scroller.addEventListener("scroll", soon, { passive: true });
    new ResizeObserver(soon).observe(this.scroller);
    this.table.addEventListener("focus", () => this.render());
    listenTo(this);
  }

  // What is shown

  /** Shows other rows. @param isOther whether they are of another table */
  show(rows, label, isOther) {
    const kinds = (one) => JSON.stringify(one.columns);
    const hasColumns = isOther || this.rows === null || kinds(rows) !== kinds(this.rows);
    this.rows = rows;
    this.table.setAttribute("aria-label", label);
    this.table.setAttribute("aria-rowcount", String(rows.size + 1));
    this.table.setAttribute("aria-colcount", String(rows.columns.length));
    if (hasColumns) this.makeColumns();
    this.active.row = Math.min(this.active.row, Math.max(rows.size - 1, 0));
    this.active.column = Math.min(this.active.column, rows.columns.length - 1);
    this.render();
  }

  /** Of each column in pixels, by the rows that are here. */
  columnWidths() {
    const style = getComputedStyle(this.table);
    const em = parseFloat(style.fontSize);
    const widthOf = (words, weight) => {
      canvas.font = `${weight} ${style.fontSize} ${style.fontFamily}`;
      return canvas.measureText(words).width;
    };
    return this.rows.columns.map((column, index) => {
      let width = widthOf(column.name, 600) + kArrow * em;
      for (const { cells } of this.rows.here()) {
        width = Math.max(width, widthOf(cells[index], style.fontWeight) + 2 * kPadding * em);
      }
      return Math.min(width, kWidest * em);
    });
  }

  makeColumns() {
    const widths = this.columnWidths();
    this.sizer.style.minWidth = `${widths.reduce((sum, one) => sum + one, 0)}px`;
    this.widths.replaceChildren(...widths.map((width) => {
      const column = element("col");
      column.style.width = `${width}px`;
      return column;
    }), element("col"));  // the last one takes the room that is left
    this.head.replaceChildren(...this.rows.columns.map((column, index) => {
      const head = element("th", { scope: "col", textContent: column.name, title: column.about });
      head.className = column.kind;
      head.setAttribute("aria-colindex", String(index + 1));
      return head;
    }));
    this.body.replaceChildren();
    this.shown.clear();
  }

  showOrder(name, order) {
    this.rows.columns.forEach((column, index) => {
      const isSorted = column.name === name;
      this.head.children[index].setAttribute(
        "aria-sort", !isSorted ? "none" : order === "up" ? "ascending" : "descending");
    });
  }

  measure() {
    this.rowHeight = parseFloat(getComputedStyle(this.table).getPropertyValue("--row"));
    this.headHeight = this.head.getBoundingClientRect().height || this.rowHeight;
    const height = this.headHeight + this.rows.size * this.rowHeight;
    this.sizer.style.height = `${Math.min(height, kTallest)}px`;
    this.room = this.scroller.clientHeight;
    // More rows than a browser can scroll over: a pixel of the scroll bar is more than one of rows.
    this.pace = height <= kTallest ? 1 : (height - this.room) / (kTallest - this.room);
  }

  get topPixel() { return this.scroller.scrollTop * this.pace; }
  /** 0 also while nothing is shown that has a height. */
  get firstInSight() { return Math.floor(this.topPixel / this.rowHeight) || 0; }
  get rowsInSight() {
    return Math.max(1, Math.floor((this.room - this.headHeight) / this.rowHeight));
  }

  isInSight(row) {
    const top = row * this.rowHeight - this.topPixel;
    return row >= 0 && top >= 0 && top + this.rowHeight + this.headHeight <= this.room;
  }

  /** Puts the rows in sight into the page, and takes the others out of it. */
  render() {
    if (this.rows === null || this.scroller.clientHeight === 0) return;
    const wasShown = this.isInSight(this.active.row);
    const roomBefore = this.room;
    this.measure();
    if (wasShown && this.room !== roomBefore) this.reveal(this.active.row);
    const inSight = this.firstInSight;
    const first = Math.max(0, Math.min(inSight - kAround, this.rows.size - 1));
    const last = Math.min(this.rows.size - 1, inSight + this.rowsInSight + 1 + kAround);
    if (this.rows.size > 0) this.rows.want(first, last);
    this.showRows(first, last);
    const top = first * this.rowHeight - this.topPixel + this.scroller.scrollTop;
    this.table.style.top = `${top}px`;
    this.markActive();
  }

  showRows(first, last) {
    for (const [index, row] of this.shown) {
      if (index >= first && index <= last) continue;
      row.remove();
      this.shown.delete(index);
    }
    let before = this.body.firstElementChild;
    for (let index = first; index <= last; ++index) {
      let row = this.shown.get(index);
      if (row === undefined) {
        row = this.makeRow(index);
        this.body.insertBefore(row, before);
        this.shown.set(index, row);
      } else {
        before = row.nextElementSibling;
      }
      this.fill(row, index);
    }
  }

  makeRow(index) {
    const row = element("tr");
    row.setAttribute("aria-rowindex", String(index + 2));
    this.rows.columns.forEach((column, place) => {
      const cell = element("td", { className: column.kind });
      cell.setAttribute("aria-colindex", String(place + 1));
      row.append(cell);
    });
    return row;
  }

  fill(row, index) {
    const record = this.rows.row(index);
    row.setAttribute("aria-selected", String(record !== null && this.hooks.isSelected(record.id)));
    if (row.record === record) return;
    row.record = record;
    row.classList.toggle("coming", record === null);
    this.rows.columns.forEach((column, place) => {
      const cell = row.children[place];
      cell.textContent = record === null ? "" : record.cells[place];
      const origin = record?.origins[place];
      cell.classList.toggle("carried", Boolean(origin?.carried));
      cell.title = record === null ? "" : this.hooks.titleOf(record, place);
      if (origin?.carried) cell.setAttribute("aria-label", cell.title);
      else cell.removeAttribute("aria-label");
    });
  }

  // The active cell

  cellAt(row, column) {
    const line = row < 0 ? this.head : this.shown.get(row);
    return line?.children[column];
  }

  markActive() {
    const cell = this.cellAt(this.active.row, this.active.column);
    if (this.marked !== cell) this.marked?.removeAttribute("id");
    this.marked = cell;
    if (cell === undefined) {
      this.table.removeAttribute("aria-activedescendant");
      return;
    }
    cell.id = "active-cell";
    this.table.setAttribute("aria-activedescendant", cell.id);
  }

  moveTo(row, column) {
    this.active.row = Math.max(-1, Math.min(row, this.rows.size - 1));
    this.active.column = Math.max(0, Math.min(column, this.rows.columns.length - 1));
    this.reveal(this.active.row);
    this.revealColumn();
    this.render();
    this.hooks.onMove();
  }

  /** Makes a row the active one and shows it. */
  activate(row) {
    this.active.row = row;
    this.reveal(row);
    this.render();
  }

  toStart() {
    this.scroller.scrollTop = 0;
    this.active.row = Math.min(this.active.row, 0);
  }

  /** Scrolls a row into sight; one that is far goes to the middle. */
  reveal(row) {
    if (row < 0 || this.rows === null) return;
    this.measure();
    const place = row * this.rowHeight;
    const room = this.room - this.headHeight - this.rowHeight;
    let top = this.topPixel;
    if (place < top - room || place > top + 2 * room) top = place - room / 2;
    else if (place < top) top = place;
    else if (place > top + room) top = place - room;
    else return;
    const scrolled = top / this.pace;  // of which scroll bars keep whole pixels
    this.scroller.scrollTop = top < this.topPixel ? Math.floor(scrolled) : Math.ceil(scrolled);
  }

  revealColumn() {
    const head = this.head.children[this.active.column];
    if (head === undefined) return;
    const fixed = this.active.column === 0 ? 0 : this.head.children[0].offsetWidth;
    const [left, right] = [head.offsetLeft, head.offsetLeft + head.offsetWidth];
    const from = this.scroller.scrollLeft;
    if (this.active.column === 0) this.scroller.scrollLeft = 0;
    else if (left < from + fixed) this.scroller.scrollLeft = left - fixed;
    else if (right > from + this.scroller.clientWidth) {
      this.scroller.scrollLeft = right - this.scroller.clientWidth;
    }
  }
}
