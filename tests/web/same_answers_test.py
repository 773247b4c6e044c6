"""The desk for browsers answers to the byte what the desk for PCs answers.

    same_answers_test.py WEB_CUSDESK CUSDESK EXAMPLES INPUTS      INPUTS: jobs that fuzzing kept

Jobs are the shipped ones, the kept ones, and 200 with odd values and gaps, the same each time.
"""

import concurrent.futures
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

PROGRAMS = sys.argv[1:3]
EXAMPLES, INPUTS = (pathlib.Path(folder).resolve() for folder in sys.argv[3:5])
VALUE = re.compile(r'(?<=: )("[^"\n]*"|-?[\d.]+|true|false)|(?<=>)[^<>\n]+(?=<)|(?<==)"[^"\n]*"')
ODD = ['""', "0", "-7", '"12,5"', '" 9 "', "1e400", "-1e999", '"1e-310"', "4.9e-324", "1e-400",
       '"5e-324"', "2.2250738585072011e-308", '"0x1p-1070"', "2147483648", '"99999999999999999999"',
       '"nan"', '"-inf"', '"abc"', "null", "[]", "{}", "true", '"中文 ß"', '"\\u0007\\ud83d\\ude00"',
       '"a&amp;b"', "&#x4e2d;", "&#0;", "1.", "0.1e", '"45.0000000000000000000001"']
COMMANDS = (("show", "cuts", "--where", "--format", "json"), ("show", "works", "--where"),
            ("draw", "-o", "-"))


def odd_variant(text, chance):
    """The job with some values replaced and, at times, lines or an end missing."""
    values = list(VALUE.finditer(text))
    wanted = set(chance.sample(range(len(values)), min(len(values), chance.randint(1, 12))))
    numbers = iter(range(len(values)))
    text = VALUE.sub(lambda found: chance.choice(ODD) if next(numbers) in wanted else found[0], text)
    lines = text.splitlines(keepends=True)
    for _ in range(chance.choice([0, 0, 1, 2])):
        del lines[chance.randrange(len(lines))]
    return "".join(lines)[:chance.choice([None, None, None, None, -9])]


def write_jobs(folder):
    chance = random.Random(1)
    shipped = sorted(path for path in EXAMPLES.rglob("*") if path.suffix in (".json", ".xml"))
    kept = sorted(path for path in INPUTS.glob("*/jobs/*") if path.suffix in (".json", ".xml"))
    for number, path in enumerate(shipped + kept):
        (folder / f"{number}-{path.name}").write_bytes(path.read_bytes())
    for ending in (".json", ".xml"):
        base = [path.read_text() for path in shipped if path.suffix == ending]
        for number in range(100):
            (folder / f"odd-{number}{ending}").write_text(odd_variant(chance.choice(base), chance))
    return sorted(path.name for path in folder.iterdir())


def difference(words, folder):
    """Where the answers to a command line differ; empty where they are the same."""
    answers = [subprocess.run([program, "--root", EXAMPLES, *words], cwd=folder, timeout=250,
                              stdin=subprocess.DEVNULL, capture_output=True, check=False)
               for program in PROGRAMS]
    web, pc = ([f"exit {answer.returncode}".encode()] + answer.stdout.split(b"\n") +
               answer.stderr.split(b"\n") for answer in answers)
    if web == pc:
        return ""
    lines = [f"\n  browser: {here}\n  PC:      {there}" for here, there in zip(web, pc)
             if here != there]
    return f"{' '.join(words)}: {len(web)} and {len(pc)} lines{''.join(lines[:2])}"


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name).resolve()
        jobs = write_jobs(folder)
        lines = [("check", "--all", "--format", form, *jobs) for form in ("text", "json", "sarif")]
        lines += [("check", *jobs), ("panel", "--svg", "-", "--page", "2", "--click", "400,200")]
        lines += [(*words, job) if words[0] == "draw" else (words[0], job, *words[1:])
                  for words in COMMANDS for job in jobs]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            found = list(filter(None, pool.map(lambda words: difference(words, folder), lines)))
    print(f"{len(lines)} command lines over {len(jobs)} jobs, {len(found)} answers differ")
    sys.exit("\n".join(found[:20]) or 0)


if __name__ == "__main__":
    main()
