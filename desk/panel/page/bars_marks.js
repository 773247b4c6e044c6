// How many errors and warnings there are at the bars and pieces of a job.
import { ask } from "/engine.js";
import { state } from "/state.js";

const kMarked = ["error", "warning"];  // the worst one first
const kCount = 500;                    // findings of a request
const kMost = 10000;                   // of a severity; the view Findings has them all

export class Marks {
  constructor() {
    this.counts = new Map();  // by id of a bar or piece: {error: 2}
  }

  /** A finding at a work is one at its piece. */
  add(id, severity) {
    const place = id.split(".").slice(0, 2).join(".");
    const counts = this.counts.get(place) ?? {};
    this.counts.set(place, { ...counts, [severity]: (counts[severity] ?? 0) + 1 });
  }

  /** [severity, how many] of those that there are at a piece (".2"), or at the bars themselves (""),
   * of all these bars; the worst ones first. */
  at(place, bars) {
    const sum = (severity) => bars.reduce((all, bar) =>
      all + (this.counts.get(`${bar}${place}`)?.[severity] ?? 0), 0);
    return kMarked.map((severity) => [severity, sum(severity)]).filter(([, count]) => count > 0);
  }
}

/** Those of a job; some of them when another one is shown meanwhile. */
export async function askMarks(job) {
  const marks = new Marks();
  for (const severity of kMarked) {
    for (let from = 0, rows = 1; from < Math.min(rows, kMost) && job === state.job; from += kCount) {
      const answer = await ask(job, "findings", { severity, from, count: kCount });
      rows = answer.rows;
      for (const id of answer.findings.flatMap((one) => one.ids ?? [])) marks.add(id, severity);
    }
  }
  return marks;
}
