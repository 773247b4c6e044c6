"""Holds what a piece read and a row answered cost in instructions against the kept counts.

The counts are those of one compiler and one build: elsewhere the test is skipped and says why.
Usage: instructions_test.py CUSCOST KEPT COMPILER BUILD_TYPE PROCESSOR [--update]
"""

import os
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
TOLERANCE = 0.03
PATH_LENGTH = 200
MEASURED = ("GNU 12", "Release", "x86_64")

# The same string functions on every machine, and nothing of its environment on the stack.
ENVIRONMENT = {
    "GLIBC_TUNABLES":
        "glibc.cpu.hwcaps=-AVX2,-AVX,-AVX_Fast_Unaligned_Load,-SSE4_2,-SSSE3,-ERMS,-FSRM,-MOVBE,-BMI2",
    "LD_BIND_NOW": "1",
}


def totals(folder):
    """What callgrind dumped: the instructions of every part."""
    for name in os.listdir(folder):
        if not name.startswith("counts"):
            continue
        with open(os.path.join(folder, name), encoding="utf-8", errors="replace") as dump:
            lines = [line.strip() for line in dump]
        part = [line.split(": ")[-1] for line in lines if line.startswith("desc: Trigger: Client")]
        total = [int(line.split()[1]) for line in lines if line.startswith("totals:")]
        if part:
            yield part[0], total[0]


def copied(program, folder):
    """A copy below `folder` whose path is as long wherever that lies: the path is on the program's
    stack, and from addresses there script states draw their hash seeds."""
    padding = os.path.join(folder, "x" * (PATH_LENGTH - len(folder)))
    os.mkdir(padding)
    return shutil.copy(program, os.path.join(padding, "program"))


def measure(program):
    """Instructions per piece or row, by part."""
    with tempfile.TemporaryDirectory() as name:
        folder = os.path.realpath(name)
        program = copied(program, folder)
        run = subprocess.run(
            [shutil.which("valgrind"), "--tool=callgrind", "--collect-atstart=no", "--quiet",
             f"--callgrind-out-file={folder}/counts", "./" + os.path.basename(program)],
            cwd=os.path.dirname(program), env=ENVIRONMENT, check=True, capture_output=True,
            text=True)
        counts = {name: int(count) for name, count in map(str.split, run.stdout.splitlines())}
        return {name: total / counts[name] for name, total in totals(folder)}


def read_kept(file):
    with open(file, encoding="utf-8") as lines:
        rows = [line.split() for line in lines if line.strip() and not line.startswith("#")]
    return {name: int(count) for name, count in rows}


def write_kept(file, measured):
    with open(file, "w", encoding="utf-8") as kept:
        kept.write("# Instructions per piece read and per row answered.\n")
        for name, count in sorted(measured.items()):
            kept.write(f"{name} {count:.0f}\n")


def compare(kept, measured):
    """Prints every part; returns how many have grown too much or are not there."""
    faults = len(kept.keys() ^ measured.keys())
    for name in sorted(kept.keys() & measured.keys()):
        change = measured[name] / kept[name] - 1
        note = ""
        if change > TOLERANCE:
            note = "GROWN: find out why, or keep the new count with --update"
            faults += 1
        elif change < -TOLERANCE:
            note = "less: --update keeps it so"
        print(f"{name:28} {measured[name]:10.0f} {100 * change:+6.1f} %  {note}".rstrip())
    return faults


def main():
    program, kept, *build = sys.argv[1:6]
    if tuple(build) != MEASURED:
        print(f"skipped: the kept counts are for {MEASURED}, this build is {tuple(build)}")
        return SKIPPED
    if shutil.which("valgrind") is None:
        print("skipped: there is no valgrind")
        return SKIPPED
    measured = measure(program)
    if sys.argv[6:] == ["--update"]:
        write_kept(kept, measured)
    return 1 if compare(read_kept(kept), measured) else 0


if __name__ == "__main__":
    sys.exit(main())
