"""Command lines that make no sense, and what they are answered with.

Usage: command_line_test.py CUSDESK
"""

import os
import subprocess
import unittest

from cusdesk import CUSDESK, Folder, run


class CommandLine(unittest.TestCase):
    def test_senseless_ones_are_answered_with_one_line_and_2(self):
        for words, line in [
            ([], "which command? See 'cusdesk --help'"),
            (["rnu", "a.lua"], "unknown command 'rnu'; did you mean 'run'?"),
            (["frobnicate"], "unknown command 'frobnicate'; see 'cusdesk --help'"),
            (["--rot", "x"], "unknown option '--rot'; did you mean '--root'?"),
            (["--root"], "option '--root' needs an argument"),
            (["--version=3"], "option '--version' takes no argument"),
            (["-x"], "unknown option '-x'"),
            (["run", "-hx"], "unknown option '-x'"),
            (["--root=", "run", "a.lua"], "option '--root' needs a directory"),
            (["run"], "run: which SCRIPT? Usage: cusdesk run SCRIPT [ARG...]"),
            (["draw", "a.json", "b.json"], "draw: 'b.json' is one too many. Usage: cusdesk draw FILE"),
            (["show"], "show: which FILE? Usage: cusdesk show FILE... "
                       "[bars|pieces|works|cuts|holes|labels|dimensions]"),
            (["show", "job.json", "cuts", "--format", "jsn"],
             "show: --format is one of text, json, csv, not 'jsn'; did you mean 'json'?"),
            (["export", "scheme"], "export: what is 'scheme'? Did you mean 'schema'? Usage: cusdesk "
                                   "export [schema|xsd|stub|panel-stub|luacheckrc|completion|fish|"
                                   "man|tables]"),
            (["export"], "export: name one thing, or a folder with --into"),
            (["run", "--raw-error", "--no-such"], "unknown option '--no-such'"),
        ]:
            answer = run(*words)
            self.assertEqual((answer.stderr, answer.returncode), (f"cusdesk: {line}\n", 2), words)
            self.assertEqual(answer.stdout, "", words)

    def test_missing_files_are_answered_with_one_line_and_3(self):
        for words, start in [
            (["run", "no/such.lua"], "cannot open no/such.lua"),
            (["--plugin", "no/such.so", "run", "a.lua"], "cannot load the plug-in: "),
            (["--plugin", "", "run", "a.lua"], "cannot load the plug-in: "),
            (["--root", "no/such", "run", "a.lua"], "the root no/such is no directory: "),
            (["--root", CUSDESK, "run", "a.lua"], f"the root {CUSDESK} is no directory"),
            (["--plugin", CUSDESK, "run", "a.lua"], "cannot load the plug-in: "),
            (["--plugin", "libc.so.6", "run", "a.lua"], "cannot load the plug-in: "),
            (["show", "/", "works"], "cannot read /: it is a directory\n"),
            (["show", "\n\x1b[2J.json", "works"], "cannot read \\n\\x1b[2J.json: no such file\n"),
        ]:
            answer = run(*words)
            self.assertEqual(answer.returncode, 3, words)
            self.assertTrue(answer.stderr.startswith("cusdesk: " + start), answer.stderr)
            self.assertEqual(answer.stderr.count("\n"), 1, answer.stderr)

    def test_help_opens_with_examples(self):
        for words in (["--help"], ["help"], ["run", "-h"], ["--help", "run"], ["help", "run"]):
            answer = run(*words)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""), words)
            self.assertTrue(answer.stdout.startswith("Examples:\n  cusdesk "), answer.stdout)
        self.assertRegex(run("--version").stdout, r"^cusdesk \d+\.\d+\.\d+\n$")

    def test_full_disk_is_not_success(self):
        for words, script in ([["--help"], ""], [["run", "-"], "print(1)"],
                              [["run", "-"], "print(1) os.exit(0)"]):
            with open("/dev/full", "w", encoding="utf-8") as full:
                answer = run(*words, input=script, capture_output=False, stdout=full,
                             stderr=subprocess.PIPE)
            self.assertEqual(answer.returncode, 3, script)
            self.assertEqual(answer.stderr, "cusdesk: standard output could not be written\n")


class Scripts(Folder):
    def run_script(self, text, *arguments, options=()):
        script = self.write("script.lua", text)
        answer = run("--root", self.folder, "run", *options, script, *arguments)
        return answer, self.folder

    def test_arguments_are_those_of_the_stock_interpreter(self):
        answer, folder = self.run_script("io.write(arg[0], '|', #arg, '|', arg[2], '|', ...)",
                                         "-x", "two")
        self.assertTrue(answer.stdout.endswith(f"{folder}/script.lua|2|two|-xtwo"), answer.stdout)

    def test_options_of_the_program_stand_anywhere_before_the_script_and_q_behind_it_too(self):
        script = self.write("a.lua", "print(cus_ParseModule.getjson_Flash('no.json').errorCode, ...)")
        lines = ["cus_ParseModule " + "-" * 32, "cus_ParseModule2 " + "-" * 32,
                 "The string ends with .json", "read File error............."]
        root = ["--root", self.folder]
        for words, stdout, plugin in [
            ([*root, "run", script, "x"], [*lines, "-2\tx"], []),
            (["run", *root, "-q", script, "-v"], ["-2\t-v"], []),
            (["-q", "run", "-v", *root, script], ["-2"], lines),
            (["run", "--raw-errors", "-q", *root, script], ["-2"], []),
            ([*root, "run", script, "-q"], ["-2\t-q"], []),
        ]:
            answer = run(*words)
            self.assertEqual(answer.stdout.splitlines(), stdout, words)
            own = [line for line in answer.stderr.splitlines() if not line.startswith("cusdesk: ")]
            self.assertEqual(own, plugin, words)

    def test_exit_status_is_the_script_s_own(self):
        for text, code in [("os.exit(7)", 7), ("os.exit(true)", 0), ("return 5", 0),
                           ("error('x')", 1), ("syntax error", 1), ("error({})", 1),
                           ("error(setmetatable({}, {__tostring = function() return 'own' end}))",
                            1)]:
            self.assertEqual(self.run_script(text)[0].returncode, code, text)

    def test_errors_come_with_a_traceback(self):
        answer, folder = self.run_script("local function f() error('bad bar') end\nf()")
        self.assertTrue(answer.stderr.startswith(
            f"cusdesk: {folder}/script.lua:1: bad bar\nstack traceback:\n"), answer.stderr)

    def test_exceptions_of_the_module_are_lua_errors_with_its_function_s_name(self):
        text = "print(pcall(cus_ParseModule.getjson_Flash, 'a.js'))\ncus_ParseModule.getjson_Flash('a.js')"
        answer, folder = self.run_script(text)
        self.assertIn("false\tgetjson_Flash: basic_string::substr", answer.stdout)
        self.assertIn(f"{folder}/script.lua:2: getjson_Flash: basic_string::substr", answer.stderr)
        answer, _ = self.run_script(text, options=["--raw-errors"])
        self.assertIn("false\t", answer.stdout)
        self.assertNotIn("getjson_Flash: basic", answer.stdout + answer.stderr)
        self.assertEqual(answer.returncode, 1)

    def test_lines_of_plugin_and_script_stay_in_order_in_a_pipe(self):
        answer, _ = self.run_script(
            "print('a') cus_ParseModule.getjson_Flash('no.json') print('b')")
        self.assertEqual(answer.stdout.splitlines()[2:],
                         ["a", "The string ends with .json", "read File error.............", "b"])

    def test_progress_goes_below_the_root_unless_the_environment_says_otherwise(self):
        text = "print(cus_ParseModule.save_cutCurIndex('3', '7'))"
        answer, folder = self.run_script(text)
        self.assertEqual(answer.stdout.splitlines()[2:], ["无法打开文件！", "7"])
        target = self.write("mnt/data/CustomFileDir/cutCurIndex.txt", "old and longer than the new\n")
        other = folder / "other.txt"
        for chosen, written in (("", target), (str(other), other)):
            answer = run("--root", folder, "run", folder / "script.lua",
                         env={**os.environ, "CUS_CUTCURINDEX_FILE": chosen})
            self.assertEqual(answer.stdout.splitlines()[2:], ["数据已写入文件！", "7"])
            self.assertEqual(written.read_text(), "3\n7\n")


unittest.main()
