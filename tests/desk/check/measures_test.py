"""What the rules about measures tell, and the nearest job of which they tell nothing.

Usage: measures_test.py CUSDESK
"""

import json
import unittest

from cusdesk import Folder

GOOD = {"Unit": "mm", "MaxY": 65, "MaxZ": 55, "length": 6000, "BarLeftLength": 4790, "Length": "1200",
        "sxB": "45", "dxB": "45", "ProfiLav": 2, "PositionX": 150, "PositionY": 20.5, "PositionZ": 5}

# What is changed of a good job, and the rules that tell of it, in JSON and in XML.
JOBS = [
    ({}, ""),
    ({"PositionX": 1200.1, "PositionY": 0}, ""), ({"PositionX": 1200.2}, "work-beside-piece"),
    ({"PositionX": -0.1, "PositionY": 0}, ""), ({"PositionX": -0.2}, "work-beside-piece"),
    ({"PositionY": 65.1}, ""), ({"PositionY": 65.2}, "work-outside-profile"),
    ({"PositionY": -0.2}, "work-outside-profile"), ({"PositionZ": -0.2}, "work-outside-profile"),
    ({"PositionZ": 55.1}, ""), ({"PositionZ": 55.2}, "work-outside-profile"),
    ({"PositionX": 20.41}, ""), ({"PositionX": 20.39}, "work-in-corner"),
    ({"PositionX": 1179.59}, ""), ({"PositionX": 1179.61}, "work-in-corner"),
    ({"PositionX": 1, "sxB": "90"}, ""), ({"PositionX": 1, "sxB": "135", "PositionY": 64.5}, ""),
    ({"Length": "130", "PositionX": 65}, ""), ({"Length": "129.9", "PositionX": 65}, "angle"),
    ({"sxB": "0"}, "angle"), ({"sxB": "180"}, "angle"), ({"sxB": "-45"}, "angle"), ({"sxB": "25"}, ""),
    ({"dxB": "135"}, "angle-135"), ({"dxB": "134"}, ""),
    ({"Length": "6000", "BarLeftLength": 0}, ""),
    ({"Length": "6000.1", "BarLeftLength": 0}, "does-not-fit"),
    ({"BarLeftLength": 0}, ""), ({"BarLeftLength": -1}, "leftover"), ({"BarLeftLength": 4800}, ""),
    ({"BarLeftLength": 4801}, "leftover"), ({"BarLeftLength": 6001}, "leftover"),
    ({"length": 0}, "length"), ({"Length": "0"}, "length"), ({"Length": "-1200"}, "length"),
    ({"length": 2000000, "BarLeftLength": 0}, "length"),
    ({"MaxZ": 0}, "profile-size"), ({"MaxZ": 5}, ""), ({"MaxY": -5}, "profile-size"),
    ({"MaxZ": 1000}, ""), ({"MaxZ": 1001}, "profile-size"),
    ({"Unit": "MM"}, ""), ({"Unit": "cm"}, "unit"),
    ({"ProfiLav": 0}, ""), ({"ProfiLav": 6}, ""), ({"ProfiLav": 7}, "side"), ({"ProfiLav": -1}, "side"),
    ({"Length": "900.000"}, ""), ({"Length": "12.000", "length": 6000, "sxB": "90", "dxB": "90", "PositionX": 5}, ""),
    ({"Length": "1.200"}, "thousands-point"), ({"Length": "1.200.5"}, "thousands-point"),
    ({"Length": "1200,5"}, "decimal-comma"), ({"dxB": "45,5"}, "decimal-comma"),
    ({"Length": "1200 mm"}, "not-a-number"), ({"sxB": "left"}, "not-a-number"),
]


def as_json(job):
    cut = {key: job[key] for key in ("Length", "sxB", "dxB")}
    work = {"Name": "drain", **{key: job[key] for key in job if key[:4] in ("Prof", "Posi")}}
    bar = {"BarNumber": 1, **{key: job[key] for key in ("MaxY", "MaxZ", "length", "BarLeftLength")},
           "piece": [{"PieceNumber": 1, "BarCode": "A", "cut": cut, "work": [work]}]}
    return json.dumps({"Version": "1.0", "Unit": job["Unit"], "Bar": [bar]})


def as_xml(job):
    def tags(**values):
        return "".join(f"<{key}>{value}</{key}>" for key, value in values.items())

    work = tags(Name="drain", **{key: job[key] for key in job if key[:4] in ("Prof", "Posi")})
    piece = (tags(PieceNumber=1, BarCode="A", Cut=tags(**{key: job[key] for key in ("Length", "sxB", "dxB")}),
                  CtrsZ=0, Work=work))
    return tags(Job=tags(Version="1.0", Unit=job["Unit"], Bar=tags(
        BarNumber=1, MaxY=job["MaxY"], MaxZ=job["MaxZ"], Length=job["length"],
        LeftLength=job["BarLeftLength"], Piece=piece)))


class Measures(Folder):
    def test_each_is_told_and_the_nearest_good_one_is_not(self):
        expected = {}
        for number, (changes, rule) in enumerate(JOBS):
            for kind, write in (("json", as_json), ("xml", as_xml)):
                name = self.write(f"{number:02}.{kind}", write({**GOOD, **changes})).name
                expected[name] = (changes, rule)
        done = self.run_here("check", "--rule", "missing-key=off", "--format", "json", *expected)
        told = {name: set() for name in expected}
        for finding in json.loads(done.stdout)["findings"]:
            told[finding["file"]].add(finding["rule"])
        for name, (changes, rule) in expected.items():
            self.assertEqual(told[name], {rule} - {""}, (name, changes))


unittest.main()
