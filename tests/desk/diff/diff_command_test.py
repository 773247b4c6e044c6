"""`cusdesk diff` from the command line: whole texts, every key, both formats.

Usage: diff_command_test.py CUSDESK EXAMPLES
"""

import copy
import json
import pathlib
import sys
import unittest

from cusdesk import Folder

FILES = pathlib.Path(sys.argv.pop()) / "mnt/data/CustomFileDir"
WINDOW = json.loads((FILES / "JsonFile/window.json").read_text(encoding="utf-8"))

TEXT = """\
- old.json
+ new.json

~ header
    Name: 示例窗单 -> " \\n"
~ bar 2
    order of pieces: DEMO-0201, DEMO-0202, DEMO-0203, DEMO-0204, DEMO-0205, DEMO-0206 -> \
DEMO-0206, DEMO-0205, DEMO-0204, DEMO-0203, DEMO-0202, DEMO-0201
- bar 7
+ bar 70
~ piece DEMO-0102 of bar 1
    work 3 (排水槽) PositionX: 150 -> 151
    - 排水槽 (side 2: 600, 20, 5)
    + 槽 (side 2: 1, 2, 3)
~ piece DEMO-0103 of bar 1
    order of works: 1, 2, 3, 4, 5, 6 -> 6, 5, 4, 3, 2, 1
> piece DEMO-0301 from bar 3 to bar 4
    mark: C1 -> ""
~ piece 1 of bar 5
    Over_status: 0 -> 7
- piece 2 of bar 5
~ 10 pieces: DEMO-0601, DEMO-0602, DEMO-0603, DEMO-0604, DEMO-0605, DEMO-0606, DEMO-0607, \
DEMO-0608 and 2 more
    Over_status: 0 -> 7
> 8 pieces from bar 7 to bar 70: DEMO-0701, DEMO-0702, DEMO-0703, DEMO-0704, DEMO-0705, \
DEMO-0706, DEMO-0707, DEMO-0708
+ piece 3 of bar 5
+ piece NEW of bar 6

header changed, 1 bar added, 1 bar gone, 1 bar changed, 2 pieces added, 1 piece gone, \
13 pieces changed, 9 pieces moved
"""


def changed(old):
    """Another value of the same kind."""
    if isinstance(old, bool):
        return not old
    return old + "x" if isinstance(old, str) else old + 1


class Diff(Folder):
    def diff(self, old, new, *words, code=1):
        for name, job in (("old.json", old), ("new.json", new)):
            self.write(name, json.dumps(job))
        return self.run_here("diff", "old.json", "new.json", *words, code=code).stdout

    def test_pieces_bars_and_works_are_followed(self):
        old, new = copy.deepcopy(WINDOW), copy.deepcopy(WINDOW)
        old["Bar"][4]["piece"][0]["BarCode"] = old["Bar"][4]["piece"][1]["BarCode"] = ""
        bars = new["Bar"]
        new["Name"] = " \n"
        works = bars[0]["piece"][1]["work"]
        works[2]["PositionX"] = 151
        works[3:4] = [{"Name": "槽", "ProfiLav": 2, "PositionX": 1, "PositionY": 2, "PositionZ": 3}]
        bars[0]["piece"][2]["work"].reverse()
        bars[1]["piece"].reverse()
        bars[3]["piece"].append({**bars[2]["piece"].pop(0), "mark": ""})
        for piece in bars[4]["piece"]:
            piece["BarCode"] = ""
        bars[4]["piece"][1]["PieceNumber"] = 3
        for piece in [bars[4]["piece"][0], *bars[5]["piece"][:10]]:
            piece["Over_status"] = 7
        bars[5]["piece"].insert(0, {**bars[5]["piece"][10], "BarCode": "NEW"})
        bars[6]["BarNumber"] = 70
        self.assertEqual(self.diff(old, new), TEXT)
        changes = [change for one in json.loads(self.diff(old, new, "--format=json"))["differences"]
                   for change in one.get("changes", [])]
        self.assertIn({"work": "work 4 (槽)", "new": works[3]}, changes)

    def test_bars_with_one_number_are_told_apart(self):
        bars = [{"BarNumber": 7, "piece": [{"BarCode": code}]} for code in "AB"]
        new = [{"BarNumber": 7, "piece": [{"BarCode": "B"}, {"BarCode": "A"}]}, {"BarNumber": 7, "piece": []}]
        self.assertIn("> piece A from bar 7 (place 2) to bar 7 (place 1)\n", self.diff(
            {"Version": "1.0", "Bar": bars[::-1]}, {"Version": "1.0", "Bar": new}))

    def test_every_key_of_the_shipped_job_is_compared(self):
        new = copy.deepcopy(WINDOW)
        first, *pieces = [piece for bar in new["Bar"] for piece in bar["piece"]]
        parts = [(new, "Version"), (new["Bar"][1], "BarNumber"), (first["cut"], ""),
                 (first["work"][0], "Name")]  # what they are known by stays
        expected = []
        for number, key in enumerate(sorted(first)):
            if key != "BarCode" and not isinstance(first[key], (dict, list)):
                pieces[number][key] = changed(pieces[number][key])
                expected.append(key)
        for part, known in parts:
            for key, value in part.items():
                if key != known and not isinstance(value, list):
                    part[key] = changed(value)
                    expected.append(key)
        answer = json.loads(self.diff(WINDOW, new, "--format", "json"))
        told = [change["key"] for one in answer["differences"] for change in one["changes"]]
        self.assertEqual(sorted(told), sorted(expected))
        self.assertFalse(answer["same"])

    def test_the_same_job_in_both_formats_is_what_the_machine_makes_of_it(self):
        answer = self.run_here("diff", FILES / "JsonFile/window.json", FILES / "XmlFile/window.xml",
                               code=1).stdout.splitlines()
        self.assertEqual(answer[3][:11], "~ 24 pieces")
        self.assertEqual(answer[4:8], [
            "    dxB: 45 -> 135",
            "  XML jobs have no header values for success, code, message",
            "  XML jobs have no bar values for Sortingcode, BarType, BarCad", answer[7]])
        self.assertEqual(answer[9], "24 pieces changed, 41 keys of one format only")

    def test_same_jobs_and_broken_ones(self):
        self.assertEqual(self.diff(WINDOW, WINDOW, code=0), "no differences\n")
        self.write("broken.json", "{")
        done = self.run_here("diff", "old.json", "broken.json", code=3)
        self.assertEqual(done.stdout, "")
        self.assertIn("cannot load broken.json", done.stderr)


unittest.main()
