// Starts the page: its parts, which view is shown, and what comes from the engine.
import * as bars from "/bars.js";
import * as details from "/details.js";
import { drop, follow, Refusal } from "/engine.js";
import * as findings from "/findings.js";
import * as header from "/header.js";
import * as panel from "/panel.js";
import { change, kViews, state, subscribe, wanted } from "/state.js";
import * as tables from "/tables.js";
import { fillIn, text } from "/texts.js";

const $ = (id) => document.getElementById(id);
const kNoticeTime = 8000;  // ms

fillIn(document);
const top = header.create(document, text);
const makers = { bars, tables, findings, panel };
const views = Object.fromEntries(kViews.map((name) =>
  [name, makers[name].create($(`view-${name}`), text, refused)]));
const aside = details.create($("details"), text);
const missed = new Map(kViews.map((name) => [name, new Set()]));  // changes while it was hidden
let goal = wanted(location.hash);  // where to go once its job is there; job null: nowhere else

let noticeEnd;

/** Shows for a while what the engine would not do, in its words. */
function refused(error) {
  $("notice").textContent = error instanceof Refusal ? error.message : text("state.lost");
  $("notice").hidden = false;
  clearTimeout(noticeEnd);
  noticeEnd = setTimeout(() => { $("notice").hidden = true; }, kNoticeTime);
}

function showViews(changed) {
  for (const name of kViews) {
    const isShown = name === state.view;
    $(`view-${name}`).hidden = !isShown;
    $(`tab-${name}`).setAttribute("aria-selected", isShown);
    $(`tab-${name}`).tabIndex = isShown ? 0 : -1;
    for (const one of changed) missed.get(name).add(one);
    if (!isShown) continue;
    const news = new Set(missed.get(name));
    missed.get(name).clear();
    views[name].update(news);
  }
}

subscribe((changed) => {
  top.update(changed);
  showViews(changed);
  aside.update(changed);
});

/** The jobs as they are now. The one that is shown stays, unless the page is to go to another one. */
function takeJobs(jobs, isFirst) {
  const find = (id) => jobs.find((one) => one.id === id);
  const sought = find(goal.job);
  const same = find(state.job?.id);
  if (isFirst) state.job = null;  // another run may count its versions alike
  const selection = sought ? goal.selection : same && state.selection;
  change({ jobs, job: sought ?? same ?? jobs[0] ?? null, selection: selection ?? "" });
  if (sought || isFirst) goal = { job: null };
}

function goTo(address) {
  goal = address;
  if (goal.view) change({ view: goal.view });
  takeJobs(state.jobs, false);
}

function startTabs() {
  for (const [index, name] of kViews.entries()) {
    $(`tab-${name}`).addEventListener("click", () => change({ view: name }));
    $(`tab-${name}`).addEventListener("keydown", (event) => {
      const to = {
        ArrowLeft: index - 1, ArrowUp: index - 1, ArrowRight: index + 1, ArrowDown: index + 1,
        Home: 0, End: kViews.length - 1,
      }[event.key];
      if (to === undefined) return;
      event.preventDefault();
      change({ view: kViews.at(to % kViews.length) });
      $(`tab-${state.view}`).focus();
    });
  }
}

async function open(file) {
  try {
    goTo({ job: await drop(file), selection: "" });
  } catch (error) {
    refused(error);
  }
}

function startDrop() {
  const mark = (isOver) => document.body.classList.toggle("dropping", isOver);
  $("file").addEventListener("change", (event) => {
    for (const file of event.target.files) open(file);
    event.target.value = "";
  });
  document.addEventListener("dragover", (event) => {
    event.preventDefault();
    mark(true);
  });
  document.addEventListener("dragleave", (event) => mark(event.relatedTarget !== null));
  document.addEventListener("drop", (event) => {
    event.preventDefault();
    mark(false);
    for (const file of event.dataTransfer.files) open(file);
  });
}

function startKeys() {
  document.addEventListener("keydown", (event) => {
    if (event.key === "Escape" && !event.defaultPrevented) change({ selection: "" });
  });
}

state.view = goal.view ?? state.view;
startTabs();
startDrop();
startKeys();
showViews(["view"]);
window.addEventListener("hashchange", () => goTo(wanted(location.hash)));
follow((news) => {
  const isAlone = news.isFirst && goal.view === null && !news.jobs?.length;
  if (isAlone) change({ view: "panel" });  // there is no job to show
  if (news.jobs !== undefined) takeJobs(news.jobs, news.isFirst);
  views.panel.take(news);
  top.take(news);
}, (isTrying) => top.lost(isTrying));
