"""The manual: its examples run, and its tables are those of stub and schemas.

Usage: docs_test.py CUSDESK SOURCE_DIR       UPDATE_EXPECTED=1 writes answers and tables instead

In a page, a Lua block stands before what it prints, without the plug-in's own lines. Files named in
the same section lie in the controller's flash. "<!-- rows: Work -->" stands above the table of that
row, "<!-- keys: json bar -->" above that of the level, "<!-- codes -->" above that of the codes.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

SOURCE = pathlib.Path(sys.argv.pop()).resolve()
CUSDESK = str(pathlib.Path(sys.argv.pop()).resolve())
DOCS = SOURCE / "docs"
PAGES = ("manual.md", "jobs.md", "oddities.md")
UPDATE = os.environ.get("UPDATE_EXPECTED") == "1"

SECTION = re.compile(r"^##+ .*?(?=^##+ |\Z)", re.M | re.S)
FILE = re.compile(r"^`([^`]+)`:\n```\w+\n(.*?)^```", re.M | re.S)
SCRIPT = re.compile(r"^```lua\n(.*?)^```\n```text\n(.*?)^```", re.M | re.S)
CONSOLE = re.compile(r"^```console\n(.*?)^```", re.M | re.S)
TABLE = re.compile(r"^<!-- ([^\n]+) -->\n((?:\|.*(?:\n|\Z))*)", re.M)
OWN_LINES = re.compile(
    r"^(cus_ParseModule2? -+|The string ends with \S+|Unknown file type|rst = .*|"
    r"Faild to find the BarCode.*|(read File|analysis \w+) error\.+|数据已写入文件！|无法打开文件！)\n",
    re.M)
STUB = (SOURCE / "schema/cus_ParseModule.lua").read_text(encoding="utf-8")
SCHEMA = json.loads((SOURCE / "schema/cutting-job.schema.json").read_text(encoding="utf-8"))
XSD = ElementTree.parse(SOURCE / "schema/cutting-job.xsd")
XS = "{http://www.w3.org/2001/XMLSchema}"


def run_script(script, files):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder, "root")
        shutil.copytree(SOURCE / "examples/mnt", root / "mnt")
        for name, text in files:
            kind = "XmlFile" if name.endswith(".xml") else "JsonFile"
            (root / "mnt/data/CustomFileDir" / kind / name).write_text(text, encoding="utf-8")
        path = pathlib.Path(folder, "script.lua")
        path.write_text(script, encoding="utf-8")
        answer = subprocess.run([CUSDESK, "--root", root, "run", path], capture_output=True,
                                encoding="utf-8", timeout=60, check=True,
                                env={"PATH": os.environ["PATH"], "NO_PROXY": "*"})
    return OWN_LINES.sub("", answer.stdout)


def run_console(text, files):
    """The block with what its commands print now."""
    with tempfile.TemporaryDirectory() as folder:
        for name, content in files:
            pathlib.Path(folder, name).write_text(content, encoding="utf-8")
        lines = ""
        for command in re.findall(r"^\$ cusdesk (.*)$", text, re.M):
            answer = subprocess.run([CUSDESK, *command.split()], cwd=folder, capture_output=True,
                                    encoding="utf-8", timeout=60, check=False)
            lines += f"$ cusdesk {command}\n{answer.stdout}{answer.stderr}"
    return lines


def table(head, rows):
    lines = [head, ["---"] * len(head), *rows]
    return "\n".join("| " + " | ".join(line).replace("  ", " ") + " |" for line in lines)


def row_table(name):
    fields = re.search(rf"---@class cus_ParseModule\.{name}\n((?:---@field .*\n)+)", STUB).group(1)
    rows = re.findall(r"---@field (\w+)\?? ([\w.]+) (.*)\n", fields)
    return table(["Key", "Type", "Holds"],
                 [[f"`{key}`", kind.replace("cus_ParseModule.Code", "integer"), text]
                  for key, kind, text in rows])


def code_table():
    return table(["`errorCode`", "Means"],
                 re.findall(r"^---\| (-?\d+) # (.*)$", STUB, re.M)
                 + [["other", "a download failed; the code is the downloader's own"]])


def split_scripts(description):
    """A key's words, and the rows that hold its value."""
    found = re.search(r" Scripts: (.*?)\.(?= |$)", description)
    if not found:
        return description, ""
    rows = ", ".join("`" + row.replace(" ", " `").replace(" `", "` `") + "`"
                     for row in found.group(1).split(", "))
    return description.replace(found.group(0), ""), rows


def second_spellings():
    source = (SOURCE / "json/json_keys.h").read_text(encoding="utf-8")
    pairs = re.findall(r'\{"(\w+)", "(\w+)",\s+KeyKind', source)
    bars = re.search(r'kBars\[\] = "(\w+)".*\n.*kBarsSecond\[\] = "(\w+)"', source)
    return dict(pairs + [bars.groups()])


def json_table(level):
    part = SCHEMA if level == "header" else SCHEMA["definitions"][level]
    names = {"string": "text", "boolean": "true or false"}
    rows = []
    others = second_spellings()
    optional = [key for key in part["properties"] if key not in part["required"]]
    for key in part["required"] + optional:
        rule = part["properties"][key]
        if "$ref" in rule:
            kind, words, scripts = "object", "The cut of the piece.", ""
        else:
            kind = names.get(rule["type"], rule["type"])
            kind = f'`"{rule["const"]}"`' if "const" in rule else kind
            kind = "text, a number" if "pattern" in rule else kind
            words, scripts = split_scripts(rule["description"])
        missing = "not loaded, -3" if key == "Version" else "the value before stays"
        missing = "there are none" if key in optional else missing
        other = f"`{others[key]}`" if key in others else ""
        rows.append([f"`{key}`", other, kind, words, scripts, missing])
    return table(["Key", "Also read as", "Type", "What it is", "Scripts get it as", "If missing"],
                 rows)


def xml_table(level):
    kinds = {"text": "text", "count": "whole number", "measure": "number", "number": "number",
             "version": '`1.0`'}
    rows = []
    for element in XSD.findall(f"{XS}complexType[@name='{level}']//{XS}element"):
        words = element.findtext(f".//{XS}documentation")
        if words is None:
            continue
        words, scripts = split_scripts(words)
        missing = "the value before stays"
        if element.get("type") == "number" or element.get("name") == "CtrsZ":
            missing = "loading raises"
        if element.get("minOccurs") == "0":
            missing = "nothing"
        rows.append([f"`{element.get('name')}`", kinds[element.get("type")], words, scripts, missing])
    return table(["Element", "Holds", "What it is", "Scripts get it as", "If missing or empty"], rows)


def made_table(marker):
    words = marker.replace(":", "").split()
    if words[0] == "rows":
        return row_table(words[1])
    if words[0] == "codes":
        return code_table()
    return json_table(words[2]) if words[1] == "json" else xml_table(words[2])


def renewed(page):
    """The page with the tables and answers of today."""
    def section(found):
        files = FILE.findall(found.group(0))
        text = SCRIPT.sub(lambda old: f"```lua\n{old[1]}```\n```text\n{run_script(old[1], files)}```",
                          found.group(0))
        return CONSOLE.sub(lambda old: f"```console\n{run_console(old[1], files)}```", text)

    page = TABLE.sub(lambda old: f"<!-- {old[1]} -->\n{made_table(old[1])}\n", page)
    head = page[:page.index("\n## ")]
    return SCRIPT.sub(lambda old: f"```lua\n{old[1]}```\n```text\n{run_script(old[1], [])}```",
                      head) + SECTION.sub(section, page[len(head):])


class Docs(unittest.TestCase):
    maxDiff = None

    def test_examples_and_tables_are_those_of_today(self):
        for name in PAGES:
            page = (DOCS / name).read_text(encoding="utf-8")
            if UPDATE:
                (DOCS / name).write_text(renewed(page), encoding="utf-8")
            self.assertEqual((DOCS / name).read_text(encoding="utf-8"), renewed(page), name)
            blocks = len(re.findall("^```lua$", page, re.M))
            self.assertEqual(blocks, len(SCRIPT.findall(page)), f"{name}: a script without answer")

    def test_every_function_row_code_and_level_has_its_place(self):
        manual = (DOCS / "manual.md").read_text(encoding="utf-8")
        functions = re.findall(r"^function cus_ParseModule\.(\w+\(.*\)) end$", STUB, re.M)
        self.assertEqual(len(functions), 9)
        for function in functions:
            section = re.search(rf"^### {re.escape(function)}\n(.*?)(?=^##|\Z)", manual, re.M | re.S)
            self.assertIsNotNone(section, function)
            for part in ("**Arguments", "```lua"):
                self.assertIn(part, section.group(1), function)
        markers = [found[1] for name in PAGES
                   for found in TABLE.finditer((DOCS / name).read_text(encoding="utf-8"))]
        rows = re.findall(r"---@class cus_ParseModule\.(\w+)", STUB)
        levels = ["header", *sorted(SCHEMA["definitions"])]
        self.assertEqual(sorted(markers), sorted(
            ["codes", *(f"rows: {row}" for row in rows),
             *(f"keys: {kind} {level}" for kind in ("json", "xml") for level in levels)]))

    def test_the_written_jobs_are_in_the_strict_form(self):
        files = dict(FILE.findall((DOCS / "jobs.md").read_text(encoding="utf-8")))
        with tempfile.TemporaryDirectory() as folder:
            for name, schema, command in [
                    ("job.json", "cutting-job.schema.json",
                     [sys.executable, "-m", "jsonschema", "-i", "job.json"]),
                    ("job.xml", "cutting-job.xsd", ["xmllint", "--noout", "--schema"])]:
                pathlib.Path(folder, name).write_text(files[name], encoding="utf-8")
                words = [SOURCE / "schema" / schema] + ([name] if name == "job.xml" else [])
                answer = subprocess.run([*command, *words], cwd=folder, capture_output=True,
                                        text=True, timeout=60, check=False)
                self.assertEqual(answer.returncode, 0, answer.stdout + answer.stderr)

    def test_integrators_find_every_name_and_floor_of_the_contract(self):
        contract = json.loads((SOURCE / "module/boundary.json").read_text(encoding="utf-8"))
        page = (DOCS / "integrating.md").read_text(encoding="utf-8")
        names = contract["entry_points"] + [name.split("(")[0] for name in contract["callbacks"]]
        names += [name for name in contract["imports"] if name.startswith("lua")]
        self.assertGreater(len(names), 18)
        for name in names:
            self.assertIn(f"`{name}", page, name)
        for target, floors in contract["floors"].items():
            row = [target] + [floors[name] for name in ("GLIBC", "GLIBCXX", "CXXABI")]
            self.assertIn("| " + " | ".join(row) + " |", page)

    def test_links_lead_somewhere(self):
        for page in DOCS.glob("*.md"):
            text = page.read_text(encoding="utf-8")
            for target in re.findall(r"\]\(([^)#\s]*(?:#[^)\s]*)?)\)", text):
                file, _, anchor = target.partition("#")
                if file.startswith("http"):
                    continue
                path = (DOCS / file).resolve() if file else page
                self.assertTrue(path.exists(), f"{page.name}: {target}")
                if anchor:
                    heads = re.findall(r"^#+ (.*)$", path.read_text(encoding="utf-8"), re.M)
                    anchors = [re.sub(r"[^\w\- ]", "", head.lower()).replace(" ", "-")
                               for head in heads]
                    self.assertIn(anchor, anchors, f"{page.name}: {target}")


unittest.main()
