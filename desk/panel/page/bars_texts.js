// The texts of a drawing in a window of another shape than the sheet that they were placed for: which
// of them are narrowed, cut or left out.

const kGap = 0.9;         // between texts of a row, in the drawing's units across
const kEdge = 1.5;        // from a text to the left edge, in these units along
const kNarrowest = 0.75;  // how far a text may be narrowed
const kLeader = 0;        // ranks: what goes before other texts where there is no room for both
const kNumber = 1;
const kOther = 2;

const numberOf = (element, name) => Number(element.getAttribute(name));

/** How much of a text is left and right of its place. */
const kSides = { start: [0, 1], middle: [0.5, 0.5], end: [1, 0] };

function placed(text, piece) {
  const [left, right] = kSides[getComputedStyle(text).textAnchor];
  const rank = text.matches(".number") ? kNumber : kOther;
  return { text, piece, rank, x: numberOf(text, "x"), left, right, length: text.getComputedTextLength() };
}

/** A row of texts at pieces, none of which is to lie on another or on a line to a text. */
class Row {
  constructor(items) { this.items = items; }

  /** @param squeeze how much wider than on paper texts are, compared with the bars */
  fit(squeeze) {
    const all = [...this.items].sort((a, b) => a.x - b.x);
    const room = all.slice(1).map((one, i) => (one.x - all[i].x - kGap * squeeze) /
      (all[i].right * all[i].length + one.left * one.length));
    const least = squeeze <= 1 ? squeeze : room.reduce((most, one) => Math.min(most, one), squeeze);
    this.narrowed = Math.max(least / squeeze, kNarrowest);
    const wide = this.narrowed * squeeze;
    this.staying = new Set(squeeze <= 1 ? all : this.packed(all, wide, kGap * squeeze));
  }

  packed(all, wide, gap) {
    const kept = [];
    const left = (one) => one.x - one.left * one.length * wide;
    const right = (one) => one.x + one.right * one.length * wide;
    for (const one of all) {
      const isAngle = one.left !== one.right;
      if (isAngle && one.length * wide > one.piece.place.width / 2) continue;  // would be at another piece
      const isInWay = () => kept.length > 0 && left(one) < right(kept.at(-1)) + 0.9 * gap;  // rounding
      while (isInWay() && one.rank < kept.at(-1).rank) kept.pop();
      if (!isInWay()) kept.push(one);
    }
    return kept;
  }

  /** The numbers that are left out. */
  get missing() {
    return this.items.filter((one) => one.rank === kNumber && !this.staying.has(one));
  }

  /** A size without the number of its piece would be taken for that of another one. */
  show(unnamed) {
    for (const one of this.items) {
      if (one.rank === kLeader) continue;
      const stays = this.staying.has(one) && !unnamed.has(one.piece);
      for (const element of [one.text, one.leader]) element?.classList.toggle("left-out", !stays);
      one.text.style.setProperty("--narrowed", this.narrowed);
    }
  }
}

/** A text beside the pieces. */
class FreeText {
  /** @param end where the bar ends */
  constructor(text, end) {
    Object.assign(this, { text, whole: text.textContent, isLine: text.matches(".list, .remark") });
    const x = numberOf(text, "x");
    const width = text.ownerSVGElement.viewBox.baseVal.width;
    this.room = { end: x - kEdge, middle: 2 * (end - x) }[getComputedStyle(text).textAnchor] ?? width - 2 * x;
    this.length = text.getComputedTextLength();
  }

  fit(squeeze) {
    const fits = squeeze <= 1 ? 1 : Math.min(this.room / (this.length * squeeze), 1);
    this.isWhole = fits >= kNarrowest;
    this.narrowed = Math.max(fits, kNarrowest);
    this.share = fits / this.narrowed;
  }

  /** A line is cut, as it says what the drawing cannot. */
  show() {
    const { text, whole } = this;
    const end = Math.max(Math.floor(whole.length * this.share * 0.95) - 2, 0);
    const shown = this.isWhole || !this.isLine ? whole : `${whole.slice(0, end)}…`;
    if (text.textContent !== shown) text.textContent = shown;
    text.classList.toggle("left-out", !this.isWhole && !this.isLine);
    text.style.setProperty("--narrowed", this.narrowed);
  }
}

/** All texts of a drawing. */
export class Texts {
  /** @param pieces elements with `texts`, `leaders` and `place`
   *  @param free texts beside them */
  constructor(pieces, free, end) {
    const rows = new Map();
    const rowAt = (y) => rows.get(y) ?? rows.set(y, []).get(y);
    const leaders = [];
    for (const piece of pieces) {
      for (const text of piece.texts) {
        const item = placed(text, piece);
        item.leader = item.rank === kNumber ? piece.leaders[0] : undefined;
        if (item.leader !== undefined) leaders.push(item);
        rowAt(numberOf(text, "y")).push(item);
      }
    }
    for (const { leader, x } of leaders) {
      const [from, to] = [numberOf(leader, "y1"), numberOf(leader, "y2")].sort((a, b) => a - b);
      for (const [y, row] of rows) {
        if (y > from && y < to) row.push({ rank: kLeader, piece: null, x, left: 0.5, right: 0.5, length: 0 });
      }
    }
    this.rows = [...rows.values()].map((row) => new Row(row));
    this.all = [...this.rows, ...free.map((one) => new FreeText(one, end))];
  }

  /** Narrows, cuts or leaves out what has no room where texts are so much wider than on paper, compared
   * with the bars. @return {piece, x} for each number of a piece that is left out */
  fit(squeeze) {
    for (const one of this.all) one.fit(squeeze);
    const missing = this.rows.flatMap((row) => row.missing);
    const unnamed = new Set(missing.map((one) => one.piece));
    for (const one of this.all) one.show(unnamed);
    return missing.sort((a, b) => a.x - b.x);
  }
}
