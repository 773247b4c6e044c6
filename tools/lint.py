"""Runs clang-tidy over source files, several side by side, the largest first.

Usage: lint.py BUILD JOBS <LIST     LIST has a file a line; BUILD has their compile commands

A file that several targets compile is looked at once. Prints what was found, of every file.
"""

import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import tempfile


def write_commands(build, folder):
    """The build's compile commands, one for each file."""
    commands = json.loads((build / "compile_commands.json").read_text())
    once = {command["file"]: command for command in commands}
    (folder / "compile_commands.json").write_text(json.dumps(list(once.values())))


def main():
    build, jobs = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    files = sorted(sys.stdin.read().splitlines(), key=os.path.getsize, reverse=True)
    with tempfile.TemporaryDirectory() as name, concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        write_commands(build, pathlib.Path(name))

        def tidy(file):
            return subprocess.run(["clang-tidy", "-p", name, "--quiet", file], check=False, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

        failed = 0
        for done in pool.map(tidy, files):
            if done.returncode != 0:
                failed += 1
                print(done.stdout, flush=True)
    print(f"lint: {len(files)} files, {failed} with findings")
    sys.exit(1 if failed or not files else 0)


main()
