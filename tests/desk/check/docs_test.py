"""docs/check.md, one section for each rule: what check says of its example and how it explains it.

Usage: docs_test.py CUSDESK DOCS          UPDATE_EXPECTED=1 writes the answers into the page instead
"""

import json
import os
import pathlib
import re
import sys
import textwrap
import unittest

from cusdesk import Folder, run

DOCS = pathlib.Path(sys.argv.pop())

SECTION = re.compile(r"^## (\S+)\n(.*?)(?=^## |\Z)", re.M | re.S)
FILE = re.compile(r"^`([^`]+)`( in Latin-1)?:\n```\w+\n(.*?)^```", re.M | re.S)
ANSWER = re.compile(r"^```console\n\$ (cusdesk [^\n]+)\n(.*?)^```", re.M | re.S)



def page_of(rule, examples):
    """The section of a rule with these examples; the words around them are those of --explain."""
    head, machine, cure = run("check", "--explain", rule).stdout.rstrip("\n").split("\n\n")
    head = "U" + head.split(", u", 1)[1]
    head, machine, cure = (textwrap.fill(re.sub("^(On the machine|Cure):", r"**\1:**", text), 104,
                                         break_on_hyphens=False) for text in (head, machine, cure))
    return f"\n{head}\n\n{examples}\n{machine}\n{cure}\n\n"


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
            examples = section[FILE.search(section).start():section.rindex("\n```\n") + 4]
            written = page_of(rule, ANSWER.sub(lambda old: f"```console\n$ {old[1]}\n{answer}```", examples))
            self.assertIn(f"[{rule}]\n", answer)
            if os.environ.get("UPDATE_EXPECTED") == "1":
                page = page.replace(section, written)
            else:
                self.assertEqual(section.strip(), written.strip())
        if os.environ.get("UPDATE_EXPECTED") == "1":
            DOCS.write_text(page, encoding="utf-8")
        self.write("job.json", '{"Version":"1.0"}')
        sarif = json.loads(self.run_here("check", "--format", "sarif", "job.json").stdout)
        rules = [rule["id"] for rule in sarif["runs"][0]["tool"]["driver"]["rules"]]
        self.assertEqual([rule for rule, _ in sections], rules)


unittest.main()
