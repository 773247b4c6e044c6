// The Findings view: what a check tells of the job, the severe ones first.
import { element } from "/element.js";
import { ask } from "/engine.js";
import * as finding from "/finding.js";
import { create as createList } from "/long_list.js";
import { kSeverities, label } from "/severities.js";
import { change, isWithin, state } from "/state.js";

const kWindow = 100;      // findings that are asked for at a time
const kMostWindows = 12;  // that are kept

export function create(root, text) {
  const scroller = root.querySelector("#finding-list");
  const list = scroller.querySelector("ol");
  const only = root.querySelector("#only-selected");
  let sections = [];         // {severity, rows}: of the severities that are shown
  let windows = new Map();   // by "severity/number": {findings, rules}, or null while it is on its way
  let rules = {};
  let shownJob;
  let asked = 0;             // counts what was asked for: answers to something older do not count

  /** The section that an index of the list is in, and its row there. */
  function locate(index) {
    let rest = index;
    for (const section of sections) {
      if (rest < section.rows) return { section, row: rest };
      rest -= section.rows;
    }
    return null;
  }

  const keyOf = (severity, row) => `${severity}/${Math.floor(row / kWindow)}`;

  function at(index) {
    const { section, row } = locate(index);
    return windows.get(keyOf(section.severity, row))?.[row % kWindow];
  }

  function render(index) {
    const { section, row } = locate(index);
    const item = element("li");
    item.dataset.severity = section.severity;
    item.setAttribute("aria-posinset", index + 1);
    item.setAttribute("aria-setsize", sections.reduce((sum, one) => sum + one.rows, 0));
    if (row === 0) {
      item.append(element("h2", { textContent: text(`findings.${section.severity}`) }));
    }
    const one = at(index);
    if (one === undefined) {
      item.dataset.waits = "true";
      return item;
    }
    item.append(finding.create(one, rules, text));
    mark(item, index);
    return item;
  }

  function mark(item, index) {
    item.classList.toggle("selected", (at(index)?.ids ?? []).some((id) => isWithin(id, state.selection)));
  }

  function question(severity, from, more = {}) {
    const query = { severity, from, count: kWindow, ...more };
    if (state.onlySelected && state.selection !== "") query.id = state.selection;
    return ask(state.job, "findings", query);
  }

  function keep(key, answer) {
    windows.set(key, answer.findings);
    Object.assign(rules, answer.rules);
    for (const old of windows.keys()) {
      if (windows.size <= kMostWindows) break;
      windows.delete(old);
    }
  }

  /** Asks for the windows that the items in the page need. */
  async function need(from, to) {
    const number = asked;
    for (let index = from; index < to; ++index) {
      const { section, row } = locate(index);
      const key = keyOf(section.severity, row);
      if (windows.has(key)) {
        const kept = windows.get(key);
        windows.delete(key);
        windows.set(key, kept);  // what was needed last goes last
        continue;
      }
      windows.set(key, null);
      try {
        const answer = await question(section.severity, row - (row % kWindow));
        if (number !== asked) return;
        keep(key, answer);
        longList.refresh((item) => item.dataset.waits);
      } catch {
        if (number === asked) windows.delete(key);
        return;
      }
    }
  }

  const longList = createList(scroller, list, { render, shown: need, estimate: 150 });

  function showTools(summary) {
    for (const button of root.querySelectorAll("[data-severity][aria-pressed]")) {
      const severity = button.dataset.severity;
      button.setAttribute("aria-pressed", severity === state.severity);
      if (severity !== "") label(button, severity, summary[`${severity}s`], text);
    }
  }

  /** Asks for the first window of each severity, which tells how many there are. */
  async function start(stays) {
    const number = ++asked;
    const isThere = state.job?.version > 0 || Boolean(state.job?.reason);
    const wanted = kSeverities.filter((one) => isThere && ["", one].includes(state.severity));
    const answers = await Promise.all(wanted.map((severity) => question(severity, 0)));
    if (number !== asked) return;
    shownJob = state.job?.id;
    sections = wanted.map((severity, index) => ({ severity, rows: answers[index].rows }));
    windows = new Map();
    rules = {};
    answers.forEach((answer, index) => keep(keyOf(wanted[index], 0), answer));
    if (isThere) showTools(answers[0].summary);
    const count = sections.reduce((sum, one) => sum + one.rows, 0);
    root.querySelector(".none").hidden = count > 0 || !isThere;
    longList.reset(count, stays);
    if (!stays) await reveal();
  }

  /** Scrolls to the first finding about the selection, if there is one. */
  async function reveal() {
    const number = asked;
    let before = 0;
    for (const { severity, rows } of sections) {
      if (state.selection === "" || rows === 0) continue;
      const { found } = await question(severity, 0, { count: 1, find: state.selection });
      if (number !== asked) return;
      if (found !== undefined) return longList.reveal(before + found);
      before += rows;
    }
  }

  for (const button of root.querySelectorAll("[aria-pressed]")) {
    button.addEventListener("click", () => change({ severity: button.dataset.severity }));
  }
  only.addEventListener("change", () => change({ onlySelected: only.checked }));

  // What cannot be answered is left: an event will tell of another version or connection.
  return {
    update(changed) {
      const has = (...names) => names.some((name) => changed.has(name));
      only.disabled = state.selection === "";
      only.checked = state.onlySelected && state.selection !== "";
      const isOther = has("severity", "onlySelected") || (has("selection") && state.onlySelected);
      if (isOther || has("job")) start(!isOther && shownJob === state.job?.id).catch(() => {});
      else {
        longList.draw();
        longList.forEach(mark);
        if (has("selection")) reveal().catch(() => {});
      }
    },
  };
}
