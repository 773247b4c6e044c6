"""What a page gets for a job is what the commands write.

Usage: view_test.py CUSDESK VIEW_DOCUMENTS
"""

import json
import pathlib
import subprocess
import sys
import unittest

from cusdesk import Folder, run

DOCUMENTS = sys.argv.pop(1)
JOBS = sorted((pathlib.Path(__file__).parents[3] / "examples/mnt").glob("**/window.*"))
TABLES = ("bars", "cuts", "works", "labels", "holes")


def ask(file, *questions, **options):
    """Whether the job loads and why not, and the answers: each its status and body."""
    answer = subprocess.run([DOCUMENTS, file, *questions], capture_output=True, timeout=120,
                            check=True, encoding="utf-8", **options)
    return [json.loads(line) for line in answer.stdout.splitlines()]


def documents(file, *questions, **options):
    """The same, of answers that are JSON."""
    return [json.loads(body) for _, body in ask(file, *questions, **options)[1:]]


class Documents(unittest.TestCase):

    def test_are_what_the_commands_write(self):
        for job in JOBS:
            with self.subTest(job=job.name):
                def written(*words):
                    return run(*words, cwd=job.parent).stdout
                name = job.name
                _, *answers = ask(name, "summary", "cuts", "drawing", cwd=job.parent)
                self.assertEqual([body for _, body in answers],
                                 [written("show", name, "--format", "json"),
                                  written("show", name, "cuts", "--format", "html"),
                                  written("draw", name, "-o", "-")])
                for table in TABLES:
                    rows = json.loads(written("show", name, table, "--where", "--format", "json"))
                    [got] = documents(name, f"table?name={table}", cwd=job.parent)
                    keys = [column["name"] for column in got["columns"]]
                    for row in rows:
                        for value in row.values():
                            value["value"] = str(value["value"])
                    self.assertEqual(
                        [{key: {"value": cell, **(origin or {})}
                          for key, cell, origin in zip(keys, cells, origins)}
                         for cells, origins in zip(got["cells"], got["origins"])], rows)
                pieces = json.loads(written("show", name, "pieces", "--format", "json"))
                [got] = documents(name, "table?name=pieces", cwd=job.parent)
                self.assertEqual(len(pieces), len(got["ids"]))
                pages = documents(name, *(f"piece?id={one}" for one in got["ids"]), cwd=job.parent)
                for piece, page in zip(pieces, pages):
                    self.assertEqual(piece, {key: page[key] for key in piece})
                check = json.loads(written("check", name, "--format", "json"))
                [got] = documents(name, "findings", cwd=job.parent)
                self.assertEqual([one["message"] for one in check["findings"]],
                                 [one["message"] for one in got["findings"]])
                self.assertEqual(check["summary"], got["summary"])


if __name__ == "__main__":
    unittest.main()
