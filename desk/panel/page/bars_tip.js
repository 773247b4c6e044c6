// The values of what is pointed at or has the focus, beside it.

const kAway = 6;      // px between the tip and what it tells of
const kLinger = 200;  // ms that it stays, so that a pointer can go into it

/** @param root positioned; the tip stays inside it */
export function createTip(root) {
  const tip = document.createElement("div");
  tip.className = "bar-tip";
  tip.setAttribute("role", "tooltip");
  tip.lang = "en";
  tip.hidden = true;
  root.append(tip);
  let end;

  /** Above the item where there is room, else below it. */
  function place(item) {
    const frame = root.getBoundingClientRect();
    const box = item.getBoundingClientRect();
    const above = box.top - frame.top - tip.offsetHeight - kAway;
    const below = Math.min(box.bottom - frame.top + kAway, frame.height - tip.offsetHeight);
    const middle = (Math.max(box.left, frame.left) + Math.min(box.right, frame.right)) / 2;
    const left = middle - frame.left - tip.offsetWidth / 2;
    tip.style.top = `${above >= 0 ? above : below}px`;
    tip.style.left = `${Math.max(Math.min(left, frame.width - tip.offsetWidth - 4), 4)}px`;
  }

  const hide = () => { tip.hidden = true; };
  let subject = null;

  tip.addEventListener("pointerenter", () => clearTimeout(end));
  tip.addEventListener("pointerleave", hide);
  return {
    show(item) {
      clearTimeout(end);
      subject = item;
      tip.textContent = item.getAttribute("aria-label") ?? item.values;
      tip.hidden = tip.textContent === "";
      if (!tip.hidden) place(item);
    },
    /** Goes where its item is now. */
    follow() {
      if (tip.hidden) return;
      const [frame, box] = [root, subject].map((one) => one.getBoundingClientRect());
      const isSeen = box.top < frame.bottom && box.bottom > frame.top && box.width > 0;
      if (isSeen) place(subject);
      else hide();
    },
    hide() {
      clearTimeout(end);
      hide();
    },
    hideSoon() {
      clearTimeout(end);
      end = setTimeout(hide, kLinger);
    },
    isShown: () => !tip.hidden,
  };
}
