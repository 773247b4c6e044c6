"""`cusdesk panel --svg`: steps of the operator, and what a script can do with the table.

Usage: picture_test.py CUSDESK       UPDATE_EXPECTED=1 in the environment rewrites the expected picture
"""

import os
import pathlib
import re
import resource
import unittest

from cusdesk import CUSDESK, Folder

EXPECTED = pathlib.Path(__file__).with_name("expected") / "cut_list.svg"


def texts(svg):
    return re.findall(r"<text[^>]*>([^<]*)</text>", svg)


class Panel(Folder):
    def panel(self, *words, **options):
        return self.run_here("panel", *words, **options)

    def draw(self, *words):
        return self.panel("--svg", "-", *words, code=0).stdout

    def script(self, text, *words, **options):
        return self.panel("--svg", "-", "--script", self.write("table.lua", text), *words, **options)


class Steps(Panel):
    def test_shipped_cut_list_after_paging_and_a_click(self):
        words = ("--size", "800x160", "--page", "2", "--click", "100,90")
        svg = self.draw(*words)
        if os.environ.get("UPDATE_EXPECTED"):
            EXPECTED.write_text(svg, encoding="utf-8")
        self.assertEqual(svg, EXPECTED.read_text(encoding="utf-8"))
        self.assertEqual(svg, self.draw(*words))

    def test_throttle_refuses_a_page_within_100_ms_and_grants_a_later_one(self):
        first, second, third = (self.draw("--page", page) for page in "123")
        self.assertEqual(len({first, second, third}), 3)
        self.assertEqual(self.draw("--page", "2", "--clock", "99"), first)
        self.assertEqual(self.draw("--page", "2", "--clock", "100"), second)
        self.assertEqual(self.draw("--page", "3", "--clock", "50"), third)
        self.assertEqual(self.draw("--page", "3", "--clock", "0"), first)
        selected = self.draw("--page", "2", "--clock", "0", "--click", "9,99")
        self.assertIn("#ffd24d", selected, "a click is not throttled")
        self.assertEqual(texts(selected), texts(second), "the redraw shows the rows set before")

    def test_a_picture_is_of_the_page_where_the_script_is_or_that_is_asked_for(self):
        text = ("panel.grid(2, 1) panel.rows{{1}, {2}, {3}, {4}, {5}, {6}} panel.update() "
                "panel.page('down') panel.update()")
        for words, cells in [((), ["3", "4"]), (("--page", "1"), ["1", "2"]), (("--page", "3"), ["5", "6"])]:
            self.assertEqual(texts(self.script(text, *words).stdout), cells, words)

    def test_png_needs_the_converter(self):
        self.panel("--png", "table.png", code=0)
        self.assertEqual((self.folder / "table.png").read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        if not pathlib.Path(CUSDESK).read_bytes().startswith(b"#!"):  # an emulator has to be found
            self.refused(3, "PNG needs the program rsvg-convert ", "panel", "--png", "table.png",
                         env={"PATH": str(self.folder)})

    def test_wrong_command_lines_are_answered_with_one_line(self):
        for words, code, line in [
            ("--port 70000", 2, "a number from 0 to 65535"),
            ("--page 2", 2, "name it with --svg"),
            ("--svg - --no-open", 2, "is for the page"),
            ("--svg - --page 0", 2, "a number from 1 to 65535"),
            ("--svg - --click 5", 2, "X,Y in pixels"),
            ("--svg - --size 0x5", 2, "WIDTHxHEIGHT"),
            ("--svg none/a.svg", 3, "cannot write none/a.svg: No such file or directory"),
            ("--svg /dev/full", 3, "cannot write /dev/full"),
            ("--svg - --page 7", 3, "no page 7: 6 of 6"),
        ]:
            self.refused(code, line, "panel", *words.split())


class Scripts(Panel):
    def test_lists_functions_and_orders_show_the_same_rows(self):
        table = "panel.head{'n', 'text'} %s panel.grid(2, 2, '1:3') %s panel.update(%s)"
        rows = "panel.rows{{1, 'a'}, {2}, {3, true, 'beyond'}, nil, {5.5, '<b>&'}}"
        function = ("panel.rows(function(first, last) local t = {} for i = first, last do "
                    "t[#t + 1] = {i, first .. '-' .. last} end return t end)")
        for order, data, total, page, expected in [
            ("", rows, "", 1, ["1", "a", "2"]),
            ("", rows, "5", 2, ["3", "true"]),
            ("", rows, "", 3, ["5.5", "&lt;b&gt;&amp;"]),
            ("panel.order(1)", rows, "3", 1, ["3", "true", "2"]),
            ("panel.order(1)", rows, "3", 2, ["1", "a"]),
            ("", function, "65535", 3, ["5", "5-6", "6", "5-6"]),
            ("panel.order(1)", function, "5", 2, ["3", "2-3", "2", "2-3"]),
            ("", rows, "0", 1, []),
        ]:
            text = table % (order, data, total)
            answer = self.script(text, "--page", str(page))
            self.assertEqual(texts(answer.stdout), ["n", "text"] + expected, text + answer.stderr)

    def test_handlers_take_the_place_of_the_default(self):
        text = """
          panel.grid(3, 1) panel.rows{{'a'}, {'b'}, {'c'}, {'d'}} panel.update()
          function panel.on_page(direction)
            print(direction, panel.page(direction), panel.page()) panel.update()
          end
          function panel.on_click(index) print('row', index, panel.index()) end
          print(panel.index(), panel.width, panel.height, panel.job)
        """
        for click, row in [("10,130", "row\t4\t4"), ("10,400", "row\tnil\tnil"), ("10,30", None)]:
            answer = self.script(text, "--page", "2", "--click", click)
            self.assertEqual(answer.returncode, 0, answer.stderr)
            expected = ["nil\t800\t480\tnil", "down\ttrue\t2\t2"] + ([row] if row else [])
            self.assertEqual(answer.stderr.splitlines(), expected)

    def test_output_keeps_its_order_and_the_plug_in_s_lines_come_with_v_only(self):
        text = "io.write('a') print('b') cus_ParseModule.getjson_Flash('no.json') io.stdout:write('c')"
        quiet = self.script(text).stderr.splitlines()
        self.assertEqual([quiet[0], quiet[-1]], ["ab", "c"])
        self.assertRegex(quiet[1], "^cusdesk: /mnt/.*no.json: ")
        loud = self.script(text, "-v").stderr.splitlines()
        self.assertEqual(loud[2:4], ["ab", "The string ends with .json"])
        self.assertEqual(loud[-2:], ["read File error.............", "c"])

    def test_job_of_this_pc_is_what_panel_job_loads(self):
        for name in ("a", "mine.json"):
            self.write(name, '{"Version": "1.0", "Bar": [{"piece": [{}]}]}')
            answer = self.script("print(#cus_ParseModule.get_print(), "
                                 "cus_ParseModule.getjson_Flash(panel.job).errorCode)", "--job", name)
            self.assertEqual(answer.stderr, "1\t0\n", name)

    def test_mistakes_are_told_with_their_place(self):
        for text, message in [
            ("panel.grid(1, 2, '12')", ":1: bad argument #3 to 'grid' (one digit"),
            ("panel.grid(65536, 1)", "bad argument #1 to 'grid' (0 to 65535"),
            ("panel.update(1)", "call panel.grid first"),
            ("panel.update()", "bad argument #1 to 'update'"),
            ("panel.rows('x')", "list or function expected"),
            ("panel.order(2)", "0 or 1 expected"),
            ("panel.page('left')", "invalid option 'left'"),
            ("panel.grid(1, 1) panel.rows(print) panel.update(3)", "returned no list"),
            ("panel.grid(1, 1) panel.rows{{setmetatable({}, {__tostring = error})}} panel.update()",
             "table.lua:1"),
            ("local rows = {} for i = 1, 80 do rows[i] = {[65535] = i} end panel.grid(80, 65535) "
             "panel.rows(rows) panel.update()", "the texts to show take more than 64 MiB"),
            ("error({})", "(error object is a table value)"),
            ("os.exit(0)", "a panel's script ends with the panel"),
            ("cus_ParseModule.getjson_Flash('a.js')", ":1: getjson_Flash: basic_string::substr"),
            ("syntax error", "syntax error near"),
        ]:
            answer = self.script(text)
            self.assertEqual((answer.returncode, answer.stdout), (1, ""), text)
            self.assertIn(message, answer.stderr)

    def test_memory_that_runs_out_is_told(self):
        def limited():
            resource.setrlimit(resource.RLIMIT_AS, (120 << 20, 120 << 20))

        if self.run_here("--version", preexec_fn=limited).returncode != 0:
            self.skipTest("needs more memory than that to start")
        answer = self.script("local row, long = {}, ('x'):rep(1 << 20) for i = 1, 60 do row[i] = long end "
                             "panel.grid(1, 1000) panel.rows{row} panel.update()", preexec_fn=limited)
        self.assertEqual((answer.returncode, answer.stderr), (1, "cusdesk: not enough memory\n"))


unittest.main()
