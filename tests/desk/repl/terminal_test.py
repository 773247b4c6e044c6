"""`cusdesk repl` at a terminal: every line is typed into a real one, and read from it.

Usage: terminal_test.py CUSDESK
"""

import os
import pty
import re
import select
import signal
import time
import unittest

from cusdesk import CUSDESK, Folder

PATIENCE = 60  # seconds for any one answer; a test that passes never waits that long
LEFT, UP, DELETE, INTERRUPT, END, SEARCH = "\x02", "\x10", "\x08", "\x03", "\x04", "\x12"
PROMPT = "\r\n> "


class Terminal:
    """A program at a terminal of its own."""

    def __init__(self, folder, *words, **environment):
        self.status = None
        self.text = b""
        self.process, self.file = pty.fork()
        if self.process == 0:
            os.execve(CUSDESK, [CUSDESK, *words],
                      {"PATH": os.environ["PATH"], "TERM": "xterm", "HOME": str(folder), **environment})

    def read(self, deadline):
        """The next piece of what is written; nothing once the program has ended."""
        if not select.select([self.file], [], [], max(deadline - time.monotonic(), 0))[0]:
            raise AssertionError(f"no more than {self.text!r}")
        try:
            return os.read(self.file, 4096)
        except OSError:  # how Linux tells that the other side is gone
            return b""

    def expect(self, end):
        """What is written until `end`, which is taken as well."""
        deadline = time.monotonic() + PATIENCE
        while end.encode() not in self.text:
            piece = self.read(deadline)
            if not piece:
                raise AssertionError(f"ended without {end!r}: {self.text!r}")
            self.text += piece
        before, self.text = self.text.split(end.encode(), 1)
        return before.decode("utf-8")

    def type(self, text):
        os.write(self.file, text.encode("utf-8"))

    def ask(self, line):
        """Types a line; returns what is written for it."""
        self.type(line + "\r")
        return self.expect(PROMPT).split("\r\n", 1)[1:]

    def wait(self):
        """The exit status, once what is left is read."""
        if self.status is None:
            deadline = time.monotonic() + PATIENCE
            while self.read(deadline):
                pass
            self.status = os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])
        return self.status

    def close(self):
        if self.status is None:
            os.kill(self.process, signal.SIGKILL)
            self.wait()
        os.close(self.file)


class Repl(Folder):
    def open(self, *words, **environment):
        terminal = Terminal(self.folder, "repl", *words, **environment)
        self.addCleanup(terminal.close)
        self.greeting = terminal.expect(PROMPT)
        return terminal

    def test_expressions_print_and_statements_do_not(self):
        terminal = self.open()
        self.assertRegex(self.greeting, r'^cusdesk [\d.]+, Lua 5\.3\.\d\r\njob = require "cus_')
        for line, answer in [("1 + 1", ["2"]), ("=1, nil, 'a'", ["1\tnil\t\"a\""]), ("x = 5", []),
                             ("x", ["5"]), ("", []), ("print('a')", ["a"]), ("arg[0]", ['"cusdesk"']),
                             ("job == require('cus_ParseModule')", ["true"]),
                             ("t = {1} t.me = t", []), ("t", ["{1, me = <cycle: 1 up>}"]),
                             ("'\\27]0;x\\7\\u{202e}'", [r'"\x1b]0;x\x07\xe2\x80\xae"']),
                             ("setmetatable({}, {__tostring = function() return '\\27c' end})",
                              [r"\x1bc"]),
                             ("('x'):rep(1e6)", ['"' + "x" * 198 + '…" (1000000 bytes)']),
                             ("exit", ["Use exit() or Ctrl-D to end."]),
                             ("job.get_cuts", ["nil\r\ncusdesk: did you mean 'job.get_cut'?"])]:
            self.assertEqual(terminal.ask(line), answer, line)

    def test_module_answers_without_the_plug_in_s_lines(self):
        terminal = self.open()
        self.assertEqual(terminal.ask('job.getjson_Flash("window.json")'),
                         ['{errorCode = 0, info = "文件解析成功"}'])
        self.assertEqual(terminal.ask('job.get_cut("1")[1].BarName'), ['"65系列外框"'])

    def test_wide_characters_are_edited_one_at_a_time(self):
        terminal = self.open()
        self.assertEqual(terminal.ask('"外框窗"' + LEFT * 2 + DELETE + "扇" + LEFT * 2 + "65"),
                         ['"65外扇窗"'])
        self.assertEqual(terminal.ask('"外框窗"' + LEFT * 3 + DELETE), ['"框窗"'])

    def test_continuation_goes_on_until_the_chunk_is_whole(self):
        terminal = self.open()
        terminal.type("for i = 1, 2 do\r")
        terminal.expect("\r\n>> ")
        terminal.type("print(i * 10)\r")
        terminal.expect("\r\n>> ")
        self.assertEqual(terminal.ask("end"), ["10\r\n20"])
        terminal.type("{\r")
        terminal.expect("\r\n>> ")
        self.assertEqual(terminal.ask("7}"), ["{7}"])

    def test_errors_and_exceptions_leave_the_prompt_going(self):
        terminal = self.open()
        for line, message in [
            ("error('bad bar')", "cusdesk: stdin:1: bad bar\r\nstack traceback:"),
            ("x = = 1", "cusdesk: stdin:1: unexpected symbol near '='"),
            ("job.getjson_Flash('a.js')", "cusdesk: stdin:1: getjson_Flash: basic_string::substr"),
            ("setmetatable({}, {__tostring = error})", "cusdesk: "),
            ("error({})", "cusdesk: (error object is a table value)"),
        ]:
            answer = terminal.ask(line)
            self.assertTrue(answer and answer[0].startswith(message), (line, answer))
        self.assertEqual(terminal.ask("'still here'"), ['"still here"'])

    def test_interrupt_clears_lines_and_stops_scripts(self):
        terminal = self.open()
        terminal.type("nonsense" + INTERRUPT)
        terminal.expect(PROMPT)
        terminal.type("x = {\r")
        terminal.expect("\r\n>> ")
        terminal.type("1," + INTERRUPT)
        terminal.expect(PROMPT)
        self.assertEqual(terminal.ask("x"), ["nil"])
        terminal.ask("endless = 'print(\"go\") while true do end' step = coroutine.wrap(load(endless))")
        for line in ("print('go') while true do end", "step()", "coroutine.wrap(load(endless))()",
                     "while true do pcall(load(endless)) end"):
            terminal.type(line + "\r")
            terminal.expect("\r\ngo\r\n")
            terminal.type(INTERRUPT)
            self.assertIn("interrupted!\r\nstack traceback:", terminal.expect(PROMPT), line)
        self.assertEqual(terminal.ask("1"), ["1"])

    def test_tab_completes_names(self):
        terminal = self.open()
        self.assertEqual(terminal.ask('#job.get_c\t("")'), ["0"])
        self.assertEqual(terminal.ask("#str\t.form\t('ab')"), ["2"])
        terminal.type("job.getjson_\t")
        terminal.expect("getjson_Flash")
        terminal.expect("getjson_url")
        terminal.expect("> job.getjson_")
        terminal.type("u\t" + INTERRUPT)
        terminal.expect(PROMPT)
        self.assertEqual(terminal.ask("\t2"), ["2"], "nothing to complete: blanks")

    def test_history_is_walked_searched_and_kept(self):
        terminal = self.open()
        terminal.ask("'外框' .. 1")
        terminal.ask("2 + 2")
        self.assertEqual(terminal.ask(UP + UP), ['"外框1"'])
        terminal.type("os.exit(3)\r")
        self.assertEqual(terminal.wait(), 3)
        kept = self.folder / ".local/state/cusdesk/repl_history"
        self.assertEqual(kept.stat().st_mode & 0o077, 0)
        terminal = self.open()
        self.assertEqual(terminal.ask(UP + UP), ['"外框1"'])
        self.assertTrue(terminal.ask(SEARCH + "2 +")[0].endswith("\r\n4"))

    def test_history_is_kept_where_a_link_leads_and_replaces_no_device(self):
        file = self.folder / "cusdesk/repl_history"
        self.open(XDG_STATE_HOME=str(self.folder)).ask("1")
        file.rename(file.with_name("other"))
        file.symlink_to("other")
        self.open(XDG_STATE_HOME=str(self.folder)).ask("'second'")
        self.assertTrue(file.is_symlink())
        self.assertIn(b"second", file.read_bytes())
        file.unlink()
        os.mkfifo(file)
        self.open(XDG_STATE_HOME=str(self.folder)).ask("1")
        self.assertTrue(file.is_fifo())

    def test_end_of_input_ends_it(self):
        terminal = self.open()
        terminal.type("x =\r")
        terminal.expect("\r\n>> ")
        terminal.type(END)
        self.assertIn("unexpected symbol near <eof>", terminal.expect(PROMPT))
        terminal.type(END)
        self.assertEqual(terminal.wait(), 0)

    def test_script_runs_first_and_leaves_its_globals(self):
        script = self.write("first.lua", "loaded = arg[1] .. ...")
        terminal = self.open(str(script), "a")
        self.assertEqual(terminal.ask("loaded"), ['"aa"'])

    def test_poor_terminals_and_homeless_users_get_a_prompt_too(self):
        terminal = self.open(TERM="dumb", HOME="", LC_ALL="C")
        self.assertEqual(terminal.ask("6 * 7"), ["42"])


unittest.main()
