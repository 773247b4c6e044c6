"""cusdesk show as people and spreadsheets meet it.

Usage: show_command_test.py CUSDESK
"""

import csv
import io
import json
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

from cusdesk import Folder

JOB = """{"Version": "1.0", "Bar": [
 {"BarNumber": 1, "MaxY": 60, "MaxZ": 70, "length": 6000, "BarName": "\u7a93, \\"A\\"\\n", "piece": [
  {"PieceNumber": 1, "BarCode": "A", "cut": {"Length": "900", "sxB": "45", "dxB": "135"},
   "work": [{"Name": "2 way", "PositionX": 0.1}]},
  {"PieceNumber": 2, "BarCode": "B",
   "work": [{"PositionX": 1e300}]}]},
 {"BarNumber": 2}]}
"""


BIG = {"Version": "1.0", "Name": "B", "Bar": [
    {"BarNumber": n, "DXF_Name": "P1", "BarColor": "white", "MaxY": 60, "length": 6000,
     "BarLeftLength": left, "piece": [{"PieceNumber": i, "cut": {"Length": one}} for i, one in enumerate(length.split(), 1)]}
    for n, length, left in [(1, "5500", 499), (2, "5500", 1e3), (3, "6500", 0), (4, "nan", 9999),
                            (5, "900mm", 9999), (6, "0x10 900", 9999)]]}
SUMMARY = """\
file      job  bars  without yield  pieces  works  yield   errors  warnings  notes
--------  ---  ----  -------------  ------  -----  ------  ------  --------  -----
job.json          2              0       2      2  15.0 %       {}         {}      {}
big.json  B       6              4       7      0  91.7 %       {}         {}      {}

Together
  files           2
  bars            8
  without yield   4
  pieces          9
  cuts            9
  different cuts  7
  works           2
  length          24000
  used            12800
  kept            10700
  wasted          500
  yield           53.3 %
  errors          {}
  warnings        {}
  notes           {}

Stock to fetch

profile  name       colour  length  bars
-------  ---------  ------  ------  ----
         \u7a93, "A"\\n            6000     2
P1                  white     6000     6

Use of the stock

profile  name       colour  bars  without yield  length   used   kept  wasted  yield
-------  ---------  ------  ----  -------------  ------  -----  -----  ------  ------
         \u7a93, "A"\\n             2              0   12000   1800  10200       0  15.0 %
P1                  white      6              4   12000  11000    500     500  91.7 %

Leftovers from 500 on

file      bar  profile  name       colour  length
--------  ---  -------  ---------  ------  ------
job.json    1           \u7a93, "A"\\n            4200
job.json    2           \u7a93, "A"\\n            6000
big.json    2  P1                  white      500
"""


class Show(Folder):
    def setUp(self):
        super().setUp()
        self.write("job.json", JOB)

    def show(self, *words, code=0):
        done = self.run_here("show", *words, code=code, encoding=None)
        return done.stdout.decode(), done.stderr.decode()

    def test_where_tells_the_line_of_each_value_and_marks_carried_ones(self):
        self.assertEqual(self.show("job.json", "works", "--where")[0], """\
BarCode  Name         PositionX  PositionY  PositionZ    MaxY    MaxZ  Cut_Length
-------  ----------  ----------  ---------  ---------  ------  ------  ----------
A (3)    2 way (4)      0.1 (4)          0          0  60 (2)  70 (2)     900 (3)
B (5)    2 way (4*)  1e+300 (6)          0          0  60 (2)  70 (2)    900 (3*)

(line)  * carried over from an earlier element
""")
        rows = json.loads(self.show("job.json", "cuts", "--format", "json", "--where")[0])
        self.assertEqual(rows[0]["SxB"]["column"], 70)
        self.assertEqual(rows[1]["DxB"], {"value": "45", "line": 3, "column": 83, "carried": True,
                                          "element": "piece 1 of bar 1"})
        self.assertEqual(rows[1]["CutNumBer"], {"value": "2"})

    def test_where_tells_what_another_element_gives(self):
        self.write("two.json", '{"Version": "1.0", "Bar": ['
                   '{"BarNumber": 1, "MaxY": 60, "piece": [{"BarCode": "A", "work": [{}]}]},\n'
                   '{"BarNumber": 2, "MaxY": 61, "piece": [{"BarCode": "A", "work": [{}]}]}]}')
        for subject, key, line in [("cuts", "MaterialCount", 2), ("works", "MaxY", 1)]:
            rows = json.loads(self.show("two.json", subject, "--format", "json", "--where")[0])
            self.assertEqual([row[key]["line"] for row in rows], [line, line])
        rows = csv.reader(self.show("job.json", "works", "--format", "csv", "--where")[0].splitlines())
        self.assertEqual([row.count("yes") for row in rows], [0, 0, 2])

    def test_csv_reads_back_as_it_was(self):
        text, _ = self.show("--format", "csv", "job.json", "bars")
        self.assertEqual(text.count("\r\n"), 2)
        self.assertEqual(list(csv.DictReader(io.StringIO(text, newline=""))), [
            {"BarNumber": "1", "BarName": "\u7a93, \"A\"\n", "Length": "6000", "CutNumBer": "2",
             "sProfileName": "", "sColor": "", "sLengthProduct": ""}])
        # Rows that start with empty values, among them.
        for subject in ("cuts", "labels"):
            rows = csv.DictReader(io.StringIO(
                self.show("--format", "csv", "job.json", subject)[0], newline=""))
            self.assertEqual(list(rows), json.loads(
                self.show("--format", "json", "job.json", subject)[0]), subject)

    def test_jobs_are_summed_up(self):
        self.write("big.json", json.dumps(BIG))
        counts = [json.loads(self.run_here("check", "--format=json", *files).stdout)["summary"]
                  for files in (["job.json"], ["big.json"], ["job.json", "big.json"])]
        self.assertEqual(self.show("job.json", "big.json")[0], SUMMARY.format(
            *(one[kind] for one in counts for kind in ("errors", "warnings", "notes"))))
        summary = json.loads(self.show("big.json", "--keep-from=501", "--format=json")[0])
        self.assertEqual((summary["keepFrom"], summary["leftovers"]), (501, []))
        self.assertEqual(summary["total"]["yield"], 91.7)
        self.write("names.json", json.dumps({"Version": "1.0", "Bar": [
            {"BarNumber": 1, "DXF_Name": name, "piece": []} for name in ("P65-11", "P65-9")]}))
        names = json.loads(self.show("names.json", "--format=json")[0])
        self.assertEqual([row["profile"] for row in names["stock"]], ["P65-9", "P65-11"])
        rows = list(csv.DictReader(io.StringIO(self.show("big.json", "--format=csv")[0])))
        self.assertEqual([(row["table"], row["length"]) for row in rows], [
            ("jobs", ""), ("total", "12000"), ("stock", "6000"), ("material", "12000"),
            ("leftovers", "500")])
        self.assertEqual([piece["from"] for piece in json.loads(
            self.show("big.json", "pieces", "--format=json")[0])], [0, 0, 0, 0, 0, 0, ""])

    def test_cut_list_has_lengths_as_they_stand(self):
        self.write("big.json", json.dumps(BIG))
        page = ElementTree.fromstring(self.show("big.json", "cuts", "--format", "html")[0])
        self.assertRegex(page.find(".//p[@class='remark']").text, "errors found by cusdesk check big.json")
        self.assertEqual(["".join(cell.itertext()) for cell in page.findall(".//td[@class='length odd']")],
                         [text + "no plain length" for text in ("nan", "900mm", "0x10")])

    def test_cut_list_has_barcodes_that_a_scanner_reads(self):
        odd = ["A", "".join(map(chr, range(32, 55))), "~}|{zyx" * 3, "DEMO-0101", "\u7a93<&>\"'",
               "</td>", "x" * 26, "", "a\nb"]
        pieces = [{"PieceNumber": n, "BarCode": code, "cut": {"Length": "9", "sxB": "30", "dxB": "x<"}}
                  for n, code in enumerate(odd, 1)]
        self.write("odd.json", json.dumps({"Version": "1.0", "Name": "<b>", "Bar": [
            {"BarNumber": 1, "length": 80, "piece": pieces}]}))
        page = ElementTree.fromstring(self.show("odd.json", "cuts", "--format", "html")[0])
        self.assertEqual([page.find(".//h1").text, page.find(".//*[@class='sum']").text],
                         ["<b>", "80 long  ·  9 pieces, together 81 long"])
        cells = page.findall(".//tbody//td[@class='code']")
        self.assertEqual(["".join(cell.itertext()) for cell in cells],
                         [code.replace("\n", " ") for code in odd])
        read = []
        for cell in cells:
            for picture in cell:
                picture.tail = None
                self.write("code.svg", ElementTree.tostring(picture))
                subprocess.run(["rsvg-convert", "-b", "white", "-o", "code.png", "code.svg"],
                               cwd=self.folder, check=True)
                read.append(subprocess.run(
                    ["zbarimg", "--nodbus", "-q", "--raw", "code.png"], cwd=self.folder,
                    capture_output=True, text=True, check=False).stdout[:-1])
        self.assertEqual(read, [code for code in odd[:6] if code.isascii()])

    def test_json_keeps_numbers(self):
        rows = json.loads(self.show("job.json", "works", "--format=json")[0])
        self.assertEqual([row["PositionX"] for row in rows], [0.1, 1e300])
        self.assertIn('"PositionX": 0.1,', self.show("job.json", "works", "--format=json")[0])

    def test_questions_narrow_the_answer(self):
        for words, count, remark in [
                (["works", "--barcode", "B"], 1, ""), (["works", "--bar", "1"], 2, ""),
                (["works", "--bar", "1", "--barcode", "B", "--where"], 1, ""),
                (["cuts", "--bar", "1"], 2, "get_cut(\"1\") leaves BarCode empty"),
                (["cuts", "--bar", "1", "--barcode", "B"], 1, ""), (["cuts", "--bar", "2"], 0, ""),
                (["bars", "--bar", "1"], 1, ""), (["bars", "--barcode", "B"], 1, ""),
                (["bars", "--bar", "2"], 0, ""), (["holes"], 1, ""),
                (["labels"], 2, ""), (["labels", "--barcode", "A"], 1, ""),
                (["dimensions", "--barcode", "B"], 1, ""),
                (["dimensions", "--barcode", "A"], 0, "get_Dimensions answers only for the piece")]:
            rows, error = self.show("job.json", *words, "--format", "json")
            self.assertEqual((len(json.loads(rows)), error[:14]),
                             (count, remark and "cusdesk: as on"), words)
            self.assertIn(remark, error)

    def test_pieces_have_their_places(self):
        text = self.show("job.json", "pieces")[0]
        self.assertEqual(text, """\
bar  place  piece  from  length  left  right  barcode  works                         label  line
---  -----  -----  ----  ------  ----  -----  -------  ----------------------------  -----  ----
  1      1      1     0     900    45     45  A        2 way (side 0: 0.1, 0, 0)               3
  1      2      2   900     900    45     45  B        2 way (side 0: 1e+300, 0, 0)            5
""")
        self.assertEqual(self.show("job.json", "pieces", "--barcode", "B")[0].splitlines()[8],
                         "  work 1   2 way (side 0: 1e+300, 0, 0)")
        piece, = json.loads(self.show("job.json", "pieces", "--barcode=A", "--format=json")[0])
        self.assertEqual((piece["from"], piece["works"], piece["label"]["Field19"]), (0, [
            {"Name": "2 way", "ProfiLav": 0, "PositionX": 0.1, "PositionY": 0, "PositionZ": 0}], ""))

    def test_what_cannot_be_shown_is_told(self):
        for name, text in [("bad.json", "{"), ("none.json", "{}"),
                           ("raises.json", '{"Version":"1.0","Bar":[{"piece":[{}]}]}'),
                           ("length.json", '{"Version":"1.0","Bar":[{"MaxY":1,"MaxZ":1,"piece":[{"cut":{\n"Length": "x"},'
                                           '"work":[{}]}]}]}')]:
            self.write(name, text)
        for words, code, part in [
            (["job.json", "bad.json", "cuts"], 2, "A table is one file's"),
            (["job.json", "hole"], 2, "'hole' is neither a file nor a table; did you mean 'holes'?"),
            (["cuts", "job.json"], 2, "'cuts' stands behind the file"),
            (["job.json", "--keep-from", "5O0"], 2, "--keep-from is a length, not '5O0'"),
            (["job.json", "dimensions"], 2, "dimensions need a --barcode"),
            (["job.json", "holes", "--bar", "1"], 2, "--bar is not for holes"),
            (["job.json", "bars", "--format", "html"], 2, "--format is one of text, json, csv, not 'html'"),
            (["job.json", "pieces", "--where"], 2, "--where is not for pieces, which tell"),
            (["job.json", "--bar", "1"], 2, "--bar is not for a summary; name a table too"),
            (["job.json", "cuts", "--bar", "99"], 3, "show: the job has no bar 99"),
            (["job.json", "pieces", "--bar", "2", "--barcode", "A"], 3,
             "show: bar 2 has no piece with barcode A"),
            (["job.json", "works", "--barcode", "X"], 3, "the job has no piece with barcode X"),
            (["raises.json", "bars"], 1,
             'show: get_cut: stoi; raises.json:1:25: bar 1 has no "BarNumber": get_cut("") raises "stoi"'),
            (["length.json", "holes"], 1, 'show: get_hole: stod; length.json:2:11: piece 1 of bar 1: "Length" is'),
        ]:
            output, error = self.show(*words, code=code)
            self.assertEqual(output, "")
            self.assertIn(part, error)

    def test_plugin_s_lines_keep_out_of_the_answer(self):
        self.assertEqual(self.show("job.json", "cuts")[1], "")
        output, error = self.show("job.json", "cuts", "-v")
        self.assertNotIn("The string ends", output)
        self.assertIn("The string ends with .json\n", error)

    def test_table_fits_a_narrow_terminal(self):
        for columns, environment in [(70, {}), (20, {"COLUMNS": "60"})]:
            lines = self.on_terminal("show", "job.json", "bars", columns=columns, **environment).splitlines()
            self.assertEqual(len(lines), 3)
            for line in lines:
                self.assertLessEqual(len(line.replace("\u7a93", "xx")), columns if columns > 20 else 60)
            self.assertIn("…", lines[0])
        text = self.on_terminal("show", "job.json", "pieces", columns=30)
        self.assertIn("  works    2 way (side 0: 0.1,\n           0, 0)\n", text)

    def test_each_value_has_a_line_where_the_terminal_is_too_narrow_for_a_table(self):
        self.assertEqual(self.on_terminal("show", "job.json", "bars", "--where", columns=40), """\
row 1
  BarNumber       1 (2)
  BarName         \u7a93, "A"\\n (2)
  Length          6000 (2)
  CutNumBer       2
  sProfileName
  sColor
  sLengthProduct

(line)
""")

    def test_a_cut_value_keeps_its_line(self):
        self.write("job.json", JOB.replace("2 way", "d" * 60))
        text = self.on_terminal("show", "job.json", "works", "--where", columns=110)
        self.assertIn("ddd… (4)", text)
        self.assertIn("dd… (4*)", text)

    def test_work_tells_that_it_goes_on(self):
        text = self.on_terminal("show", "job.json", "works", "--where", CUSDESK_PROGRESS_AFTER="0")
        self.assertRegex(text, r"^\r(\d+ s: )?loading job\.json\x1b\[K")
        self.assertNotIn("loading", text.split("\r\x1b[K")[-1])


unittest.main()
