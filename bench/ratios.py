"""Holds what the bench measures against the goals.

What is compared runs in one process, alone with its like, in random order, and the median of the
repetitions' ratios counts: a machine that slows down for a while then slows down both sides.
Usage: ratios.py CUSBENCH CUSMEMORY [--repetitions N] [--skip-large]
"""

import argparse
import collections
import json
import math
import statistics
import subprocess
import sys
import tempfile

# Groups that run together, of (what, numerator, denominator, goal): at most the goal, except where it
# begins with ">=".
RATIOS = [
    [
        ("JSON read / parse, 8,000 pieces", "json.first/8000/read", "json.first/8000/parse", "<= 0.30"),
        ("JSON read / copy, 8,000 pieces", "json.first/8000/read", "json.first/8000/copy", ""),
        ("JSON read / free, 8,000 pieces", "json.first/8000/read", "json.first/8000/free", ""),
    ],
    [("JSON read / parse, 160 pieces", "json.first/160/read", "json.first/160/parse", "<= 0.25")],
    [("... second spellings, 8,000 pieces", "json.second/8000/read", "json.second/8000/parse", "")],
    [("... second spellings, 160 pieces", "json.second/160/read", "json.second/160/parse", "")],
    [
        ("XML read / parse, 8,000 pieces", "xml/8000/read", "xml/8000/parse", "<= 0.40"),
        ("XML header last / first", "xml.header_last/8000/read", "xml/8000/read", "<= 1.10"),
    ],
    [("XML read / parse, 160 pieces", "xml/160/read", "xml/160/parse", "<= 0.40")],
    [("all works / floor, 8,000 pieces", "works/8000/command", "works/8000/floor", "<= 1.15")],
    [("all works / floor, 160 pieces", "works/160/command", "works/160/floor", "")],
    [
        ("all cuts / floor, 8,000 pieces", "cuts/8000/command", "cuts/8000/floor", "<= 1.20"),
        ("... right after a load", "cuts/8000/first", "cuts/8000/floor", ""),
    ],
    [("all cuts / floor, 160 pieces", "cuts/160/command", "cuts/160/floor", "")],
    [("labels / floor, 8,000 pieces", "labels/8000/command", "labels/8000/floor", "<= 1.05")],
    [("labels / floor, 160 pieces", "labels/160/command", "labels/160/floor", "")],
    [("24,000 distinct holes / all-works floor", "distinct_holes/8000/command",
      "distinct_works/8000/floor", "<= 1.50")],
    [("scan in Lua / works of one barcode", "barcode/8000/scan", "barcode/8000/command", ">= 10")],
]

# What grows, each beside its floor where it has one.
GROWING = [["json.first/{}/read"], ["xml/{}/read"], ["works/{}/command", "works/{}/floor"],
           ["cuts/{}/command", "cuts/{}/floor"], ["labels/{}/command", "labels/{}/floor"],
           ["holes/{}/command"]]
# (from, to, repetitions)
GROWTH_STEPS = [(1000, 10000, 61), (10000, 100000, 15)]
GROWTH_GOAL = "<= 1.15"


def measure(bench, cases, repetitions):
    """Runs the cases; returns per case the times of the repetitions, in order."""
    with tempfile.NamedTemporaryFile(suffix=".json") as report:
        run = subprocess.run(
            [bench, "--benchmark_filter=^(" + "|".join(sorted(cases)) + ")/",
             f"--benchmark_repetitions={repetitions}",
             "--benchmark_enable_random_interleaving=true",
             f"--benchmark_out={report.name}", "--benchmark_out_format=json"],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if run.returncode != 0:
            sys.exit(run.stderr)
        figures = json.load(report)
    times = collections.defaultdict(dict)
    for run in figures["benchmarks"]:
        if run["run_type"] == "iteration":
            case = run["name"].split("/iterations:")[0]
            times[case][run["repetition_index"]] = run["real_time"]
    return {case: [runs[i] for i in sorted(runs)] for case, runs in times.items()}


def median_ratio(times, over, under):
    return statistics.median(a / b for a, b in zip(times[over], times[under]))


def meets(value, goal):
    if not goal:
        return True
    sign, bound = goal.split()
    return value <= float(bound) if sign == "<=" else value >= float(bound)


class Table:
    def __init__(self):
        self.missed = 0

    def row(self, what, value, goal, note=""):
        verdict = "" if meets(value, goal) else "MISSED"
        self.missed += verdict != ""
        print(f"{what:46} {value:8.3f}   {goal:8} {verdict:7}{note}".rstrip())


def ratios(table, bench, repetitions):
    for group in RATIOS:
        times = measure(bench, {case for _, over, under, _ in group for case in (over, under)},
                        repetitions)
        for what, over, under, goal in group:
            table.row(what, median_ratio(times, over, under), goal,
                      f" {statistics.median(times[over]):.0f} us")


def growth(table, bench):
    for small, large, repetitions in GROWTH_STEPS:
        for group in GROWING:
            times = measure(bench, {case.format(size) for case in group for size in (small, large)},
                            repetitions)
            for case in group:
                ratio = median_ratio(times, case.format(large), case.format(small))
                kind, _, part = case.split("/")
                table.row(f"growth, {kind} {part}, {small:,} to {large:,}",
                          math.log(ratio) / math.log(large / small),
                          "" if part == "floor" else GROWTH_GOAL)


def memory(table, program):
    """The goals are for JSON jobs; an XML document is smaller beside the same records."""
    lines = subprocess.run([program, "8000", "80000"], check=True, capture_output=True, text=True).stdout
    for line in lines.splitlines():
        form, pieces, *sizes = line.split()
        text, document, model, peak = map(int, sizes)
        of = f"{form.upper()}, {int(pieces):,} pieces"
        goals = ("<= 0.18", "<= 1.08") if (form, pieces) == ("json", "8000") else ("", "")
        table.row(f"model heap / document heap, {of}", model / document, goals[0])
        table.row(f"peak / (text + document), {of}", peak / (text + document), goals[1])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bench")
    parser.add_argument("memory")
    parser.add_argument("--repetitions", type=int, default=61)
    parser.add_argument("--skip-large", action="store_true", help="leave out how times grow")
    arguments = parser.parse_args()

    table = Table()
    print(f"{'ratio':46} {'median':>8}   {'goal':8}")
    ratios(table, arguments.bench, arguments.repetitions)
    if not arguments.skip_large:
        growth(table, arguments.bench)
    memory(table, arguments.memory)
    if table.missed:
        print(f"{table.missed} goals are missed")
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
