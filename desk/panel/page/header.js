// What stands above the views: which job, its numbers, its findings and how it is followed.
import { element } from "/element.js";
import { ask } from "/engine.js";
import { kSeverities, label } from "/severities.js";
import { change, state } from "/state.js";

export function create(document, text) {
  const $ = (id) => document.getElementById(id);
  let summary = null;  // the job's part of its summary; null while there is none
  let counts = null;   // of the findings
  let shownJob;        // whose they are
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
    $("severities").hidden = counts === null;
    if (counts === null) return;
    for (const { severity, button } of severities) {
      label(button, severity, counts[`${severity}s`], text);
    }
  }

  /** Shows what stands in the place of a view that has nothing to show of the job. */
  function showAbsence() {
    const key = state.job === null && panel !== null ? "noJob" : isReading() ? "reading"
      : state.job?.version === 0 ? "notLoading" : summary?.bars === 0 ? "noBars" : "";
    const isShown = key !== "" && ["bars", "tables"].includes(state.view) ||
      ["noJob", "reading"].includes(key) && state.view === "findings";
    $("absence").hidden = !isShown;
    $("absence-words").textContent = isShown ? text(`absence.${key}`) : "";
    $("to-findings").hidden = key !== "notLoading";
    for (const name of ["bars", "tables", "findings"]) $(`view-${name}`).inert = isShown;
  }

  function take(values) {
    [summary, counts] = values;
    showFacts();
    showName();
    showState();
    showAbsence();
  }

  /** Also of a job that does not load there are findings. */
  async function askCounts({ job } = state) {
    if (job?.version > 0) {
      const [answer] = (await ask(job, "summary")).jobs;
      return [answer, answer];
    }
    return [null, job?.reason ? (await ask(job, "findings", { count: 1 })).summary : null];
  }

  async function askSummary() {
    const number = ++asked;
    if (shownJob !== state.job?.id) take([null, null]);
    shownJob = state.job?.id;
    try {
      const answer = await askCounts();
      if (number === asked) take(answer);
    } catch {
      // An event will tell of another version or connection.
    }
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
    const own = summary?.job ?? "";  // what the job calls itself
    $("job-name").textContent = own === name ? "" : own;
    $("name").title = $("jobs").title = $("job-name").title =
      [state.job?.name ?? name, own].filter((one) => one !== "").join("\n");
    if (state.job !== null) $("jobs").value = state.job.id;
  }

  function showJobs() {
    $("jobs").hidden = state.jobs.length < 2;
    $("name").hidden = !$("jobs").hidden;
    $("jobs").replaceChildren(...state.jobs.map((job) => new Option(nameOf(job), job.id)));
  }

  const isReading = () => state.job !== null && !isNotLoading() &&
    (!(state.job.version > 0) || summary === null);
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
    else if (isReading()) setState("reading", "");
    else if (state.job?.dropped) setState("dropped", "live");
    else setState(state.job === null ? "live" : "following", "live");
  }

  $("jobs").addEventListener("change", (event) => {
    const job = state.jobs.find((one) => one.id === Number(event.target.value));
    change({ job, selection: "" });
  });
  $("facts").append(...facts.map(({ item }) => item));
  $("severities").append(...severities.map(({ button }) => element("li", {}, button)));
  $("to-findings").addEventListener("click", () =>
    change({ view: "findings", severity: "", onlySelected: false }));
  showFacts();
  setState("connecting", "");

  return {
    update(changed) {
      if (changed.has("jobs")) showJobs();
      showName();
      showReason();
      showState();
      showAbsence();
      if (changed.has("job")) askSummary();
    },
    take(news) {
      panel = news;
      showName();
      showState();
      showAbsence();
    },
    lost(isTrying) {
      panel = null;
      setState(isTrying ? "lost" : "gone", "lost");
    },
  };
}
