// What stands above the views: which job, its numbers, its findings and how it is followed.
import { element } from "/element.js";
import { ask } from "/engine.js";
import { kSeverities, label } from "/severities.js";
import { change, state } from "/state.js";

export function create(document, text) {
  const $ = (id) => document.getElementById(id);
  let summary = null;  // the job's part of its summary; null while there is none
  let asked = 0;       // counts what was asked for: only the last answer counts
  let panel = null;    // the latest news of the panel; null before any, or when the connection broke

  const facts = ["bars", "pieces", "yield"].map((name) => ({ name, item: element("li") }));
  const severities = kSeverities.map((severity) => ({
    severity,
    button: element("button", {
      type: "button",
      onclick: () => change({ view: "findings", severity, onlySelected: false }),
    }),
  }));

  function showFacts() {
    for (const { name, item } of facts) {
      item.hidden = typeof summary?.[name] !== "number";
      item.textContent = item.hidden ? "" : text(`header.${name}`, summary[name]);
    }
    $("severities").hidden = summary === null;
    if (summary === null) return;
    for (const { severity, button } of severities) {
      label(button, severity, summary[`${severity}s`], text);
    }
  }

  async function askSummary() {
    const number = ++asked;
    let answer = null;
    try {
      if (state.job?.version > 0) answer = await ask(state.job, "summary");
    } catch {
      // An event will tell of another version or connection.
    }
    if (number !== asked) return;
    summary = answer?.jobs[0] ?? null;
    showFacts();
  }

  /** The file's name; with its folder where two jobs are called the same. */
  function nameOf(job) {
    const last = (name) => name.split(/[\\/]/).at(-1);
    const isAlone = state.jobs.every((one) => one.id === job.id || last(one.name) !== last(job.name));
    return isAlone ? last(job.name) : job.name;
  }

  function showName() {
    const name = state.job === null ? (panel?.job ?? "") : nameOf(state.job);
    document.title = `${name || panel?.script || "cusdesk"} - ${text(`${state.view}.title`)}`;
    $("name").textContent = name || text("header.noJob");
    $("name").title = $("jobs").title = state.job?.name ?? name;
    if (state.job !== null) $("jobs").value = state.job.id;
  }

  function showJobs() {
    $("jobs").hidden = state.jobs.length < 2;
    $("name").hidden = !$("jobs").hidden;
    $("jobs").replaceChildren(...state.jobs.map((job) => new Option(nameOf(job), job.id)));
  }

  const isNotLoading = () => state.job !== null && !state.job.loads && state.job.reason !== "";

  function showReason() {
    const isBroken = isNotLoading();
    $("reason").hidden = !isBroken;
    $("reason").textContent = isBroken ? state.job.reason : "";
    $("views").classList.toggle("outdated", isBroken && state.view !== "panel" && state.job.version > 0);
    $("details").classList.toggle("outdated", isBroken);
  }

  function setState(key, kind) {
    $("state").textContent = text(`state.${key}`);
    $("state").dataset.kind = kind;
  }

  function showState() {
    if (panel === null) return;
    if (panel.failed) setState("scriptFailed", "failed");
    else if (isNotLoading()) setState("broken", "failed");
    else if (state.job?.loads === false) setState("reading", "");
    else if (state.job?.dropped) setState("dropped", "live");
    else setState(state.job === null ? "live" : "following", "live");
  }

  $("jobs").addEventListener("change", (event) => {
    const job = state.jobs.find((one) => one.id === Number(event.target.value));
    change({ job, selection: "" });
  });
  $("facts").append(...facts.map(({ item }) => item));
  $("severities").append(...severities.map(({ button }) => element("li", {}, button)));
  showFacts();
  setState("connecting", "");

  return {
    update(changed) {
      if (changed.has("jobs")) showJobs();
      showName();
      showReason();
      showState();
      if (changed.has("job")) askSummary();
    },
    take(news) {
      panel = news;
      showName();
      showState();
    },
    lost(isTrying) {
      panel = null;
      setState(isTrying ? "lost" : "gone", "lost");
    },
  };
}
