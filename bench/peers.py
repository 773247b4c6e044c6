"""Sets the plug-in beside what a script author would use instead: load a job, get all rows.

Every contender runs in a process of its own, in turn, and all must give the same rows.
Usage: peers.py CUSDESK MAKE_JOB [--pieces N] [--rounds N]
"""

import argparse
import hashlib
import os
import statistics
import subprocess
import sys
import tempfile

SCRIPTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "peers")

# Per format: what stands beside the plug-in, its script and arguments, and how far the plug-in
# must be ahead of it.
PEERS = {
    "json": [
        ("lua-cjson", "json.lua", ["cjson"], None),
        ("lua-dkjson with lua-lpeg", "json.lua", ["dkjson_lpeg"], 1.5),
        ("lua-dkjson", "json.lua", ["dkjson"], 3.0),
    ],
    "xml": [
        ("lua-expat, events", "xml.lua", ["sax"], 1.7),
        ("lua-expat, lxp.lom", "xml.lua", ["lom"], 3.5),
    ],
}
PLUGIN = ("the plug-in", "plugin.lua", [], None)


def make_job(program, form, pieces, root):
    """Puts a job where the plug-in looks for it; returns the file."""
    folder = os.path.join(root, "mnt/data/CustomFileDir", form.capitalize() + "File")
    os.makedirs(folder)
    file = os.path.join(folder, "job." + form)
    with open(file, "wb") as job:
        subprocess.run([program, form, str(pieces)], check=True, stdout=job)
    return file


def run(cusdesk, root, file, contender):
    """Returns seconds of CPU time, peak memory in MiB and a digest of the rows."""
    _, script, arguments, _ = contender
    output = subprocess.run(
        [cusdesk, "--root", root, "run", os.path.join(SCRIPTS, script), SCRIPTS, file, *arguments],
        check=True, capture_output=True).stdout
    head, _, rows = output[output.index(b"measured "):].partition(b"\n")
    _, seconds, peak = head.split()
    return float(seconds), int(peak) / 1024, hashlib.sha256(rows).hexdigest()


def compare(cusdesk, root, file, contenders, rounds):
    """Returns the runs of every contender, round by round."""
    runs = {contender[0]: [] for contender in contenders}
    for _ in range(rounds):
        for contender in contenders:
            runs[contender[0]].append(run(cusdesk, root, file, contender))
    if len({result[2] for results in runs.values() for result in results}) != 1:
        raise SystemExit("the contenders differ in their rows")
    return runs


def report(runs, contenders):
    """Prints a line per contender; returns how many goals are missed."""
    missed = 0
    for name, _, _, goal in contenders:
        times = [result[0] for result in runs[name]]
        own = [result[0] for result in runs[PLUGIN[0]]]
        ahead = statistics.median(other / mine for other, mine in zip(times, own))
        peak = statistics.median(result[1] for result in runs[name])
        verdict = "MISSED" if goal and ahead < goal else ""
        missed += verdict != ""
        print(f"  {name:26} {1000 * statistics.median(times):8.0f} {peak:8.0f} {ahead:8.2f}   "
              f"{f'>= {goal}' if goal else '':8}{verdict}".rstrip())
    return missed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("cusdesk")
    parser.add_argument("make_job")
    parser.add_argument("--pieces", type=int, default=8000)
    parser.add_argument("--rounds", type=int, default=9)
    arguments = parser.parse_args()

    missed = 0
    for form, peers in PEERS.items():
        contenders = [PLUGIN, *peers]
        with tempfile.TemporaryDirectory() as root:
            file = make_job(arguments.make_job, form, arguments.pieces, root)
            runs = compare(arguments.cusdesk, root, file, contenders, arguments.rounds)
        print(f"{form.upper()}, {arguments.pieces:,} pieces"
              f"{'ms':>16} {'peak MiB':>8} {'x plug-in':>8}   goal")
        missed += report(runs, contenders)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
