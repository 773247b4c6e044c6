// The page of a panel: shows its picture and output, and hands on clicks and page keys.
// Whatever comes from a script or a job is put into the page as text only.
"use strict";

const kMostLines = 1000;
const $ = (id) => document.getElementById(id);

let view = null;      // the latest news of the panel
let connection = 0;   // counts the connections: pictures of an earlier one may be another panel's

function setState(text, kind) {
  $("state").textContent = text;
  $("state").dataset.kind = kind;
}

function showView() {
  $("script").textContent = view.script;
  $("job").textContent = view.job;
  $("job-fact").hidden = view.job === "";
  document.title = `${view.job || view.script} - Panel`;
  $("case").style.setProperty("--width", view.width);
  $("case").style.setProperty("--height", view.height);
  $("page").textContent = view.rows === 0 ? "No rows" : `Page ${view.page} / ${view.pages}`;
  $("row").textContent =
    view.selected === null ? `${view.rows} rows` : `Row ${view.selected} of ${view.rows}`;
  $("row").hidden = view.rows === 0;
  $("up").disabled = view.rows === 0 || view.page <= 1;
  $("down").disabled = view.rows === 0 || view.page >= view.pages;
  $("job-fault").textContent = view.jobFault;
  $("job-fault").hidden = view.jobFault === "";
  $("findings").textContent = view.findings;
  $("findings").hidden = view.findings === "";
  if (view.failed) setState("The script failed", "failed");
  else if (view.jobFault !== "") setState("Job not loaded", "failed");
  else setState("Live", "live");
}

function showPicture() {
  const source = `/picture.svg?${connection}-${view.picture}`;
  if (view.picture === 0 || $("picture").getAttribute("src") === source) return;
  $("picture").src = source;
}

function addLines(lines) {
  const list = $("lines");
  const atEnd = list.scrollHeight - list.scrollTop - list.clientHeight < 8;
  for (const [speaker, text] of lines) {
    const item = document.createElement("li");
    item.dataset.speaker = speaker;
    item.textContent = text;
    list.append(item);
  }
  while (list.childElementCount > kMostLines) list.firstElementChild.remove();
  if (atEnd) list.scrollTop = list.scrollHeight;
}

function listen() {
  const events = new EventSource("/events");
  events.onmessage = (event) => {
    view = JSON.parse(event.data);
    if (view.isFirst) {
      ++connection;
      $("lines").replaceChildren();
    }
    showView();
    showPicture();
    addLines(view.lines);
  };
  events.onerror = () => {
    const gone = events.readyState === EventSource.CLOSED;
    setState(gone ? "Not connected: reload the page" : "Connection lost, trying again", "lost");
  };
}

async function send(path, fields) {
  try {
    const answer = await fetch(path, { method: "POST", body: new URLSearchParams(fields) });
    if (!answer.ok) setState((await answer.text()).trim(), "failed");
  } catch {
    setState("Connection lost, trying again", "lost");
  }
}

const turn = (direction) => send("/page", { turn: direction });

// The picture may be shown smaller or larger than it is: clicks count in its own pixels.
$("picture").addEventListener("click", (event) => {
  const shown = event.target.getBoundingClientRect();
  const scale = (at, from, length, pixels) =>
    Math.min(Math.max(Math.floor(((at - from) * pixels) / length), 0), pixels - 1);
  send("/click", {
    x: scale(event.clientX, shown.left, shown.width, view.width),
    y: scale(event.clientY, shown.top, shown.height, view.height),
  });
});

$("up").addEventListener("click", () => turn("up"));
$("down").addEventListener("click", () => turn("down"));

document.addEventListener("keydown", (event) => {
  const direction = { PageUp: "up", PageDown: "down" }[event.key];
  if (direction === undefined || event.ctrlKey || event.altKey || event.metaKey) return;
  if ($("lines").contains(event.target)) return;  // there the keys scroll
  event.preventDefault();
  turn(direction);
});

$("plugin-lines").addEventListener("change", (event) => {
  $("lines").classList.toggle("without-plugin", !event.target.checked);
});

$("clear").addEventListener("click", () => $("lines").replaceChildren());

listen();
