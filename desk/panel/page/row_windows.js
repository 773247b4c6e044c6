// The rows of one question about a table. They are fetched in windows as they are needed, the
// latest wanted first, and windows far away are dropped: a table of any length takes little memory.

export const kWindow = 200;  // rows
const kMostKept = 6;         // windows
const kMostAsked = 2;        // windows at once

export class RowWindows {
  /**
   * @param answer the first answer to the question: it says how many rows there are
   * @param fetchRows (from, count) => Promise of a further answer
   * @param onRows called when rows have come
   */
  constructor(answer, fetchRows, onRows) {
    this.columns = answer.columns;
    this.size = answer.rows;
    this.fetchRows = fetchRows;
    this.onRows = onRows;
    this.windows = new Map();  // number of the window -> its answer
    this.asked = new Set();
    this.wanted = [];
    this.keep(answer);
  }

  /** {cells, origins, id} of a row; null while it is not here. */
  row(index) {
    const answer = this.windows.get(Math.floor(index / kWindow));
    const place = index % kWindow;
    if (answer === undefined || answer.cells[place] === undefined) return null;
    answer.records ??= [];
    return answer.records[place] ??= {
      cells: answer.cells[place], origins: answer.origins[place], id: answer.ids[place],
    };
  }

  /** The rows that are here. */
  *here() {
    for (const [number, { cells }] of this.windows) {
      for (let place = 0; place < cells.length; ++place) yield this.row(number * kWindow + place);
    }
  }

  /** Sees to it that these rows come; what was wanted before and is not asked for yet is forgotten. */
  want(first, last) {
    this.wanted = [];
    for (let i = Math.floor(first / kWindow); i * kWindow <= last; ++i) this.wanted.push(i);
    this.askNext();
  }

  askNext() {
    const next = this.wanted.find((i) => !this.windows.has(i) && !this.asked.has(i));
    if (next === undefined || this.asked.size >= kMostAsked) return;
    this.asked.add(next);
    this.fetchRows(next * kWindow, kWindow).then((answer) => {
      this.asked.delete(next);
      this.keep(answer);
      this.onRows();
      this.askNext();
    }, () => this.asked.delete(next));  // asked again when it is wanted again
    this.askNext();
  }

  keep(answer) {
    this.windows.set(Math.floor(answer.from / kWindow), answer);
    const middle = this.wanted[this.wanted.length >> 1] ?? 0;
    const farthest = () => [...this.windows.keys()].reduce(
      (far, i) => (Math.abs(i - middle) > Math.abs(far - middle) ? i : far));
    while (this.windows.size > kMostKept) this.windows.delete(farthest());
  }
}
