"""`cusdesk draw` from the command line: whole pictures, whole summaries, pages, odd jobs.

Usage: draw_command_test.py CUSDESK      UPDATE_EXPECTED=1 in the environment rewrites the picture
"""

import json
import os
import pathlib
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

from cusdesk import CUSDESK, Folder

EXPECTED = pathlib.Path(__file__).with_name("expected")
SVG = "{http://www.w3.org/2000/svg}"


def piece(number, length, left="90", right="90", works=(), **more):
    return {"PieceNumber": number, "BarCode": f"A-{number}", **more,
            "cut": {"Length": length, "sxB": left, "dxB": right},
            "work": [{"Name": name, "ProfiLav": side[0] if side else 1, "PositionX": x,
                      "PositionY": y, "PositionZ": 5.0} for name, x, y, *side in works]}


def bar(number, length, *pieces, **more):
    return {"BarNumber": number, "MaxY": 65, "length": length, "BarName": "外框",
            "BarLeftLength": 100, "piece": pieces, **more}


MITRES = [bar(1, 6500,
              piece(1, "1200", "45", "135", [("销孔", 28.0, 32.5), ("槽", 600.0, 10.0)]),
              piece(2, "1300.5", "135", "45", [("槽", 650.0, 10.0)]),
              piece(3, "900", "90", "60"), piece(4, "800", "30", "150"))]
LOCK = [("锁", 600.0, 32.5, 3), ("螺", 590.0, 32.5, 3), ("螺", 610.0, 32.5, 3), ("槽", 0.0, 0.0, 1),
        ("怪", 30.0, 9.0, 99), ("?", 31.0, 9.0, 1.5)]
KINDS = MITRES + [
    bar(2, 6500, piece(1, "1200", works=LOCK)), bar(3, 6500, piece(1, "1200", works=LOCK, BarCode="B")),
    bar(4, 1000000, *[piece(n, "12") for n in range(1, 5)], piece(5, "40"), piece(6, "65", "45", "45"),
        piece(7, "60", "30", "150"), BarLeftLength=""),
    bar(5, 0, piece(1, ""), piece(2, "900")),
    bar(6, 1000000, piece(1, "990000"), piece(2, "500"))]
ODD = [
    bar(1, 6500),
    bar(2, 2000, piece(1, "900"), piece(2, "900"), piece(3, "300")),
    bar(3, 6500, piece(1, "abc"), piece(2, "900mm", "left"), piece(3, "100", "45", "45"),
        piece(4, "500", works=[("远", 900.0, 10.0)], BarCode="\u0001]]>\u0000<&\"长" * 9)),
    bar(4, 6500, *[piece(n, "40", works=[(f"w{n}", 20.0, 9.0)]) for n in range(100)],
        BarName="<型材>\n" * 5),
]
ODD_SUMMARY = """\
bar  profile                                   pieces  length  used  left  stated  yield
---  ----------------------------------------  ------  ------  ----  ----  ------  ------
  1  外框                                           0    6500     0  6500     100  0.0 %
  2  外框                                           3    2000  2100  -100     100
  3  外框                                           4    6500                 100
  4  <型材>\\n<型材>\\n<型材>\\n<型材>\\n<型材>\\n     100    6500  4000  2500     100  61.5 %

error: bar 2: its 3 pieces are 2100 long together, the bar 2000 [does-not-fit]
error: bar 3, piece 1: "Length" is "abc", no number; left out [not-a-number]
warning: bar 3, piece 2: "Length" is "900mm"; some read 900, tonumber gives nil [not-a-number]
error: bar 3, piece 2: "sxB" is "left", no number; drawn square [not-a-number]
error: bar 3, piece 3: "Length" is 100, but its angles take 130 at a width of 65; drawn cut off [angle]
error: bar 3, piece 4, work 1 ("远"): "PositionX" is 900, the piece 500 long; left out [work-beside-piece]
4 bars, 107 pieces, yield 30.8 %
"""


class Draw(Folder):
    def run_draw(self, *words):
        return self.run_here("draw", *words)

    def job(self, bars, name="job.json", **header):
        text = json.dumps({"Version": "1.0", "Name": "试 <&> 样", "Bar": bars, **header})
        self.write(name, text)
        return name

    def draw(self, *words):
        answer = self.run_draw(*words, "-o", "-")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        return answer.stdout

    def test_bars_of_all_kinds_are_the_picture_that_was_looked_at(self):
        self.run_draw(self.job(KINDS), "-q", "-o", "kinds.svg")
        svg = (self.folder / "kinds.svg").read_text(encoding="utf-8")
        expected = EXPECTED / "kinds.svg"
        if os.environ.get("UPDATE_EXPECTED"):
            expected.write_text(svg, encoding="utf-8")
        self.assertEqual(svg, expected.read_text(encoding="utf-8"))

    def test_odd_jobs_are_well_formed_the_same_each_time_and_summed_up(self):
        name = self.job(ODD)
        answer = self.run_draw(name, "-o", "odd.svg")
        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "cusdesk: draw: 1 piece and 1 work left out of the picture\n"))
        self.assertEqual(answer.stdout, ODD_SUMMARY)
        svg = (self.folder / "odd.svg").read_text(encoding="utf-8")
        done = self.run_draw(name, "-o", "-")
        self.assertEqual((done.returncode, done.stdout), (1, svg))
        self.assertIn("; cusdesk check job.json tells which", done.stderr)
        kinds = [e.get("class") for e in ElementTree.fromstring(svg).iter() if e.get("class")]
        self.assertEqual((kinds.count("piece"), kinds.count("over"), kinds.count("end")),
                         (105, 1, 2), "one piece does not fit, one has no length")
        texts = {e.text: float(e.get("y")) for e in ElementTree.fromstring(svg).iter(SVG + "text")}
        self.assertIn("w29", texts)
        self.assertGreater(texts["Bar 1  ·  外框"] - texts["and 70 more works"], 9)
        self.assertTrue(any("  4: 500, " in text for text in texts), "a barcode that is cut off")
        lint = subprocess.run(["xmllint", "--noout", "odd.svg"], cwd=self.folder, check=False,
                              capture_output=True, text=True)
        self.assertEqual((lint.returncode, lint.stderr), (0, ""))

    def test_nothing_to_draw_is_said(self):
        for bars, words in [([], ["The job has no bars."]), ([bar(1, 6500)], ["no pieces"])]:
            svg = self.draw(self.job(bars))
            remarks = [e.text for e in ElementTree.fromstring(svg).iter(SVG + "text")
                       if e.get("class") == "remark"]
            self.assertEqual(remarks, words)

    def test_fifty_bars_take_whole_pages_and_no_bar_crosses_an_edge(self):
        pieces = [piece(n, str(700 + 9 * n), "45", "135") for n in range(1, 7)]
        name = self.job([bar(n, 6500, *pieces) for n in range(1, 51)])
        root = ElementTree.fromstring(self.draw(name, "--each"))
        pages = [e.text for e in root.iter(SVG + "text") if e.get("class") == "page"]
        self.assertEqual(pages[0], f"page 1 of {len(pages)}")
        height = float(root.get("viewBox").split()[3])
        self.assertEqual(height % 210, 0)
        self.assertLess(height, 15 * 210)
        for group in root.iter(SVG + "g"):
            ys = [float(text.get("y")) for text in group.iter(SVG + "text")]
            for polygon in group.iter(SVG + "polygon"):
                ys += [float(point.split(",")[1]) for point in polygon.get("points").split()]
            self.assertEqual((min(ys) - 10) // 210, (max(ys) + 10) // 210)

    def test_bars_can_be_chosen_and_the_unit_is_the_job_s(self):
        name = self.job([bar(1, 90, piece(1, "9")), bar(7, 80, piece(5, "8"))], Unit="inch")
        svg = self.draw(name, "--bar", "7")
        self.assertIn(">job.json  ·  1 bar, 1 piece, yield 10.0 %  ·  lengths in inch  ·  in brackets", svg)
        self.assertNotIn("A-1", svg)

    def test_png_shows_the_same(self):
        name = self.job(MITRES)
        answer = self.run_draw(name, "-q", "-o", "job.png")
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""))
        picture = (self.folder / "job.png").read_bytes()
        self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
        self.assertGreater(int.from_bytes(picture[16:20], "big"), 2200, "297 mm at 192 dpi")

    def test_a_closed_standard_output_is_a_failure(self):
        self.job(MITRES)
        for output in ("a.svg", "-"):
            answer = subprocess.run(["sh", "-c", '"$0" draw job.json -o "$1" >&-', CUSDESK, output],
                                    stderr=subprocess.PIPE, text=True, timeout=120, check=False,
                                    cwd=self.folder)
            self.assertEqual(answer.returncode, 3, answer.stderr)


unittest.main()
