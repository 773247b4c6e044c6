// A list of which only the items in sight are in the page. Items have heights of their own, which
// are known once they were shown.

const kMore = 3;  // items above and below those in sight

/** `scroller` scrolls and holds `list`. `render(index)` makes an item, `shown(from, to)` is told which
 * are in the page; `estimate` is the height of an item in pixels that was not shown yet. */
export function create(scroller, list, { render, shown, estimate }) {
  let heights = new Float32Array(0);  // 0: not known
  let items = new Map();              // by index: those in the page

  const heightOf = (index) => heights[index] || estimate;

  function offsetOf(index) {
    let offset = 0;
    for (let i = 0; i < index; ++i) offset += heightOf(i);
    return offset;
  }

  function indexAt(offset) {
    let index = 0;
    for (let end = 0; index < heights.length; ++index) {
      end += heightOf(index);
      if (end > offset) break;
    }
    return Math.min(index, Math.max(heights.length - 1, 0));
  }

  /** Those that stay are not taken out: they would lose the focus. */
  function putIn(wanted) {
    for (const child of [...list.children]) if (!wanted.includes(child)) child.remove();
    wanted.forEach((item, index) => {
      if (item !== list.children[index]) list.insertBefore(item, list.children[index] ?? null);
    });
  }

  function place(from, to) {
    const old = items;
    items = new Map();
    for (let i = from; i < to; ++i) items.set(i, old.get(i) ?? render(i));
    const isFocusLost = list.contains(document.activeElement) &&
      ![...items.values()].some((item) => item.contains(document.activeElement));
    list.style.paddingTop = `${offsetOf(from)}px`;
    list.style.paddingBottom = `${offsetOf(heights.length) - offsetOf(to)}px`;
    putIn([...items.values()]);
    if (isFocusLost) scroller.focus();
  }

  /** Notes the heights of what is in the page. @return whether one was another than thought */
  function measure() {
    let isNew = false;
    for (const [index, item] of items) {
      const height = item.getBoundingClientRect().height;
      if (Math.abs(heightOf(index) - height) > 0.5) isNew = true;
      heights[index] = height;
    }
    return isNew;
  }

  const isAtEnd = () => scroller.scrollTop + scroller.clientHeight >= scroller.scrollHeight - 2;

  function draw() {
    if (scroller.clientHeight === 0) return;
    for (let turn = 0; turn < 4; ++turn) {  // heights that are measured move what is in sight
      const staysAtEnd = scroller.scrollTop > 0 && isAtEnd();
      const top = Math.max(scroller.scrollTop - list.offsetTop, 0);
      const first = indexAt(top);
      const within = top - offsetOf(first);
      const wasShown = items.has(first);  // else it was scrolled too far for anything to stay in place
      const to = Math.min(indexAt(top + scroller.clientHeight) + 1 + kMore, heights.length);
      place(Math.max(first - kMore, 0), to);
      if (!measure()) break;
      place(Math.max(first - kMore, 0), to);
      const moved = offsetOf(first) + within - top;
      if (staysAtEnd) scroller.scrollTop = scroller.scrollHeight;
      else if (wasShown && Math.abs(moved) > 0.5) scroller.scrollTop += moved;
    }
    const indexes = [...items.keys()];
    if (indexes.length > 0) shown(indexes[0], indexes.at(-1) + 1);
  }

  scroller.addEventListener("scroll", draw, { passive: true });
  scroller.addEventListener("keydown", (event) => {
    if (event.target !== scroller || !["Home", "End"].includes(event.key)) return;
    event.preventDefault();
    scroller.scrollTop = event.key === "End" ? scroller.scrollHeight : 0;
  });
  new ResizeObserver(draw).observe(scroller);
  list.addEventListener("toggle", draw, true);  // what was opened has another height

  return {
    draw,
    /** Starts over with so many items, at the top unless it is to stay where it is. */
    reset(count, stays) {
      const old = heights;
      heights = new Float32Array(count);
      if (stays) heights.set(old.subarray(0, count));
      items = new Map();
      if (!stays) scroller.scrollTop = 0;
      draw();
    },
    /** Makes those items anew. */
    refresh(isStale) {
      for (const [index, item] of items) if (isStale(item)) items.set(index, null);
      draw();
    },
    /** Scrolls to an item, unless it is in sight. */
    reveal(index) {
      const top = () => offsetOf(index) + list.offsetTop;
      const isInSight = () => top() >= scroller.scrollTop &&
        top() + heightOf(index) <= scroller.scrollTop + scroller.clientHeight;
      for (let turn = 0; turn < 2 && !isInSight(); ++turn) {  // drawing tells the heights above it
        scroller.scrollTop = top();
        draw();
      }
    },
    forEach: (act) => items.forEach((item, index) => act(item, index)),
  };
}
