// The requests of the page. The only module that knows how they are made and answered.

/** What the engine refused, in its words. Status 409: the job has a newer version, of which an event
 * tells; whoever asked waits for that. */
export class Refusal extends Error {
  constructor(status, words) {
    super(words);
    this.status = status;
  }
}

const kLongestPause = 3000;  // ms
const kHiddenPause = 500;    // ms

async function accepted(response) {
  if (!response.ok) {
    throw new Refusal(response.status, (await response.text()).trim() || response.statusText);
  }
  return response;
}

/** What an address answers. One that has too much to do is asked again. */
async function fetched(address) {
  for (let pause = 200; ; pause *= 2) {
    const response = await fetch(address);
    if (response.status !== 503 || pause > kLongestPause) return accepted(response);
    await new Promise((done) => setTimeout(done, pause));
  }
}

/** A document of a job: an object where it is JSON, else its text. */
export async function ask(job, what, query = {}) {
  const response = await fetched(documentAddress(job, what, query));
  const isJson = (response.headers.get("Content-Type") ?? "").startsWith("application/json");
  return isJson ? response.json() : response.text();
}

/** The text of a document of a job; null for one of more bytes. */
export async function askShort(job, what, most) {
  const response = await fetched(documentAddress(job, what));
  if (Number(response.headers.get("Content-Length") ?? Infinity) <= most) return response.text();
  await response.body.cancel();
  return null;
}

/** The text of a file of the page. */
export const pageFile = async (path) => (await fetched(path)).text();

/** Where a browser can show a document of a job by itself. */
export const documentAddress = (job, what, query = {}) =>
  `/job/${job.id}/${what}?${new URLSearchParams({ version: job.version, ...query })}`;

/** Follows the jobs and the panel: `news` gets each event, `lost` whether there will be a new try
 * after the connection broke. Browsers have six connections for all pages of an address: one that
 * nobody sees gives its own back, and goes on when it is seen again. */
export function follow(news, lost) {
  let events = null;
  let rest;
  const listen = () => {
    clearTimeout(rest);
    if (document.hidden) rest = setTimeout(() => { events?.close(); events = null; }, kHiddenPause);
    if (document.hidden || (events && events.readyState !== EventSource.CLOSED)) return;
    events = new EventSource("/events");
    events.onmessage = (event) => news(JSON.parse(event.data));
    events.onerror = () => lost(events.readyState !== EventSource.CLOSED);
  };
  document.addEventListener("visibilitychange", listen);
  listen();
}

/** Hands over a file. Nothing is stored but in memory. @return the id of its job */
export async function drop(file) {
  const response = await accepted(await fetch(`/drop?${new URLSearchParams({ name: file.name })}`, {
    method: "POST", body: file, headers: { "Content-Type": "application/octet-stream" },
  }));
  return (await response.json()).id;
}

async function send(path, fields) {
  await accepted(await fetch(path, { method: "POST", body: new URLSearchParams(fields) }));
}

/** A click on the panel, in pixels of its picture. */
export const panelClick = (x, y) => send("/click", { x, y });

/** Turns the panel's page "up" or "down". */
export const panelTurn = (turn) => send("/page", { turn });

/** Where the panel's picture of that number is; `connection` keeps those of two panels apart. */
export const pictureAddress = (connection, number) => `/picture.svg?${connection}-${number}`;
