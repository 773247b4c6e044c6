"""The manual: its examples run, and its tables are those that the program exports.

Usage: docs_test.py CUSDESK SOURCE_DIR       UPDATE_EXPECTED=1 writes answers and tables instead

In a page, a Lua block stands before what it prints, without the plug-in's own lines, unless it is a
file's. Files named in the same section lie in the controller's flash. In a prompt block answers stand
behind the lines that are typed. A table of "cusdesk export tables" stands below the
comment that it has there, such as "<!-- rows: Work -->".
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from cusdesk import CUSDESK, Folder, run

SOURCE = pathlib.Path(sys.argv.pop()).resolve()
DOCS = SOURCE / "docs"
PAGES = ("manual.md", "jobs.md", "oddities.md", "scripts.md")
UPDATE = os.environ.get("UPDATE_EXPECTED") == "1"

SECTION = re.compile(r"(?:^##+ |\A).*?(?=^##+ |\Z)", re.M | re.S)
FILE = re.compile(r"^`([^`]+)`:\n```\w+\n(.*?)^```", re.M | re.S)
SCRIPT = re.compile(r"^```lua\n(.*?)^```\n```text\n(.*?)^```", re.M | re.S)
PROMPT = re.compile(r"^```prompt\n(.*?)^```", re.M | re.S)
CONSOLE = re.compile(r"^```console\n(.*?)^```", re.M | re.S)
TABLE = re.compile(r"^<!-- ([^\n]+) -->\n((?:\|.*(?:\n|\Z))*)", re.M)
OWN_LINES = re.compile(
    r"^(cus_ParseModule2? -+|The string ends with \S+|Unknown file type|rst = .*|"
    r"Faild to find the BarCode.*|(read File|analysis \w+) error\.+|数据已写入文件！|无法打开文件！)\n",
    re.M)
STUB = (SOURCE / "schema/cus_ParseModule.lua").read_text(encoding="utf-8")


def made_tables():
    """The tables of today, by the marker that stands above each."""
    return dict(TABLE.findall(run("export", "tables", check=True).stdout))


class Docs(Folder):
    def run_script(self, script, files):
        root = self.folder / "root"
        shutil.rmtree(root, ignore_errors=True)
        shutil.copytree(SOURCE / "examples/mnt", root / "mnt")
        for name, text in files:
            kind = "XmlFile" if name.endswith(".xml") else "JsonFile"
            self.write(f"root/mnt/data/CustomFileDir/{kind}/{name}", text)
        answer = self.run_here("--root", root, "run", self.write("script.lua", script), code=0,
                               env={"PATH": os.environ["PATH"], "NO_PROXY": "*"})
        return OWN_LINES.sub("", answer.stdout)

    def run_console(self, text, files):
        """The block with what its commands print now."""
        for name, content in files:
            self.write(name, content)
        lines = ""
        for program, command in re.findall(r"^\$ (cusdesk|luacheck) (.*)$", text, re.M):
            words = [CUSDESK if program == "cusdesk" else program, *command.split()]
            answer = subprocess.run(words, cwd=self.folder, capture_output=True, encoding="utf-8",
                                    timeout=60, check=False)
            lines += f"$ {program} {command}\n{answer.stdout}{answer.stderr}"
        return lines

    def run_prompt(self, text):
        """The block with what its lines answer now."""
        lines = re.findall(r"^> (.*)$", text, re.M)
        typed = "".join(f"{line}\nprint('@')\n" for line in lines)
        answers = self.run_here("repl", input=typed, code=0).stdout.split("@\n")
        return "".join(f"> {line}\n{answer}" for line, answer in zip(lines, answers))

    def renewed(self, page):
        """The page with the tables and answers of today."""
        def section(found):
            files = FILE.findall(found[0])
            text = SCRIPT.sub(lambda old: f"```lua\n{old[1]}```\n```text\n"
                                          f"{self.run_script(old[1], files)}```", found[0])
            text = PROMPT.sub(lambda old: f"```prompt\n{self.run_prompt(old[1])}```", text)
            return CONSOLE.sub(lambda old: f"```console\n{self.run_console(old[1], files)}```", text)

        tables = made_tables()
        page = TABLE.sub(lambda old: f"<!-- {old[1]} -->\n{tables[old[1]]}", page)
        return SECTION.sub(section, page)

    def test_examples_and_tables_are_those_of_today(self):
        for name in PAGES:
            page = (DOCS / name).read_text(encoding="utf-8")
            if UPDATE:
                (DOCS / name).write_text(self.renewed(page), encoding="utf-8")
            self.assertEqual((DOCS / name).read_text(encoding="utf-8"), self.renewed(page), name)
            blocks = len(re.findall("^```lua$", page, re.M))
            blocks -= sum(file.endswith(".lua") for file, _ in FILE.findall(page))
            self.assertEqual(blocks, len(SCRIPT.findall(page)), f"{name}: a script without answer")

    def test_every_function_row_code_and_level_has_its_place(self):
        manual = (DOCS / "manual.md").read_text(encoding="utf-8")
        functions = re.findall(r"^function cus_ParseModule\.(\w+\(.*\)) end$", STUB, re.M)
        self.assertTrue(functions)
        for function in functions:
            section = re.search(rf"^### {re.escape(function)}\n(.*?)(?=^##|\Z)", manual, re.M | re.S)
            self.assertIsNotNone(section, function)
            for part in ("**Arguments", "```lua"):
                self.assertIn(part, section.group(1), function)
        markers = [found[1] for name in PAGES
                   for found in TABLE.finditer((DOCS / name).read_text(encoding="utf-8"))]
        self.assertEqual(sorted(markers), sorted(made_tables()))

    def test_the_written_jobs_are_in_the_strict_form(self):
        files = dict(FILE.findall((DOCS / "jobs.md").read_text(encoding="utf-8")))
        schema = SOURCE / "schema/cutting-job"
        for name, command in [
                ("job.json", [sys.executable, "-m", "jsonschema", "-i", "job.json",
                              f"{schema}.schema.json"]),
                ("job.xml", ["xmllint", "--noout", "--schema", f"{schema}.xsd", "job.xml"])]:
            self.write(name, files[name])
            answer = subprocess.run(command, cwd=self.folder, capture_output=True, text=True,
                                    timeout=60, check=False)
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
