"""The examples in docs/check.md, one section for each rule, and what check says of them.

Usage: docs_test.py CUSDESK DOCS          UPDATE_EXPECTED=1 writes the answers into the page instead
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

DOCS = pathlib.Path(sys.argv.pop())
CUSDESK = str(pathlib.Path(sys.argv.pop()).resolve())

SECTION = re.compile(r"^## (\S+)\n(.*?)(?=^## |\Z)", re.M | re.S)
FILE = re.compile(r"^`([^`]+)`( in Latin-1)?:\n```\w+\n(.*?)^```", re.M | re.S)
ANSWER = re.compile(r"^```console\n\$ (cusdesk [^\n]+)\n(.*?)^```", re.M | re.S)


def run(folder, *words):
    return subprocess.run([CUSDESK, *words], cwd=folder, capture_output=True, encoding="utf-8",
                          timeout=60, check=False)


def answer_of(section):
    """What the command of a section prints, with the files of the section at hand."""
    with tempfile.TemporaryDirectory() as folder:
        for name, latin1, text in FILE.findall(section):
            pathlib.Path(folder, name).write_bytes(text.encode("latin-1" if latin1 else "utf-8"))
        command = ANSWER.search(section).group(1).split()
        return run(folder, *command[1:]).stdout


class Docs(unittest.TestCase):
    def test_every_rule_has_a_section_and_its_example_says_just_that(self):
        page = DOCS.read_text(encoding="utf-8")
        sections = SECTION.findall(page)
        for rule, section in sections:
            answer = answer_of(section)
            if os.environ.get("UPDATE_EXPECTED") == "1":
                written = ANSWER.sub(lambda old: f"```console\n$ {old[1]}\n{answer}```", section)
                page = page.replace(section, written)
                continue
            self.assertEqual(answer, ANSWER.search(section).group(2), rule)
            self.assertIn(f"[{rule}]\n", answer)
        if os.environ.get("UPDATE_EXPECTED") == "1":
            DOCS.write_text(page, encoding="utf-8")
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "job.json").write_text('{"Version":"1.0"}', encoding="utf-8")
            sarif = json.loads(run(folder, "check", "--format", "sarif", "job.json").stdout)
        rules = [rule["id"] for rule in sarif["runs"][0]["tool"]["driver"]["rules"]]
        self.assertEqual([rule for rule, _ in sections], rules)


unittest.main()
