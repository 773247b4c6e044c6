"""Command lines that make no sense, and what they are answered with.

Usage: command_line_test.py CUSDESK
"""

import os
import pathlib
import re
import subprocess
import unittest

from cusdesk import CUSDESK, Folder, run


SOURCE = pathlib.Path(__file__).resolve().parents[2]
JOB = '{"Version":"1.0","Bar":[{"BarNumber":1,"MaxY":1,"MaxZ":1,"piece":[{"cut":{"Length":"9"}}]}]}'
NO_FILE = "No such file or directory"
SYNTAX = "3:1: Missing '}' or object member name"

# What is typed, the exit code, and the one line on standard error; of a list its beginning.
WRONG = [
    ("", 2, "which command? See 'cusdesk --help'"),
    ("rnu a.lua", 2, "unknown command 'rnu'; did you mean 'run'?"),
    ("frobnicate", 2, "unknown command 'frobnicate'; see 'cusdesk --help'"),
    ("--rot x", 2, "unknown option '--rot'; did you mean '--root'?"),
    ("--root", 2, "option '--root' needs an argument"),
    ("--version=3", 2, "option '--version' takes no argument"),
    ("-x", 2, "unknown option '-x'"),
    ("run -hx", 2, "unknown option '-x'"),
    ("run --raw-error --no-such", 2, "unknown option '--no-such'"),
    ("--root= run a.lua", 2, "option '--root' needs a directory"),
    ("--root no/such run a.lua", 3, f"the root no/such is no directory: {NO_FILE}"),
    ("--root a.lua run a.lua", 3, "the root a.lua is no directory"),
    ("--plugin no/such.so run a.lua", 3, f"cannot load the plug-in: cannot read no/such.so: {NO_FILE}"),
    ("--plugin= run a.lua", 3, f"cannot load the plug-in: cannot read : {NO_FILE}"),
    ("--plugin job.json show job.json cuts", 3, "cannot load the plug-in: job.json is neither a library "
                                                "nor a program for Linux (no ELF file)"),
    # operands
    ("run", 2, "run: which SCRIPT? Usage: cusdesk run SCRIPT [ARG...]"),
    ("draw a.json b.json", 2, "draw: 'b.json' is one too many. Usage: cusdesk draw FILE"),
    ("show", 2, "show: which FILE? Usage: cusdesk show FILE... ["),
    ("show job.json cuts --format jsn", 2,
     "show: --format is one of text, json, csv, html, not 'jsn'; did you mean 'json'?"),
    ("show cuts", 2, "show: which FILE? 'cusdesk show FILE cuts'"),
    ("show job.json cuts pieces", 2, "show: 'cuts' or 'pieces'? One table at a time"),
    ("check --fail-on none job.json", 2, "check: --fail-on none: did you mean 'never'?"),
    ("diff - -", 2, "diff: '-' is given twice, but standard input can be read once only. Usage: "
                    "cusdesk diff OLD NEW"),
    ("run --job a.json --job b.json a.lua", 2, "run: option '--job' is given twice: 'a.json' and 'b.json'"),
    ("panel --svg - --png -", 2, "panel: standard output takes one picture, of --svg or of --png"),
    ("export scheme", 2, "export: what is 'scheme'? Did you mean 'schema'? Usage: cusdesk export ["),
    ("export", 2, "export: name one thing, or a folder with --into"),
    ("doctor", 2, "doctor: which PLUGIN? Usage: cusdesk doctor PLUGIN"),
    ("panel job.json", 2, "panel: what is 'job.json'? A script comes with --script, a job with --job"),
    ("run --fault nousb a.lua", 2,
     "--fault is one of no-usb, download=CODE, like-panel, not 'nousb'; did you mean 'no-usb'?"),
    ("repl --fault no-usb --fault download=1", 2,
     "--fault download=CODE: a failure is a number below 0, not '1'"),
    # files for scripts
    ("run no.lua", 3, f"cannot read no.lua: {NO_FILE}"),
    ("repl dir.json/", 3, "cannot read dir.json/: Is a directory"),
    ("panel --script no.lua", 3, f"cannot read no.lua: {NO_FILE}"),
    ("run job.json", 2, "run: job.json is a job, not a script: give it with --job job.json, or see "
                        "'cusdesk show job.json'"),
    # jobs
    ("check no.json", 3, f"cannot read no.json: {NO_FILE}"),
    ("show \n\x1b[2J.json", 3, f"cannot read \\n\\x1b[2J.json: {NO_FILE}"),
    ("show no.json cuts", 3, f"cannot read no.json: {NO_FILE}"),
    ("draw dir.json -o a.svg", 3, "cannot read dir.json: Is a directory"),
    ("run -q --job pipe.json a.lua", 3, "cannot read pipe.json: not a regular file"),
    ("repl --job no.json", 3, f"cannot read no.json: {NO_FILE}"),
    ("panel --job no.json", 3, f"cannot read no.json: {NO_FILE}"),
    ("show bad.json", 3, f"cannot load bad.json:{SYNTAX}; cusdesk check bad.json tells why"),
    ("show bad.json cuts", 3, f"cannot load bad.json:{SYNTAX}; cusdesk check bad.json tells why"),
    ("show - cuts", 3, f"cannot load <stdin>:{SYNTAX}; cusdesk check - tells why"),
    ("draw bad.json -o a.svg", 3, f"cannot load bad.json:{SYNTAX}; cusdesk check bad.json tells why"),
    ("run -q --job ./bad.json a.lua", 3,
     f"cannot load ./bad.json:{SYNTAX}; cusdesk check ./bad.json tells why"),
    ("repl --job none.json", 3,
     "cannot load none.json: the panel answers -3; cusdesk check none.json tells why"),
    ("panel --job bad.json --png a.png", 3,
     f"cannot load bad.json:{SYNTAX}; cusdesk check bad.json tells why"),
    ("draw empty.xml -o a.svg", 3,
     "cannot load empty.xml: the document is empty; cusdesk check empty.xml tells why"),
    ("draw raises.xml -o a.svg", 3,
     'cannot load raises.xml: loading raises "stod"; cusdesk check raises.xml tells why'),
    ("show raises.xml cuts", 3,
     'cannot load raises.xml: loading raises "stod"; cusdesk check raises.xml tells why'),
    # what they are asked
    ("draw job.json", 2, "draw: say where to draw, with '-o FILE.svg', '-o FILE.png' or '-o -' for SVG on "
                         "standard output"),
    ("draw job.json --bar 99 -o -", 3, "draw: the job has no bar 99"),
    ("draw job.json -q -o no/A.SVG", 3, f"cannot write no/A.SVG: {NO_FILE}"),
    ("draw job.json -q -o no/a.png", 3, f"cannot write no/a.png: {NO_FILE}"),
]


class CommandLine(Folder):
    def test_what_cannot_be_done_is_answered_with_one_line(self):
        for name, text in [("a.lua", ""), ("job.json", JOB), ("bad.json", "{\n\n!"), ("none.json", "{}"),
                           ("empty.xml", ""), ("dir.json/x", ""),
                           ("raises.xml", "<J><Bar><Piece><CtrsZ>1</CtrsZ><Work><ProfiLav>x"
                            "</ProfiLav></Work></Piece></Bar></J>")]:
            self.write(name, text)
        os.mkfifo(self.folder / "pipe.json")
        for line, code, said in WRONG:
            answer = self.run_here(*[word for word in line.split(" ") if word], input="{\n\n!")
            told = answer.stderr[:len(said) + 9] + "\n" if said.endswith("[") else answer.stderr
            self.assertEqual((answer.returncode, answer.stdout, told),
                             (code, "", f"cusdesk: {said}\n"), line)

    def test_every_example_of_help_and_pages_runs_as_typed(self):
        self.run_here("export", "--examples", ".", code=0)
        (self.folder / "bin").mkdir()
        (self.folder / "bin/cusdesk").symlink_to(CUSDESK)
        plugin = pathlib.Path(CUSDESK).parent / "libCustom_LuaParseModule.so"
        for copy in ("old.so", plugin.name, "sysroot/usr/bin/panel"):
            self.write(copy, plugin.read_bytes() if plugin.exists() else b"")
        helps = [run("--help").stdout]
        helps += [run(command, "--help").stdout for command in re.findall(r"^  (\w+) +\w", helps[0].split(
            "\nCommands:\n")[1].split("\n\n")[0], re.M)]
        examples = re.findall(r"^  (\S.*?)(?:   *[^|>].*)?$", "".join(
            text.split("\nUsage: ")[0] for text in helps), re.M)
        self.assertGreater(len(examples), 35)
        pages = "".join(page.read_text(encoding="utf-8") for page in [
            SOURCE / "README.md", SOURCE / "examples/README.md", *sorted(SOURCE.glob("docs/*.md"))])
        for name, script in re.findall(r"^`(\w+\.lua)`:\n```lua\n(.*?)^```", pages, re.M | re.S):
            self.write(name, script)
        typed = re.findall(r"^(?:    |\| [^|`]*\| `)?((?:cusdesk|cp|echo) [^`#\n]*[^`#\s])(?: *#.*|` \|)?$",
                           pages, re.M)
        self.assertGreater(len(typed), 40)
        for example in examples + typed:
            stays = "--watch" in example or example.startswith("cusdesk view")
            if stays or "fish" in example or ("doctor" in example and not plugin.exists()):
                continue
            line = example + " --svg -" * example.startswith("cusdesk panel") * ("svg" not in example)
            done = subprocess.run(["bash", "-c", line], cwd=self.folder, stdin=subprocess.DEVNULL,
                                  capture_output=True, encoding="utf-8", check=False, timeout=120,
                                  env={**os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}"})
            reports = any(command in line for command in ("check", "diff", "doctor"))
            self.assertIn(done.returncode, (0, 1) if reports else (0,), line + "\n" + done.stderr)

    def test_help_opens_with_examples(self):
        for words in (["--help"], ["help"], ["run", "-h"], ["--help", "run"], ["help", "run"]):
            answer = run(*words)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""), words)
            self.assertTrue(answer.stdout.startswith("Examples:\n  cusdesk "), answer.stdout)
        self.assertRegex(run("--version").stdout, r"^cusdesk \d+\.\d+\.\d+\n$")

    def test_help_is_folded_at_words_to_the_width_of_the_terminal(self):
        whole = self.run_here("run", "--help").stdout
        narrow = self.on_terminal("run", "--help", columns=60)
        self.assertLessEqual(max(map(len, narrow.splitlines())), 60)
        self.assertEqual(narrow.split(), whole.split())
        self.assertIn("\n  cusdesk run demo.lua\n      with the jobs that ship with cusdesk\n", narrow)

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

    def test_changed_upvalues_of_the_module_are_an_error(self):
        for value in ("5", "0", "10", "'x'", "io.write", "cus_ParseModule.get_cut"):
            answer, _ = self.run_script(f"""debug.setupvalue(cus_ParseModule.get_cut, 1, {value})
                print(pcall(cus_ParseModule.get_cut, ''))""")
            self.assertEqual(answer.returncode, 0, (value, answer))
            if value != "5":
                self.assertIn("false\tthe upvalue of a module function was changed", answer.stdout)

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
