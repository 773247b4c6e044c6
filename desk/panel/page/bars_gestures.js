// Zooming and moving the drawings by wheel, mouse and fingers.

const kDrag = 5;  // px that a click may be off

function startWheel(scroller, zoom) {
  scroller.addEventListener("wheel", (event) => {
    if (!event.ctrlKey) return;
    event.preventDefault();
    const step = event.deltaMode === WheelEvent.DOM_DELTA_PIXEL ? 0.003 : 0.1;
    zoom(Math.exp(-event.deltaY * step), event.clientX, event.clientY);
  }, { passive: false });
}

/** Fingers move the page by themselves; two of them zoom. */
function startPinch(scroller, zoom) {
  let last = 0;  // px between the fingers
  const distance = ([a, b]) => Math.hypot(a.clientX - b.clientX, a.clientY - b.clientY);
  scroller.addEventListener("touchmove", (event) => {
    if (event.touches.length !== 2) return;
    event.preventDefault();
    const [a, b] = event.touches;
    const now = distance(event.touches);
    if (last > 0) zoom(now / last, (a.clientX + b.clientX) / 2, (a.clientY + b.clientY) / 2);
    last = now;
  }, { passive: false });
  for (const name of ["touchstart", "touchend", "touchcancel"]) {
    scroller.addEventListener(name, (event) => {
      last = event.touches.length === 2 ? distance(event.touches) : 0;
    }, { passive: true });
  }
}

/** The mouse drags; a click at the end of that selects nothing. */
function startDrag(scroller) {
  let start = null;
  scroller.addEventListener("pointerdown", (event) => {
    const isOnBar = event.target === scroller;  // a scroll bar
    if (event.pointerType !== "mouse" || event.button !== 0 || isOnBar) return;
    start = { x: event.clientX, y: event.clientY, left: scroller.scrollLeft,
      top: scroller.scrollTop, isDrag: false };
  });
  scroller.addEventListener("pointermove", (event) => {
    if (start === null) return;
    const [x, y] = [event.clientX - start.x, event.clientY - start.y];
    if (!start.isDrag && Math.hypot(x, y) < kDrag) return;
    start.isDrag = true;
    scroller.setPointerCapture(event.pointerId);
    scroller.classList.add("dragged");
    scroller.scrollTo(start.left - x, start.top - y);
  });
  scroller.addEventListener("click", (event) => {
    if (start?.isDrag) event.stopPropagation();
    start = null;
  }, { capture: true });
  for (const name of ["pointerup", "pointercancel"]) {
    scroller.addEventListener(name, () => {
      scroller.classList.remove("dragged");
      setTimeout(() => { start = null; });  // after the click
    });
  }
}

/** @param zoom(factor, x, y) around a point of the window */
export function startGestures(scroller, zoom) {
  startWheel(scroller, zoom);
  startPinch(scroller, zoom);
  startDrag(scroller);
}
