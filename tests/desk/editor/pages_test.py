"""Completion and manual page: they offer what the help of each command offers.

Usage: pages_test.py CUSDESK SOURCE_DIR
"""

import re
import subprocess
import sys
import unittest

import cusdesk

sys.argv.pop()


def run(*words, **options):
    return subprocess.run(words, check=True, capture_output=True, encoding="utf-8", timeout=60,
                          **options)


def export(what):
    return cusdesk.run("export", what).stdout


def commands():
    listed = re.search(r"Commands:\n(.*?)\n\n", cusdesk.run("--help").stdout, re.S).group(1)
    return re.findall(r"^  (\w+)", listed, re.M)


def options_of(*command):
    listed = cusdesk.run(*command, "--help").stdout.partition("\nOptions")[2]
    return re.findall(r"^  (?:-\w, )?(--[\w-]+)", listed, re.M)


class Completion(cusdesk.Folder):
    def setUp(self):
        super().setUp()
        for name in ("a job.json", "other.txt"):
            self.write(name, "")
        (self.folder / "folder").mkdir()
        self.write("completion", export("completion"))

    def offered(self, *words):
        """What bash offers at the end of a command line; the last word is the one at the cursor."""
        script = ('source ./completion; COMP_WORDS=(cusdesk "$@"); COMP_CWORD=$#; _cusdesk; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        answer = run("bash", "-euc", script, "bash", *words, cwd=self.folder)
        self.assertEqual(answer.stderr, "", words)
        return [line for line in answer.stdout.split("\n") if line]

    def test_commands_and_their_options_are_those_of_the_help(self):
        self.assertEqual(self.offered(""), commands() + ["help"])
        self.assertEqual(self.offered("help", ""), commands())
        self.assertEqual(self.offered("--"), options_of())
        for command in commands():
            self.assertEqual(self.offered(command, "--"), options_of(command), command)

    def test_places_and_what_they_offer(self):
        for words, expected in [
                (["ch"], ["check"]),
                (["--root", ""], ["folder"]),
                (["--root", "folder", "ru"], ["run"]),
                (["--root", "=", "folder", "ru"], ["run"]),
                (["check", "a"], ["a job.json"]),
                (["check", "other.txt", ""], ["a job.json", "folder"]),
                (["check", "o"], ["other.txt"]),  # none of the kind: any
                (["check", "other.txt", "--fo"], ["--format"]),
                (["check", "--format", ""], ["text", "json", "sarif", "junit"]),
                (["check", "--format", "="], ["text", "json", "sarif", "junit"]),
                (["check", "--format", "=", "s"], ["sarif"]),
                (["check", "--format=s"], ["--format=sarif"]),
                (["check", "--rule", "attr"], ["attribute="]),
                (["check", "--rule", "attribute", "=", "n"], ["note"]),
                (["check", "--rule=attribute=o"], ["--rule=attribute=off"]),
                (["check", "--rule", "attribute", "=", "off", "a"], ["a job.json"]),
                (["draw", "a job.json", "-o", "f"], ["folder"]),
                (["check", "--format", "json", "--fail-on", "n"], ["note", "never"]),
                (["show", "other.txt", "l"], ["labels"]),
                (["show", "--where", "other.txt", "c"], ["cuts"]),
                (["show", "c"], ["completion"]),
                (["show", "--bar", ""], []),
                (["run", "other.txt", "--"], []),
                (["run", "other.txt", "a"], ["a job.json"]),
                (["export", "x"], ["xsd"]),
                (["frobnicate", ""], [])]:
            self.assertEqual(sorted(self.offered(*words)), sorted(expected), words)


class ManualPage(unittest.TestCase):
    def test_it_formats_without_a_warning_and_names_everything(self):
        answer = run("groff", "-man", "-ww", "-Tutf8", "-P-c", "-rLL=200n", input=export("man"))
        self.assertEqual(answer.stderr, "")
        text = re.sub(".\b", "", answer.stdout).replace("‐", "-").replace("−", "-")
        for command in commands():
            self.assertRegex(text, rf"\n   {command}\n +cusdesk {command} ")
            section = re.search(rf"\n   {command}\n(.*?)(\n   \w|\n\w)", text, re.S).group(1)
            own = options_of(command)[:-len(options_of())]
            self.assertEqual(re.findall(r"^ +(?:-\w, )?(--[\w-]+)(?: [\w,]+)?\b", section, re.M)
                             [:len(own)], own)
            example = re.search(r"^  (cusdesk .*)$", cusdesk.run(command, "--help").stdout, re.M)
            self.assertIn(example.group(1), section)


unittest.main()
