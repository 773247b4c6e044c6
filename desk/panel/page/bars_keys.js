// Going through the drawings by keyboard: from piece to piece, from bar to bar, into a piece's works.

const at = (list, index) => list[index] ?? null;
const middleOf = (item) => {
  const box = item.getBoundingClientRect();
  return box.left + box.width / 2;
};
const nearest = (pieces, x) => pieces.reduce((best, one) =>
  best === null || Math.abs(middleOf(one) - x) < Math.abs(middleOf(best) - x) ? one : best, null);

/** Where a key leads from an item.
 * @return {by, pick}: how many groups further, and what of its drawing; null when nowhere */
export function stepOf(event, item, drawing) {
  const items = event.shiftKey ? drawing.items : drawing.pieces;
  const piece = item.closest("[data-piece]");
  const index = items.indexOf(event.shiftKey ? item : piece);
  const here = (target) => ({ by: 0, pick: () => target });
  const list = (one) => (event.shiftKey ? one.items : one.pieces);
  const x = middleOf(item);
  switch (event.key) {
    case "ArrowRight":
      return index + 1 < items.length ? here(items[index + 1]) : { by: 1, pick: (one) => at(list(one), 0) };
    case "ArrowLeft":
      return index > 0 ? here(items[index - 1]) : { by: -1, pick: (one) => list(one).at(-1) ?? null };
    case "ArrowDown":
    case "ArrowUp":
      return { by: event.key === "ArrowDown" ? 1 : -1, pick: (one) => nearest(one.pieces, x) };
    case "Home":
      return here(items[0]);
    case "End":
      return here(items.at(-1));
    default:
      return null;
  }
}

/** @param actions step(event) goes where an arrow leads from an item, and tells whether it leads
 * anywhere; select(item); isShown() is whether zoom(isIn) and fit() are for this view; closeTip()
 * tells whether there was one */
export function startKeys(content, actions) {
  const isPlain = (event) => !event.ctrlKey && !event.altKey && !event.metaKey;
  const press = {
    "+": () => actions.zoom(true), "=": () => actions.zoom(true), "-": () => actions.zoom(false),
    0: () => actions.fit(), Escape: () => actions.closeTip(),
  };
  content.addEventListener("keydown", (event) => {
    if (!isPlain(event)) return;
    if (event.key === "Enter" || event.key === " ") actions.select(event.target);
    else if (!actions.step(event)) return;
    event.preventDefault();
    event.stopPropagation();
  });
  document.addEventListener("keydown", (event) => {
    if (!actions.isShown() || !isPlain(event) || event.target.matches("input, select, textarea")) return;
    if (press[event.key] !== undefined && press[event.key]() !== false) event.preventDefault();
  }, { capture: true });  // before the page takes Escape for the selection
}
