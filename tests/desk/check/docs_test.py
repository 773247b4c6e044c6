"""The examples in docs/check.md, one section for each rule, and what check says of them.

Usage: docs_test.py CUSDESK DOCS          UPDATE_EXPECTED=1 writes the answers into the page instead
"""

import json
import os
import pathlib
import re
import sys
import unittest

from cusdesk import Folder, run

DOCS = pathlib.Path(sys.argv.pop())

SECTION = re.compile(r"^## (\S+)\n(.*?)(?=^## |\Z)", re.M | re.S)
FILE = re.compile(r"^`([^`]+)`( in Latin-1)?:\n```\w+\n(.*?)^```", re.M | re.S)
ANSWER = re.compile(r"^```console\n\$ (cusdesk [^\n]+)\n(.*?)^```", re.M | re.S)


class Docs(Folder):
    def answer_of(self, rule, section):
        """What the command of a section prints, with the files of the section at hand."""
        for name, latin1, text in FILE.findall(section):
            self.write(f"{rule}/{name}", text.encode("latin-1" if latin1 else "utf-8"))
        command = ANSWER.search(section).group(1).split()
        return run(*command[1:], cwd=self.folder / rule).stdout

    def test_every_rule_has_a_section_and_its_example_says_just_that(self):
        page = DOCS.read_text(encoding="utf-8")
        sections = SECTION.findall(page)
        for rule, section in sections:
            answer = self.answer_of(rule, section)
            if os.environ.get("UPDATE_EXPECTED") == "1":
                written = ANSWER.sub(lambda old: f"```console\n$ {old[1]}\n{answer}```", section)
                page = page.replace(section, written)
                continue
            self.assertEqual(answer, ANSWER.search(section).group(2), rule)
            self.assertIn(f"[{rule}]\n", answer)
        if os.environ.get("UPDATE_EXPECTED") == "1":
            DOCS.write_text(page, encoding="utf-8")
        self.write("job.json", '{"Version":"1.0"}')
        sarif = json.loads(self.run_here("check", "--format", "sarif", "job.json").stdout)
        rules = [rule["id"] for rule in sarif["runs"][0]["tool"]["driver"]["rules"]]
        self.assertEqual([rule for rule, _ in sections], rules)


unittest.main()
