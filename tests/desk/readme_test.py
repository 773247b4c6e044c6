"""The README's script runs as printed, and its tables name what is there.

Usage: readme_test.py CUSDESK README
"""

import pathlib
import re
import sys
import unittest

import cusdesk

README = pathlib.Path(sys.argv.pop()).read_text(encoding="utf-8")

ROOT = pathlib.Path(__file__).resolve().parents[2]


def output_of(script):
    return cusdesk.run("run", "-", input=script).stdout.splitlines()


class Readme(unittest.TestCase):
    def test_first_script_prints_the_shipped_job_s_cuts(self):
        script = re.search(r"```lua\n(.*?)```", README, re.S).group(1)
        lines = output_of(script)
        self.assertEqual(lines[3], "0\t文件解析成功")
        self.assertEqual(lines[4], "1\tDEMO-0101\t1200.0\t45\t45")
        self.assertEqual(len(lines), 50)

    def test_function_table_names_the_functions_of_the_module(self):
        table = re.search(r"\| Script function.*?\n\n", README, re.S).group(0)
        named = set(re.findall(r"`(\w+)\(", table))
        lines = output_of("for name in pairs(cus_ParseModule) do print(name) end")
        self.assertEqual(named, set(lines[2:]), "README.md: the table of script functions")

    def test_command_table_names_the_commands_of_cusdesk(self):
        table = re.search(r"\| Command.*?\n\n", README, re.S).group(0)
        help_text = cusdesk.run("--help").stdout
        listed = re.search(r"Commands:\n(.*?)\n\n", help_text, re.S).group(1)
        commands = re.findall(r"^  (\w+) +(.*)", listed, re.M)
        rows = "".join(f"\n| `cusdesk {name} ...` | {text} |" for name, text in commands)
        self.assertEqual(re.findall(r"`cusdesk (\w+)", table), [name for name, _ in commands],
                         f"README.md: the table of commands needs these rows:{rows}")

    def test_the_picture_is_what_draw_draws(self):
        job = ROOT / "examples/mnt/data/CustomFileDir/JsonFile/window.json"
        drawn = cusdesk.run("draw", job, "--bar", "3", "-o", "-").stdout
        self.assertTrue(drawn == (ROOT / "docs/drawing.svg").read_text(encoding="utf-8"),
                        "docs/drawing.svg is no longer what is drawn: look at it after make pictures")

    def test_folder_table_names_folders_that_exist(self):
        table = re.search(r"\| Folder.*?\n\n", README, re.S).group(0)
        for folder in re.findall(r"`([\w/]+)/`", table):
            self.assertTrue((ROOT / folder).is_dir(), folder)


unittest.main()
