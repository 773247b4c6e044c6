// Where the drawn bars lie on the page, one below the other. Knows sizes only, no elements.

const kCaption = 28;    // px that the words about a drawing take
const kTitleUnits = 5;  // what a drawing keeps free for its title, where they go
const kGap = 10;        // px below a drawing

export class Layout {
  /** `groups` have the size of their drawings in its own units, from the top down. */
  constructor(groups) {
    this.groups = groups;
    this.along = 1;   // px of a unit along the bars
    this.across = 1;  // px of a unit across them
    this.tops = [];   // of each group with its caption, px
    this.height = 0;  // of all, px
    this.above = 0;   // px from there to its drawing
    this.unitsWide = groups.reduce((most, group) => Math.max(most, group.width), 0);
  }

  /** @param isNarrow whether the captions need lines of their own */
  place(along, across, isNarrow) {
    this.along = along;
    this.across = across;
    this.above = isNarrow ? kCaption : Math.max(kCaption - kTitleUnits * across, 4);
    this.height = 0;
    this.tops = this.groups.map((group) => {
      const top = this.height;
      this.height += this.above + group.height * across + kGap;
      return top;
    });
  }

  get width() { return this.unitsWide * this.along; }

  /** Which group lies at `y` px; the first or last one where none does. */
  indexAt(y) {
    let from = 0;
    let to = this.tops.length - 1;
    while (from < to) {
      const middle = Math.ceil((from + to) / 2);
      if (this.tops[middle] <= y) from = middle;
      else to = middle - 1;
    }
    return from;
  }

  /** What lies at `y` px, in words that outlast another zoom. */
  anchorAt(y) {
    const index = this.indexAt(y);
    const within = y - (this.tops[index] ?? 0);
    return { index, caption: Math.min(within, this.above),
      units: Math.max(within - this.above, 0) / this.across };
  }

  yOf({ index, caption, units }) {
    const top = this.tops[Math.min(index, this.tops.length - 1)] ?? 0;
    return top + caption + units * this.across;
  }
}
