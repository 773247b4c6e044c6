"""What a page gets for a job is what the commands write.

Usage: view_test.py CUSDESK VIEW_DOCUMENTS
"""

import json
import pathlib
import subprocess
import sys
import unittest

from cusdesk import Folder

DOCUMENTS = sys.argv.pop(1)
JOBS = sorted((pathlib.Path(__file__).parents[3] / "examples/mnt").glob("**/window.*"))
TABLES = ("bars", "cuts", "works", "labels", "holes")

ODD = r"""{"Version": "1.0", "Bar": [
 {"BarNumber": 1, "BarName": "ÄST", "MaxY": 60, "MaxZ": 70, "piece": [
  {"BarCode": "P-9", "cut": {"Length": "10"}, "work": [{"Name": "drill"}, {"Name": "<b>#\u0001"}]},
  {"BarCode": "P-11", "cut": {"Length": "9.5"}}]},
 {"BarNumber": 2, "BarName": "a\u0000b", "piece": [
  {"BarCode": "", "cut": {"Length": "x"}, "work": [{"Name": "drill"}]},
  {"BarCode": "P-9", "cut": {"Length": "10"}}]}]}""".encode().replace(b"#", b"\xff")

ROWS = [  # (question, ids, how many rows pass the filter, where the element is found)
    ("name=pieces&sort=length", ["1.2", "1.1", "2.2", "2.1"], 4, None),
    ("name=pieces&sort=length&order=down", ["2.1", "1.1", "2.2", "1.2"], 4, None),
    ("name=pieces&sort=barcode", ["1.1", "2.2", "1.2", "2.1"], 4, None),
    ("name=pieces&sort=barcode&order=down", ["1.2", "1.1", "2.2", "2.1"], 4, None),
    ("name=cuts&filter=äst&from=1&count=5", ["1.2"], 2, None),
    ("name=cuts&filter=p-9&from=7", [], 2, None),
    ("name=works&id=1.1&from=1", ["1.1.2"], 2, None),
    ("name=works&find=1", ["1.1.1", "1.1.2", "2.1.1"], 3, 0),
    ("name=works&order=down&sort=Name&find=2.1", ["1.1.1", "2.1.1", "1.1.2"], 3, 1),
    ("name=bars&find=2.1.1", ["1", "2"], 2, 1),
    ("name=labels&find=3", ["1.1", "1.2", "2.1", "2.2"], 4, None),
    ("name=holes&filter=RILL", ["1.1.1"], 1, None)]

BROKEN = {
    "place.json": '{"Version": "1.0",\n "Bär": [}', "version.json": '{"Version": "2"}',
    "tag.xml": "<job>\n<Bar></job>", "empty.xml": "",
    "raises.xml": "<Job><Version>1.0</Version><Bar><Piece><CtrsZ/></Piece></Bar></Job>"}


def ask(file, *questions, folder):
    """Whether the job loads and why not, and the answers: each its status and body."""
    answer = subprocess.run([DOCUMENTS, file, *questions], capture_output=True, timeout=120,
                            check=True, encoding="utf-8", cwd=folder)
    return [json.loads(line) for line in answer.stdout.splitlines()]


def documents(file, *questions, folder):
    """The answers that are JSON."""
    return [json.loads(body) for _, body in ask(file, *questions, folder=folder)[1:]]


class View(Folder):

    def test_documents_are_what_the_commands_write(self):
        for job in JOBS:
            self.folder = job.parent
            with self.subTest(job=job.name):
                def written(*words, file=job.name):
                    return self.run_here(words[0], file, *words[1:]).stdout
                answers = ask(job.name, "summary", "cuts", "drawing", folder=job.parent)[1:]
                self.assertEqual([body for _, body in answers],
                                 [written("show", "--format", "json"),
                                  written("show", "cuts", "--format", "html"),
                                  written("draw", "-o", "-")])
                for table in TABLES:
                    rows = json.loads(written("show", table, "--where", "--format", "json"))
                    for value in (value for row in rows for value in row.values()):
                        value["value"] = str(value["value"])
                    [got] = documents(job.name, f"table?name={table}", folder=job.parent)
                    keys = [column["name"] for column in got["columns"]]
                    self.assertEqual(rows, [
                        {key: {"value": cell, **(origin or {})}
                         for key, cell, origin in zip(keys, cells, origins)}
                        for cells, origins in zip(got["cells"], got["origins"])])
                pieces = json.loads(written("show", "pieces", "--format", "json"))
                [table] = documents(job.name, "table?name=pieces", folder=job.parent)
                got = documents(job.name, *(f"piece?id={one}" for one in table["ids"]),
                                folder=job.parent)
                self.assertEqual(pieces, [{key: page[key] for key in piece}
                                          for piece, page in zip(pieces, got)])
                found = json.loads(written("check", "--format", "json"))
                [got] = documents(job.name, "findings", folder=job.parent)
                for one in got["findings"]:
                    del one["ids"], one["excerpt"]
                self.assertEqual(found, {key: got[key] for key in found})

    def test_windows_of_sorted_and_filtered_rows(self):
        self.write("job.json", ODD)
        answers = documents("job.json", *("table?" + case[0] for case in ROWS), folder=self.folder)
        self.assertEqual(ROWS, [(case[0], got["ids"], got["rows"], got.get("found"))
                                for case, got in zip(ROWS, answers)])
        [got] = documents("job.json", "findings?severity=error&find=2.1", folder=self.folder)
        ids = [one["ids"] for one in got["findings"]]
        self.assertEqual(["2.1"], [each for one in ids[:got["found"] + 1] for each in one
                                   if each.startswith("2.1")])

    def test_hostile_texts_are_texts_and_wrong_questions_are_refused(self):
        self.write("job.json", ODD)
        _, works, cuts, piece, *refused = ask(
            "job.json", "table?name=works&from=1&count=1", "table?name=cuts&from=2&count=1",
            "piece?id=1.1",
            "table?name=cuts&sort=no", "table?name=cuts&from=-1", "piece?id=1.9", "piece?id=1.0",
            "findings?id=1.2.3.4", "bar?group=9", "no", folder=self.folder)
        self.assertEqual("<b>\\xff\\x01", json.loads(works[1])["cells"][0][1])
        self.assertEqual("a", json.loads(cuts[1])["cells"][0][8])
        self.assertEqual("<b>\ufffd\\x01", json.loads(piece[1])["works"][1]["Name"])
        self.assertEqual([400, 400, 404, 400, 400, 404, 404], [status for status, _ in refused])

    def test_a_piece_within_a_line_is_shown_to_its_last_word(self):
        self.write("job.json", ODD)
        [piece] = documents("job.json", "piece?id=1.2", folder=self.folder)
        part = "source?line={line}&column={column}&until={lastColumn}&count=1".format(**piece)
        [got] = documents("job.json", part, folder=self.folder)
        self.assertEqual(['…{"BarCode": "P-11", "cut": {"Length": "9.5"…'], got["lines"])

    def test_a_query_that_raises_says_so_as_show_does(self):
        self.write("job.json", '{"Version": "1.0", "Bar": [{"piece": [{"work": [{}]}]}]}')
        for table in ("bars", "holes"):
            [got] = documents("job.json", f"table?name={table}", folder=self.folder)
            self.refused(1, got["raises"], "show", "job.json", table)

    def test_what_does_not_load_tells_why_as_the_commands_do(self):
        for name, text in BROKEN.items():
            with self.subTest(job=name):
                self.write(name, text)
                (loads, reason, line, column), summary, findings = ask(
                    name, "summary", "findings", folder=self.folder)
                self.assertEqual((False, [404, reason]), (loads, summary))
                for table in ([], ["cuts"]):  # read by the desk, and by the plug-in
                    self.refused(3, reason, "show", name, *table)
                self.assertGreater(json.loads(findings[1])["summary"]["errors"], 0)
                place = f":{line}:{column}:".replace(":0", "")
                self.assertIn(f"cannot load {name}{place} ", reason)


if __name__ == "__main__":
    unittest.main()
