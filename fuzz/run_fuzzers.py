"""Runs the fuzzers of a build one after the other, or two side by side, and prints what they did.

Usage: run_fuzzers.py BUILD [--seconds N] [--jobs N] [--seed N] [TARGET...]

Each target starts from the kept inputs in fuzz/inputs/TARGET and from what earlier runs found worth
keeping in BUILD/corpus/TARGET. A finding is left in BUILD/findings, with the command that runs it
again. The exit status is 1 then.
"""

import argparse
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
TARGETS = sorted(path.name for path in (HERE / "inputs").iterdir())
DICTIONARIES = ("json", "xml")
PLACES = {"json": 160, "xml": 60}  # at least as many as the target has; more wrap around


def options():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--seconds", type=int, default=60)
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1, 1 << 31))
    parser.add_argument("targets", nargs="*", default=TARGETS)
    return parser.parse_intermixed_args()


def plant(target, folder):
    """Writes every kept input, documents once for each place of the job."""
    for kept in sorted((HERE / "inputs" / target).iterdir()):
        for file in sorted(kept.iterdir()):
            if kept.name != "jobs":
                shutil.copy(file, folder / file.name)
                continue
            for place in range(PLACES[target]):
                (folder / f"{file.name}.{place}").write_bytes(bytes([place]) + file.read_bytes())


def command(args, target, scratch):
    corpus = args.build / "corpus" / target
    findings = args.build / "findings"
    seeds = scratch / "seeds"
    for folder in (corpus, findings, seeds):
        folder.mkdir(parents=True, exist_ok=True)
    plant(target, seeds)
    words = [args.build / "bin" / f"fuzz_{target}", f"-max_total_time={args.seconds}",
             f"-seed={args.seed}", "-print_final_stats=1", "-timeout=10", "-rss_limit_mb=2048",
             "-max_len=4096", f"-artifact_prefix={findings}/{target}-"]
    if target in DICTIONARIES:
        dictionary = scratch / "dictionary"
        with dictionary.open("w") as out:
            subprocess.run([args.build / "bin" / "fuzz_dictionary", target], stdout=out, check=True)
        words.append(f"-dict={dictionary}")
    return words + [corpus, seeds]


def figures(log):
    number = {name: int(value) for name, value in re.findall(r"stat::(\w+):\s+(\d+)", log)}
    covered = re.findall(r" cov: (\d+) ft: (\d+) corp: (\d+)", log)
    edges, features, kept = covered[-1] if covered else ("?", "?", "?")
    return (f"{number.get('number_of_executed_units', 0):>9} executions, "
            f"{number.get('average_exec_per_sec', 0):>5} per second, {edges} edges, "
            f"{features} features, {kept} inputs, peak {number.get('peak_rss_mb', 0)} MiB")


def run(args, target):
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="cus-fuzz-", dir=memory) as folder:
        scratch = pathlib.Path(folder)
        environment = {**os.environ, "TMPDIR": folder,
                       "UBSAN_OPTIONS": "print_stacktrace=1", "ASAN_OPTIONS": "detect_leaks=1"}
        done = subprocess.run(command(args, target, scratch), env=environment, text=True,
                              errors="replace", stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    (args.build / f"fuzz_{target}.log").write_text(done.stderr)
    return target, done


def main():
    args = options()
    args.build = args.build.resolve()
    print(f"seed {args.seed}, {args.seconds} s for each of {' '.join(args.targets)}", flush=True)
    lines, failed = [], False
    with concurrent.futures.ThreadPoolExecutor(args.jobs) as pool:
        for target, done in pool.map(lambda name: run(args, name), args.targets):
            lines.append(f"fuzz {target:<8} {figures(done.stderr)}")
            if done.returncode != 0:
                failed = True
                print(f"{target}: finding\n{done.stderr[-6000:]}")
    print(f"fuzzers, seed {args.seed}, {args.seconds} s each:")
    print("\n".join(lines))
    sys.exit(1 if failed else 0)


main()
