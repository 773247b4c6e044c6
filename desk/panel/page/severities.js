// How severe findings are, the worst first, and the buttons that choose them.

export const kSeverities = ["error", "warning", "note"];

/** Puts a count into a button: in words where there is room for them (page.css). */
export function label(button, severity, count, text) {
  const words = text(`header.${severity}`, count);
  const span = (className, textContent) =>
    Object.assign(document.createElement("span"), { className, textContent });
  button.replaceChildren(span("short", count), span("long", words));
  button.dataset.severity = severity;
  button.dataset.count = count;
  button.title = words;
  button.setAttribute("aria-label", words);
}
