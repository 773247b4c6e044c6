// One finding as it is shown: message, place, source, cure, and what comes of it under it.
import { element } from "/element.js";
import { change } from "/state.js";

const english = (name, words, className = "") =>
  element(name, { lang: "en", textContent: words, className });

/** Text of the product's documents, in which code stands between backticks. */
function prose(name, words) {
  const parts = words.split("`").map((part, index) =>
    (index % 2 === 1 ? element("code", { textContent: part }) : part));
  return element(name, { lang: "en" }, ...parts);
}

function placeOf(one, text) {
  const line = one.line > 0
    ? text("findings.line", one.column > 0 ? `${one.line}:${one.column}` : one.line) : "";
  const rule = english("span", one.rule, "rule");
  const [id] = one.ids ?? [];
  if (id === undefined) return element("p", { className: "place" }, english("span", one.element), line, rule);
  const button = element("button", { type: "button", lang: "en", textContent: one.element });
  button.addEventListener("click", () => change({ selection: id }));
  return element("p", { className: "place" }, button, element("span", { textContent: line }), rule);
}

/** The lines of the source, with the place underlined. */
function excerptOf(one) {
  const lines = (one.excerpt ?? []).map((line) => {
    const { from = 0, to = 0 } = line;
    const item = element("li", { value: line.line }, line.text.slice(0, from),
      element("mark", { textContent: line.text.slice(from, to) }), line.text.slice(to));
    return item;
  });
  return element("ol", { className: "source", lang: "en" }, ...lines);
}

function more(one, rule, text) {
  const parts = [];
  if (rule?.machine) parts.push(prose("p", rule.machine));
  if (rule && one.lacks?.length > 0) {
    parts.push(element("p", {}, element("b", { textContent: text("findings.lacks") }), " ",
      english("span", one.lacks.join(", "))));
  }
  if (one.carried?.length > 0) {
    parts.push(element("ul", {}, ...one.carried.map((value) =>
      element("li", { textContent: text("findings.carried", value.key, value.value, value.line) }))));
  }
  if (parts.length === 0) return [];
  return [element("details", {},
    element("summary", { textContent: text("findings.machine") }), ...parts)];
}

const isSamePlace = (a, b) => a.line === b.line && a.column === b.column;

/** `rules` tell by their ids what the machine does and how to cure it; `cause` is what it comes of. */
export function create(one, rules, text, cause = null) {
  const rule = rules[one.rule];
  const made = element("article", {}, english("p", one.message, "message"), placeOf(one, text));
  if (one.excerpt?.length > 0 && !(cause && isSamePlace(one, cause))) made.append(excerptOf(one));
  if (rule?.cure && cause === null) {
    made.append(element("p", { className: "cure" },
      element("b", { textContent: text("findings.cure") }), " ", prose("span", rule.cure)));
  }
  made.append(...more(one, cause === null ? rule : null, text));
  if (one.consequences?.length > 0) {
    made.append(element("p", { className: "comes", textContent: text("findings.consequences") }),
      element("ul", { className: "consequences" }, ...one.consequences.map((each) =>
        element("li", {}, create(each, rules, text, one)))));
  }
  return made;
}
