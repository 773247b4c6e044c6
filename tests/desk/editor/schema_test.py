"""JSON Schema and XSD: the shipped jobs pass, and what the readers would ignore or carry over fails.

Usage: schema_test.py CUSDESK SOURCE_DIR
"""

import copy
import json
import pathlib
import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree as ElementTree

import jsonschema

from cusdesk import Folder, run

SOURCE = pathlib.Path(sys.argv.pop())
SCHEMA = json.loads((SOURCE / "schema/cutting-job.schema.json").read_text(encoding="utf-8"))
XSD = SOURCE / "schema/cutting-job.xsd"
JSON_JOB = json.loads((SOURCE / "examples/mnt/usb/json/recut.json").read_text(encoding="utf-8"))
XML_JOB = SOURCE / "examples/mnt/usb/xml/recut.xml"
VALIDATOR = jsonschema.Draft7Validator(SCHEMA)

# What check says of jobs as a whole, whatever the form of their values.
OF_THE_JOB = {"angle-135", "never-stored", "duplicate-barcode", "duplicate-number", "does-not-fit",
              "other-job", "angle", "leftover", "work-beside-piece", "work-outside-profile",
              "work-in-corner"}


# What no bar, piece or work can have: level, key, values.
OUT_OF_BOUNDS = [(level, key, value) for level, key, values in [
    (0, "Unit", "inch cm"), (1, "BarNumber", "-1"), (1, "MaxY", "0"), (1, "MaxZ", "-5"),
    (1, "length", "0"), (1, "BarLeftLength", "-1"), (2, "Num", "-1"),
    (3, "Length", "0 00.0 -9 65,5 1.200,5 +7"), (3, "sxB", "-45 0 0.0 180 200 45,5"),
    (4, "ProfiLav", "-1 7 99"), (4, "PositionX", "-1"), (4, "PositionZ", "-1")]
    for value in values.split()]


def rules_by_file(folder, good, files):
    """What check says of each file when it is loaded after `good`, as rules without OF_THE_JOB."""
    words = [word for name in files for word in (good, name)]
    answer = run("check", "--sequence", "--format", "json", *words, cwd=folder)
    rules = {name: set() for name in files}
    for finding in json.loads(answer.stdout)["findings"]:
        if finding["file"] in rules and finding["rule"] not in OF_THE_JOB:
            rules[finding["file"]].add(finding["rule"])
    return rules


def json_levels(job):
    """One object of each level of a job, with the part of the schema that it belongs to."""
    bar = job["Bar"][0]
    piece = bar["piece"][0]
    definitions = SCHEMA["definitions"]
    return [(job, SCHEMA), (bar, definitions["bar"]), (piece, definitions["piece"]),
            (piece["cut"], definitions["cut"]), (piece["work"][0], definitions["work"])]


def damaged_json_jobs():
    """(what was done, job): each key once missing, misspelt, and of each wrong type."""
    values = {"string": "text", "integer": 7, "number": 1.5, "boolean": True, "null": None,
              "array": [], "object": {}}
    fits = {"number": {"number", "integer"}}
    for level, (_, part) in enumerate(json_levels(JSON_JOB)):
        for key, rule in part["properties"].items():
            if key in part["required"]:
                job = copy.deepcopy(JSON_JOB)
                del json_levels(job)[level][0][key]
                yield f"{key} missing", job
            job = copy.deepcopy(JSON_JOB)
            target = json_levels(job)[level][0]
            target["x" + key] = target.pop(key, None)
            yield f"{key} misspelt", job
            kind = rule.get("type", "object")
            for name, value in values.items():
                if name in fits.get(kind, {kind}):
                    continue
                job = copy.deepcopy(JSON_JOB)
                json_levels(job)[level][0][key] = value
                yield f"{key} as {name}", job


def changed_json_jobs(changes):
    """(what was done, job): (level, key, value) each, without the key for a value of None."""
    for level, key, value in changes:
        job = copy.deepcopy(JSON_JOB)
        target = json_levels(job)[level][0]
        target[key] = value
        if value is None:
            del target[key]
        yield f"{key} = {value}", job


SOUND_JSON = [(0, "Bar", []), (1, "piece", []), (2, "work", []), (0, "Name", ""),
              (2, "Buyer", "买方 \"7\""), (1, "BarType", 2147483647), (2, "Over_status", -2147483648),
              (4, "PositionX", 7), (4, "PositionZ", 0), (4, "ProfiLav", 2.0), (3, "Length", "0900.5"),
              (3, "sxB", "22.5"), (3, "dxB", "0.5"), (0, "Unit", "毫米"), (0, "Unit", ""),
              (0, "success", False), (0, "Bar", None),
              (1, "piece", None), (2, "work", None)]
# What readers take and writers leave. A second spelling stands beside the first one.
LENIENT_JSON = [(1, "barNumber", 7), (2, "machin", "saw"), (2, "field2", "x"),
                (3, "Length", "900mm"), (3, "dxB", "45°"), (1, "length", 2147483648),
                (0, "Version", "1.00")] + [
                    (level, key, value if level in (0, 3) else int(value))
                    for level, key, value in OUT_OF_BOUNDS]


class JsonSchema(Folder):
    def test_the_schema_itself_is_one(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)

    def test_every_shipped_job_is_valid(self):
        jobs = list((SOURCE / "examples").rglob("*.json"))
        self.assertGreaterEqual(len(jobs), 2)
        for path in jobs:
            VALIDATOR.validate(json.loads(path.read_text(encoding="utf-8")))

    def test_what_the_reader_ignores_or_carries_over_is_invalid_and_nothing_else(self):
        sound = list(changed_json_jobs(SOUND_JSON))
        damaged = list(damaged_json_jobs())
        self.assertGreater(len(damaged), 400)
        self.write("good.json", json.dumps(JSON_JOB))
        names = [self.write(f"job{i}.json", json.dumps(job)).name
                 for i, (_, job) in enumerate(sound + damaged)]
        rules = rules_by_file(self.folder, "good.json", names)
        for i, (what, job) in enumerate(sound + damaged):
            self.assertEqual(VALIDATOR.is_valid(job), i < len(sound), what)
            self.assertEqual(rules[f"job{i}.json"] == set(), i < len(sound), what)
        for what, job in changed_json_jobs(LENIENT_JSON):
            self.assertFalse(VALIDATOR.is_valid(job), what)


def elements_by_level(root):
    """The first element of each level of an XML job."""
    return [root, *map(root.find, ("Bar", "Bar/Piece", "Bar/Piece/Cut", "Bar/Piece/Work"))]


def xml_job():
    return ElementTree.parse(XML_JOB).getroot()


def damaged_xml_jobs():
    """(what was done, root): each element once missing, blank and misspelt."""
    for level, elements in enumerate(elements_by_level(xml_job())):
        for index, element in enumerate(elements):
            for damage in ("missing", "blank", "misspelt"):
                root = xml_job()
                parent = elements_by_level(root)[level]
                child = parent[index]
                is_first = parent.find(child.tag) is child
                if len(child) and damage != "misspelt" or not is_first or child.tag == "Extra_Pie":
                    continue
                if damage == "missing":
                    parent.remove(child)
                elif damage == "blank":
                    child.text = " "
                else:
                    child.tag = "x" + child.tag
                yield f"{element.tag} {damage}", root


def changed_xml_jobs(changes):
    """The shipped job with one change each: (path, text) pairs, or functions."""
    for change in changes:
        root = xml_job()
        if callable(change):
            change(root)
        else:
            root.find(change[0]).text = change[1]
        yield change, root


WORK, PIECE = "Bar/Piece/Work/", "Bar/Piece/"
SOUND_XML = [(PIECE + "Customer", "买方 <7>"), (WORK + "PositionX", "12.5"), (PIECE + "Num", "0"),
             (WORK + "ProfiLav", "1.0"), (PIECE + "Cut/Length", "0.5"), (PIECE + "Cut/dxB", "179.9"),
             lambda root: root.find("Bar/Piece").remove(root.find(PIECE + "Extra_Pie")),
             lambda root: [root.remove(bar) for bar in root.findall("Bar")]]
LENIENT_XML = [(WORK + "PositionX", "12.5mm"), (WORK + "ProfiLav", "front"),
               (WORK + "PositionY", "1" + "0" * 400), ("Bar/BarNumber", " 1"), ("Version", "1.00"),
               ("Version", None), (PIECE + "Cut/Length", "long"),
               lambda root: root.find("Bar").set("Number", "7"),
               lambda root: root.find("Bar/Piece").insert(3, root.find(PIECE + "Cut")),
               lambda root: root.find("Bar").insert(0, root.find("Bar/BarName"))] + [
                   (("", "Bar/", PIECE, PIECE + "Cut/", WORK)[level] +
                    {"length": "Length", "BarLeftLength": "LeftLength"}.get(key, key), value)
                   for level, key, value in OUT_OF_BOUNDS]


class XmlSchema(Folder):
    def valid(self, names):
        """Which of the files the XSD accepts."""
        answer = subprocess.run(["xmllint", "--noout", "--schema", XSD.resolve(), *names],
                                cwd=self.folder, capture_output=True, encoding="utf-8",
                                timeout=120, check=False)
        return set(re.findall(r"^(\S+) validates$", answer.stderr, re.M))

    def test_every_shipped_job_is_valid(self):
        jobs = [str(path.resolve()) for path in (SOURCE / "examples").rglob("*.xml")]
        self.assertGreaterEqual(len(jobs), 2)
        self.assertEqual(self.valid(jobs), set(jobs))

    def test_what_the_reader_ignores_or_carries_over_is_invalid_and_nothing_else(self):
        sound = list(changed_xml_jobs(SOUND_XML))
        damaged = list(damaged_xml_jobs())
        self.assertGreater(len(damaged), 75)
        jobs = sound + damaged + list(changed_xml_jobs(LENIENT_XML))
        names = [self.write(f"job{i}.xml", ElementTree.tostring(root, encoding="unicode")).name
                 for i, (_, root) in enumerate(jobs)]
        valid = self.valid(names)
        rules = rules_by_file(self.folder, str(XML_JOB.resolve()), names)
        for i, (what, _) in enumerate(jobs):
            self.assertEqual(names[i] in valid, i < len(sound), what)
            if i < len(sound + damaged):  # writers keep to the form where readers are lenient
                self.assertEqual(rules[names[i]] == set(), i < len(sound), (what, rules[names[i]]))


class Drift(Folder):
    def test_the_kept_files_are_what_cusdesk_writes(self):
        run("export", "--into", self.folder, check=True)
        written = {path.name: path.read_text(encoding="utf-8") for path in self.folder.iterdir()}
        for name, text in written.items():
            kept = (SOURCE / "schema" / name).read_text(encoding="utf-8")
            self.assertEqual(kept, text, f"schema/{name}: write it anew with export --into")
        kept = {path.name for path in (SOURCE / "schema").iterdir()} - {"README.md"}
        self.assertEqual(kept, set(written))


unittest.main()
