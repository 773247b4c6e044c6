"""`cusdesk repl` where its input is no terminal.

Usage: pipe_test.py CUSDESK
"""

import pathlib
import unittest

from cusdesk import Folder

EXAMPLE = pathlib.Path(__file__).parents[3] / "examples/mnt/data/CustomFileDir/XmlFile/window.xml"


class Pipe(Folder):
    def type(self, text, *words):
        return self.run_here("repl", *words, input=text)

    def test_answers_only_and_the_status_of_a_script(self):
        for text, code, output, error in [
            ("1 + 1\nx = {\n1}\nx", 0, "2\n{1}\n", ""),
            ("", 0, "", ""),
            ("print(1)\nerror('b\\27d\\n\\t')\nprint(2)", 1, "1\n", "cusdesk: stdin:1: b\\x1bd\n\t\nstack traceb"),
            ("1\nx = = 2\n3", 1, "1\n", "cusdesk: stdin:1: unexpected symbol near '='\n"),
            ("for i = 1, 2 do", 1, "", "cusdesk: stdin:1: 'end' expected near <eof>\n"),
            ("job.getjson_Flash('a.js')\n1", 1, "", "cusdesk: stdin:1: getjson_Flash: basic_"),
            ("os.exit(7)", 7, "", ""),
            ("quit(7)", 7, "", ""),
            ("'\\27[1m'", 0, "\33[1m\n", ""),
            ("help(job.save_cutCurIndex)", 0, "save_cutCurIndex(first, second)\n"
             "Writes two texts to the progress file, a line each.\n"
             "  first   first line\n  second  second line\n"
             "Answers with the second text, whether or not the file could be written.\n", ""),
            ("pritn(1)", 1, "", "cusdesk: stdin:1: attempt to call a nil value (global 'pritn')\n"
             "stack traceback:\n\tstdin:1: in main chunk\ncusdesk: did you mean 'print'?\n"),
            ("setmetatable(_G, {__index = error}) x = 1\nx", 0, "1\n", ""),
        ]:
            answer = self.type(text)
            self.assertEqual((answer.returncode, answer.stdout), (code, output), text)
            self.assertEqual(answer.stderr[:len(error)] if error else answer.stderr, error, text)

    def test_plug_in_s_lines_are_told_on_demand(self):
        text = "job.getjson_Flash('window.json').errorCode"
        self.assertEqual(self.type(text).stdout, "0\n")
        loud = self.type(text, "-v")
        self.assertEqual(loud.stdout, "0\n")
        self.assertIn("The string ends with .json\n", loud.stderr)

    def test_job_of_this_pc_is_loaded_first(self):
        self.assertEqual(self.type("#job.get_cut('')", "--job", EXAMPLE).stdout, "46\n")

    def test_script_that_fails_ends_it(self):
        script = self.write("s.lua", "print('script') error('no')")
        answer = self.type("print('prompt')", script)
        self.assertEqual((answer.returncode, answer.stdout), (1, "script\n"))


unittest.main()
