"""Everything that the page does on several threads, all at once and for a while.

Usage: threads_test.py CUSDESK SECONDS

Clicks, page turns, pictures, documents, dropped jobs, pages that open and close, and a job file that
changes. Each answer must
be one of those foreseen, the end must come in time, and nothing may be written to standard error:
`make threads` runs this on a cusdesk that reports data races there.
"""

import concurrent.futures
import itertools
import json
import pathlib
import sys
import tempfile
import time

from live_panel import LivePanel

SECONDS = float(sys.argv[1])  # the program is taken off by then
PIECE = {"PieceNumber": 1, "BarCode": "X", "cut": {"Length": "100", "sxB": "45", "dxB": "90"}, "work": []}


def write_job(file, pieces):
    bar = {"BarNumber": 1, "length": 6500, "piece": [PIECE] * pieces}
    part = file.with_suffix(".part")
    part.write_text(json.dumps({"success": True, "Version": "1.0", "Bar": [bar]}))
    part.rename(file)


def click(panel, count):
    assert panel.act("/click", f"x=9&y={count * 37 % 480}") in (204, 503)


def turn(panel, count):
    assert panel.act("/page", "turn=" + ("up", "down")[count % 2]) in (204, 503)


def draw(panel, _):
    status, _, picture = panel.request("GET", "/picture.svg")
    assert status == 200 and picture.endswith("</svg>\n"), picture[-80:]


def read(panel, count):
    what = ("summary", "drawing", "findings", "table?name=cuts&sort=Length", "nothing")[count % 5]
    assert panel.request("GET", "/job/0/" + what)[0] in (200, 404, 503)


def drop(panel, count):
    assert panel.drop("job.json", '{"Version": "1.0", "Bar": []}' + "!" * (count % 2))[0] in (200, 503)


def watch(panel, count):
    with panel.events() as events:
        if events.answer.status == 503:
            return
        for _ in range(1 + count % 3):
            events.next()


def main():
    with tempfile.TemporaryDirectory() as folder:
        job = pathlib.Path(folder) / "job.json"
        write_job(job, 30)
        with LivePanel("--job", str(job)) as panel:
            panel.view()  # from then on there is a picture
            end = time.monotonic() + SECONDS

            def change(_, count):
                write_job(job, count % 60)
                time.sleep(0.1)

            def repeat(action):
                for count in itertools.count():
                    if count > 0 and time.monotonic() > end:
                        return count
                    action(panel, count)

            actions = [click, turn, draw, read, drop, watch, change]
            with concurrent.futures.ThreadPoolExecutor(len(actions)) as pool:
                counts = list(pool.map(repeat, actions))
            code, errors = panel.end()
    assert (code, errors) == (0, ""), (code, errors[-4000:])
    done = ", ".join(f"{count} {action.__name__}" for count, action in zip(counts, actions))
    print(f"threads: {SECONDS:g} s, {done}")


main()
