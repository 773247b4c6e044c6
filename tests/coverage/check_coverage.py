"""Measures which lines and branches the tests leave out, and holds them against unreached.txt.

Usage: check_coverage.py SOURCE BUILD JOBS

unreached.txt names every line that no test runs, and every line of which no test takes some branch,
with the reason: FILE: KIND: REASON, and the line itself below, indented. It may name nothing else.
"""

import collections
import json
import pathlib
import subprocess
import sys

FOLDERS = ("model", "json", "xml", "part", "module")
LIST = pathlib.Path(__file__).with_name("unreached.txt")


def measure(source, build, jobs):
    command = ["gcovr", "-j", jobs, "--root", source, "--object-directory", build, "--json",
               "--exclude-throw-branches", "--exclude-unreachable-branches"]
    for folder in FOLDERS:
        command += ["--filter", f"{source}/{folder}/"]
    done = subprocess.run(command + [build], check=True, capture_output=True, text=True)
    return json.loads(done.stdout)["files"]


def unreached(files, source):
    """Counts (file, kind, text of the line), and the figures."""
    found = collections.Counter()
    figures = collections.Counter()
    for file in files:
        texts = (source / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line["gcovr/noncode"]:
                continue
            text = texts[line["line_number"] - 1].strip()
            branches = line["branches"]
            figures["lines"] += 1
            figures["branches"] += len(branches)
            figures["lines run"] += line["count"] > 0
            figures["branches taken"] += sum(branch["count"] > 0 for branch in branches)
            if line["count"] == 0:
                found[file["file"], "line", text] += 1
            elif any(branch["count"] == 0 for branch in branches):
                found[file["file"], "branch", text] += 1
    return found, figures


def listed():
    rows = collections.Counter()
    key = None
    for line in LIST.read_text().splitlines():
        if line.startswith("  "):
            rows[key + (line.strip(),)] += 1
        elif line and not line.startswith("#"):
            file, kind, reason = line.split(": ", 2)
            assert reason, line
            key = (file, kind)
    return rows


def main():
    source, build = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    found, figures = unreached(measure(source, build, sys.argv[3]), source)
    known = listed()
    for what, rows in (("not reached, not in unreached.txt", found - known),
                       ("in unreached.txt, but reached or gone", known - found)):
        for file, kind, text in sorted(rows.elements()):
            print(f"{what}: {file}: {kind}:\n  {text}")
    print(f"coverage of {', '.join(FOLDERS)}: {figures['lines run']} of {figures['lines']} lines, "
          f"{figures['branches taken']} of {figures['branches']} branches; "
          f"{sum(known.values())} exceptions named")
    sys.exit(0 if found == known else 1)


main()
