// What the page shows, for all its parts, and the address that leads back to it.

export const kViews = ["bars", "tables", "findings", "panel"];

/** job: one of jobs, or null. selection: "" or the id of a bar "B", a piece "B.P" or a work "B.P.W".
 * Of the findings those of a severity ("" for all) and only those of the selection are shown. */
export const state = {
  jobs: [], job: null, view: "bars", selection: "", table: "cuts", severity: "",
  onlySelected: false,
};

const listeners = [];

/** `listener` gets the set of the names that changed. */
export function subscribe(listener) {
  listeners.push(listener);
}

/** A job is another one with its version; before it has one, with the reason why not. */
const isSameJob = (a, b) => a?.id === b?.id && a?.version === b?.version &&
  (a?.version !== 0 || a.reason === b.reason);

/** Sets some of the state and tells the subscribers. */
export function change(values) {
  const changed = new Set();
  for (const [name, value] of Object.entries(values)) {
    const isSame = name === "job" ? isSameJob(state.job, value) : state[name] === value;
    state[name] = value;
    if (!isSame) changed.add(name);
  }
  if (changed.size === 0) return;
  history.replaceState(null, "", address());
  for (const listener of listeners) listener(changed);
}

/** "1.2" of "1.2.3" and of "1.2"; "" of "1". */
export function pieceOf(id) {
  const [bar, piece] = id.split(".");
  return piece === undefined ? "" : `${bar}.${piece}`;
}

/** Whether an element of the first id lies in that of the second one, or is it. */
export const isWithin = (id, other) => other !== "" && `${id}.`.startsWith(`${other}.`);

/** Of what is shown, or of another selection in it: what a link to it ends with. */
export function address(selection = state.selection) {
  const words = [state.view];
  if (state.job !== null) words.push(state.job.id);
  if (state.job !== null && selection !== "") words.push(selection);
  return `#${words.join("/")}`;
}

/** What an address asks for: a view, the id of a job (or null) and a selection. */
export function wanted(hash) {
  const [view, job = "", selection = ""] = hash.replace(/^#/, "").split("/");
  return {
    view: kViews.includes(view) ? view : null,
    job: /^\d+$/.test(job) ? Number(job) : null,
    selection: /^\d+(\.\d+){0,2}$/.test(selection) ? selection : "",
  };
}
