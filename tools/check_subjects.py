"""Holds the subjects of commits against their form: "area: what it does now", no full stop,
at most 72 columns.

Usage: check_subjects.py [BASE]     the commits since BASE; default: since this check was added
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
COLUMNS = 72
AREA = r"[A-Za-z0-9_./-]+(\{[a-z0-9_,]+\})?( [a-z0-9_./-]+)*"  # desk/show, desk/{show,draw}
FORM = re.compile(rf"{AREA}(, {AREA})*: \S.*[^.]")


def git(*words):
    return subprocess.run(["git", "-C", ROOT, *words], check=True, capture_output=True,
                          encoding="utf-8").stdout.splitlines()


def base():
    added = git("log", "--diff-filter=A", "--format=%H", "--", "tools/check_subjects.py")
    return added[-1] if added else "HEAD"


def fault(subject):
    if len(subject) > COLUMNS:
        return f"{len(subject)} columns"
    return None if FORM.fullmatch(subject) else 'not of the form "area: what it does now"'


def main():
    since = sys.argv[1] if len(sys.argv) > 1 else base()
    commits = [line.split(" ", 1) for line in git("log", "--no-merges", "--format=%h %s",
                                                  f"{since}..HEAD")]
    wrong = [(commit, subject) for commit, subject in commits if fault(subject)]
    for commit, subject in wrong:
        print(f"{commit}: {fault(subject)}: {subject}")
    print(f"subjects: {len(commits)} commits, {len(wrong)} to reword")
    sys.exit(1 if wrong else 0)


main()
