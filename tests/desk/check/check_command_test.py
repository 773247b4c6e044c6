"""cusdesk check as people and build servers meet it: formats, exit codes, terminals.

Usage: check_command_test.py CUSDESK
"""

import json
import re
import signal
import subprocess
import unittest

import cusdesk

SMALL = ("--rule", "missing-key=off")  # the jobs here leave out what does not matter for a test
CLEAN = ('{"Version": "1.0", "Bar": [{"BarNumber": 1, "MaxY": 60, "MaxZ": 70, "length": 6000, "piece": ['
         '{"PieceNumber": 1, "BarCode": "A", "cut": {"Length": "900", "sxB": "45", "dxB": "90"}, '
         '"work": [{"Name": "drain", "ProfiLav": 1, "PositionX": 1.5}]}]}]}')
ODD = '{"Version": "1.0", "Bar": [], // note\n "Name": "<\u7a93&\ufffe\\uffff>", "Remark\\u0007": 1}'
BAD = '{"Version": "1.0", "Bar": [{"BarNumber": "1"}]}'


class Folder(cusdesk.Folder):
    def setUp(self):
        super().setUp()
        for name, text in [("clean.json", CLEAN), ("odd.json", ODD), ("bad.json", BAD)]:
            self.write(name, text)

    def check(self, *words, code=None):
        return self.run_here("check", *SMALL, *words, code=code)


class Check(Folder):
    def test_exit_code_follows_the_gravest_finding(self):
        done = self.check("clean.json", code=0)
        self.assertEqual((done.stdout, done.stderr), ("", ""))
        for words, code in [
            (["bad.json"], 1), (["bad.json", "--fail-on", "never"], 0),
            (["odd.json", "--fail-on=error"], 0), (["--fail-on", "warning", "odd.json"], 1),
            (["odd.json", "clean.json", "--fail-on", "error", "bad.json"], 1),
            (["bad.json", "no.json"], 3), ([], 2), (["--fail-on", "x", "bad.json"], 2),
            (["--format", "html", "bad.json"], 2),
        ]:
            self.check(*words, code=code)
        self.write("a/deep/er.xml", "<Job/>")
        self.write("a/b.json", BAD)
        self.write("a/c.JSON", BAD)
        self.write("empty/job.txt", BAD)
        done = self.check("no.json", "a", "empty", code=3)
        self.assertEqual(done.stderr, "cusdesk: cannot read no.json: No such file or directory\n"
                         "cusdesk: cannot read empty: no *.json and no *.xml in this folder\n")
        self.assertEqual([line.partition(":")[0] for line in done.stdout.splitlines()],
                         ["a/b.json", "a/c.JSON", "a/c.JSON", "a/deep/er.xml"])

    def test_rules_weigh_what_the_user_says_or_are_explained(self):
        self.write("late.json", JOB % '{"BarNumber": "1", "piece": [{"cut": {"Length": "9"}}]}')
        self.write("short.json", JOB % (
            '{"BarNumber": 1, "MaxY": 1, "MaxZ": 1, "length": 6000, "piece": [%s, "work": [{"Name": "a", '
            '"PositionX": 9}]}]}' % (CUT % "1.200")[:-1]))
        self.write("wrong.json", JOB % (
            '{"BarNumber": 1, "MaxY": 1, "MaxZ": 1, "piece": [%s, "work": [{"Name": "a"}]}]}' % (CUT % "x")[:-1]))
        point, beside = "thousands-point=", "work-beside-piece="
        for name, settings, told in [
            ("late", ["raises=note", "wrong-type=off"], "raises:note"),
            ("late", ["raises=note", "wrong-type=note"], "wrong-type:note raises:note"),
            ("late", ["raises=off"], "wrong-type:error"),
            ("late", ["wrong-type=note"], "raises:error wrong-type:note"),
            ("short", [], "thousands-point:error work-beside-piece:error"),
            ("short", [point + "off"], "work-beside-piece:error"),
            ("short", [point + "warning"], "thousands-point:warning work-beside-piece:error"),
            ("short", [beside + "off"], "thousands-point:warning"),
            ("wrong", ["raises=off"], "not-a-number:error"),
        ]:
            done = self.check(*(word for one in settings for word in ("--rule", one)), "--format", "json",
                              f"{name}.json", code=0 if ":error" not in told and ":warning" not in told else 1)
            findings = json.loads(done.stdout)["findings"]
            self.assertEqual(" ".join(f"{one['rule']}:{one['severity']}" for cause in findings
                                      for one in [cause, *cause.get("consequences", [])]), told, (name, settings))
        for words in (["--explain", "carried-ove"], ["--rule", "carried-ove=off", "bad.json"]):
            self.assertIn("did you mean 'carried-over'?", self.check(*words, code=2).stderr)
        self.assertIn("off, note, warning, error", self.check("--rule", "raises=no", "x", code=2).stderr)

    def test_json_tells_every_value_of_a_carried_finding(self):
        self.write("next.json", '{"Version": "1.0",\n "Bar": [{}]}')
        answer = json.loads(self.check("--sequence", "--format", "json", "clean.json", "next.json",
                                       "no.json", code=3).stdout)
        carried = [one for one in answer["findings"] if one["rule"] == "carried-over"]
        self.assertEqual(len(carried), 1)
        self.assertEqual({one["key"]: (one["value"], one["file"], one["line"], one["element"])
                          for one in carried[0]["carried"]},
                         {"BarNumber": ("1", "clean.json", 1, "bar 1"),
                          "MaxY": ("60", "clean.json", 1, "bar 1"),
                          "MaxZ": ("70", "clean.json", 1, "bar 1"),
                          "length": ("6000", "clean.json", 1, "bar 1")})
        self.assertEqual((carried[0]["file"], carried[0]["line"], carried[0]["column"]),
                         ("next.json", 2, 10))
        self.assertEqual([one["key"] for one in json.loads(
            self.check("bad.json", "--format", "json").stdout)["findings"] if "key" in one],
                         ["BarNumber"])
        self.assertEqual([one["file"] for one in answer["unreadable"]], ["no.json"])
        self.assertEqual(answer["summary"], {"files": 2, "errors": 1, "warnings": 0, "notes": 0})

    def test_sarif_has_the_shape_that_build_servers_want(self):
        self.write("\u7a93 1%.json", BAD)
        answer = json.loads(self.check("--format", "sarif", "\u7a93 1%.json", "odd.json").stdout)
        self.assertEqual(answer["version"], "2.1.0")
        (run,) = answer["runs"]
        rules = run["tool"]["driver"]["rules"]
        self.assertEqual(run["columnKind"], "unicodeCodePoints")
        self.assertTrue(run["invocations"][0]["executionSuccessful"])
        self.assertGreater(len(run["results"]), 1)
        for rule in rules:
            self.assertIn(rule["help"]["text"].removeprefix("Cure: "), rule["help"]["markdown"])
            self.assertTrue(rule["fullDescription"]["text"].endswith("."), rule)
        for result in run["results"]:
            self.assertEqual(rules[result["ruleIndex"]]["id"], result["ruleId"])
            self.assertIn(result["level"], ("error", "warning", "note"))
            self.assertTrue(result["message"]["text"])
            region = result["locations"][0]["physicalLocation"]["region"]
            self.assertGreater(region["startLine"], 0)
            self.assertGreater(region.get("startColumn", 1), 0)
        uri = run["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
        self.assertEqual(uri, "%E7%AA%93%201%25.json")

    def test_junit_is_xml_whatever_the_job_holds(self):
        done = self.check("--format", "junit", "clean.json", "odd.json", "bad.json", "no.json",
                          "--fail-on", "error", code=3)
        subprocess.run(["xmllint", "--noout", "-"], input=done.stdout, encoding="utf-8", check=True)
        self.assertEqual(re.findall(r'tests="(\d+)" failures="(\d+)" errors="(\d+)"', done.stdout),
                         [("1", "0", "0"), ("2", "0", "0"), ("1", "1", "0"), ("1", "0", "1")])

    def test_many_alike_are_shown_three_times_and_counted(self):
        pieces = ",\n".join('{"PieceNumber": %d, "note": 1, "cut": {"Length": "1"}}' % n
                            for n in range(9))
        self.write("many.json", 
            '{"Version": "1.0", "Bar": [{"BarNumber": 1, "piece": [%s]}]}' % pieces)
        lines = self.check("many.json").stdout.splitlines()
        self.assertEqual(len(lines), 4)
        self.assertEqual(lines[3], "many.json: 6 more like this; --all shows them [unknown-key]")
        self.assertEqual(len(self.check("many.json", "--all").stdout.splitlines()), 9)

    def test_of_each_rule_so_many_are_listed_and_kept(self):
        self.write("many.xml", "<J><Version>1.0</Version>" + "<a/>" * 30000 + "</J>")
        report = json.loads(self.check("--format", "json", "many.xml", code=1).stdout)
        self.assertEqual(len(report["findings"]), 1000)
        self.assertRegex(report["findings"][-1]["message"], r" \(19000 more findings of this rule\)$")
        self.assertEqual(report["summary"]["warnings"], 20000)

    def test_a_graver_finding_does_not_vanish_among_many_alike(self):
        values = ["null"] * 4 + ["900"]
        pieces = ",\n".join('{"PieceNumber": %d, "Num": 1, "BarCode": %s, "cut": {"Length": "1"}}' % pair
                            for pair in enumerate(values))
        self.write("grave.json", 
            '{"Version": "1.0", "Bar": [{"BarNumber": 1, "Num": 1, "piece": [%s]}]}' % pieces)
        told = self.check("grave.json").stdout
        self.assertIn("1 more like this; --all shows them [wrong-type]", told)
        self.assertIn('"BarCode" must be a text, not the number 900', told)

    def test_a_job_of_one_long_line_is_shown_around_each_place(self):
        # To walk the line for each of them would take minutes.
        cut = '{"cut":{"Length":"1","SxB":"\u7a93"}}'
        start = '{"Version":"1.0","message":"' + "x" * 8000000 + '","Bar":[{"BarNumber":1,"piece":['
        self.write("line.json", 
            start + ",".join([cut] * 500) + "]}]}")
        lines = self.on_terminal("check", *SMALL, "--all", "line.json", NO_COLOR="1", columns=60).splitlines()
        column = len(start) + 499 * (len(cut) + 1) + cut.index('"SxB"') + 1
        self.assertIn(f"line.json:1:{column}: error:", lines[-4])
        self.assertEqual(lines[-3:-1], [
            ' 1 | \u2026\u7a93"}},{"cut":{"Length":"1","SxB":"\u7a93"}}]}]}',
            "   |                             ^~~~~"])


JOB = '{"Version": "1.0", "Bar": [%s]}'
CUT = '{"PieceNumber": 1, "cut": {"Length": "%s"}}'
# Ten pieces whose lengths add up to a little more than 6001.
TEN_PIECES = ", ".join(CUT.replace("1,", f"{number},") % 600.1 for number in range(10))
XML = "<Job><Version>1.0</Version>%s</Job>"
ROW = "<Bar><BarNumber>1</BarNumber>%s<Piece><CtrsZ>0</CtrsZ>%s</Piece></Bar>"

WORK = ("<Work><Name>b</Name><ProfiLav>1</ProfiLav><PositionX>1</PositionX><PositionY>1</PositionY>"
        "<PositionZ>1</PositionZ></Work>")

# A job's name and bytes, and what check says of it behind "NAME:".
ODDITIES = [
    ("gate.json", '{"Version": "2.0", "version": "1.0"}',
     '1:2: error: "Version" is "2.0" and wins over "version": with bars the panel would answer -4 [version]'),
    ("both.json", '{"Version": "1.0", "version": "1.0", "Bar": [], "bar": []}',
     '1:49: note: "bar" is ignored because "Bar" is there too, with the same value [shadowed-key]\n'
     '1:20: note: "version" is ignored because "Version" is there too, with the same value [shadowed-key]'),
    ("alias.json", JOB % '{"BarNumber": 1, "MaxZ": 1, "piece": [{"PieceNumber": 1, "holing_type": "", "cut": {"Length": "1"}, '
     '"work": [{"Name": "a"}, {"Name": "b"}], "Field2": 7}]}',
     '1:28: error: bar 1 has no "MaxY": get_hole() raises "stod" [raises]\n'
     '1:168: warning: "Field2" must be a text, not the number 7: it is ignored [wrong-type]\n'
     '1:85: warning: "holing_type" is no key of a piece and is ignored; did you mean "Extra_Pie"? [unknown-key]'),
    ("first.json", JOB % "null",
     "1:28: error: bar 1 is null, not an object: it becomes a bar without a value of its own [not-an-object]"),
    ("negative.json", JOB % f'{{"BarNumber": 1, "length": 1000, "piece": [{CUT % 1500}, {CUT.replace("1,", "2,") % -900}]}}',
     '1:108: error: piece 1 of bar 1: "Length" is 1500, the bar 1000 long [does-not-fit]\n'
     '1:155: error: piece 2 of bar 1: "Length" is -900, nothing to cut [length]'),
    ("sign.json", JOB % '{"BarNumber": 1, "MaxY": -, "MaxZ": 1.5e+2, "length": 0, "BarType": 1.e1}',
     '1:53: error: bar 1: "MaxY" is 0, but a profile has a width [profile-size]\n'
     '1:82: error: bar 1: "length" is 0, nothing to cut from [length]\n'
     "1:53: note: a sign without a number, read as 0, is not standard JSON; other tools refuse the file [lenient-json]\n"
     "1:96: note: a number with a plus, a leading zero or no digit behind its point is not standard JSON; "
     "other tools refuse the file [lenient-json]"),
    ("mac.json", '{"Version": "1.0",\r"Bar": [\r\r\n{},\n,]}',
     "3:1: error: Syntax error: value, object or array expected. Nothing is loaded: the panel answers -2 "
     "and keeps the JSON job before [syntax]"),
    ("wide.json", (JOB % "").encode("utf-16-le"),
     "1:1: error: UTF-16, which no reader takes: save the file as UTF-8, or iconv -f UTF-16LE -t UTF-8 [not-utf8]\n"
     "    Missing '}' or object member name. Nothing is loaded: the panel answers -2 "
     "and keeps the JSON job before [syntax]"),
    ("wide.xml", (XML % "").encode("utf-16"),
     "1:1: error: UTF-16, which no reader takes: save the file as UTF-8, or iconv -f UTF-16LE -t UTF-8 [not-utf8]\n"
     "    there are bytes after a zero byte. Nothing is loaded: the panel answers -2 "
     "and keeps the XML job before [syntax]"),
    ("gbk.xml", ('<?xml version="1.0" encoding="GBK"?>' + XML % "<Name>\u7a97\u6846</Name>").encode("gbk"),
     "1:70: warning: not UTF-8: the panel cannot show such text (4 bytes in this file); it looks like GBK: "
     "iconv -f GBK -t UTF-8 [not-utf8]"),
    ("other.json", XML % "", "1:1: error: this looks like XML, which only a file whose name ends in .xml is read as. "
     "Nothing is loaded: the panel answers -2 and keeps the JSON job before [syntax]"),
    ("other.xml", CLEAN, "1:1: error: this looks like JSON, and a file whose name ends in .xml is read as XML. "
     "Nothing is loaded: the panel answers -2 and keeps the XML job before [syntax]"),
    ("script.json", "\nlocal job = 1", "1:1: error: this looks like a Lua script, which cusdesk run takes. "
     "Nothing is loaded: the panel answers -2 and keeps the JSON job before [syntax]"),
    ("stray.xml", XML % "" + "\n</Job>", "2:1: error: an end tag closes no element. A panel may load what stands in "
     "front; cusdesk refuses the file [trailing-text]"),
    ("strict.xml", XML % "<Name>Tor & T\u00fcr &uuml; </Name>", "1:38: note: an ampersand that starts no reference "
     "(write &amp;) is not well-formed XML; other tools refuse the file [lenient-xml]"),
    ("bomb.xml", "<!DOCTYPE Job [<!ENTITY a '" + "x" * 1000 + "'>]>" + XML % ("<Name b='" + "&a;" * 300000 + "'/>"),
     '1: warning: declared entities are not read: a text keeps their names [ignored-text]\n'
     '1: warning: the attribute "b" of "Name" is not read; values are elements of their own [attribute]\n'
     '1: warning: the header has no text in "Name", which clears nothing: a panel that had a job before '
     "keeps that job's, one just started has none [empty-element]"),
    ("sums.json", JOB % f'{{"BarNumber": 1, "length": 6001, "piece": [{TEN_PIECES}]}},\n'
     '{"BarNumber": 2, "length": 2000, "piece": [{"PieceNumber": 1, "cut": {"Length": "2000.1"}}]}',
     '2:81: error: piece 1 of bar 2: "Length" is 2000.1, the bar 2000 long [does-not-fit]'),
    ("cut_off.json", JOB % f'{{"BarNumber": 1, "piece": [{CUT % "900.u0000x"}]}}'.replace(".u", "\\u"),
     '1:82: error: "Length" is "900\\x00x": scripts get at most "900" of it [zero-byte]'),
    ("nan.xml", XML % ROW % ("<Length>inf</Length>", "<Cut><Length>9 </Length></Cut>"
                             "<Work><ProfiLav>1</ProfiLav><PositionX>nan</PositionX><PositionY>-inf</PositionY>"
                             "<PositionZ>1,5</PositionZ></Work>"),
     '1: error: bar 1: "Length" is "inf", no number [not-a-number]\n'
     '1: error: work 1 of piece 1 of bar 1: "PositionX" is nan, no number [not-a-number]\n'
     '1: error: work 1 of piece 1 of bar 1: "PositionY" is -inf, no number [not-a-number]\n'
     '1: error: "PositionZ" is "1,5" and read as 1 [decimal-comma]'),
    ("same.xml", XML % ROW % ("<BarNumber>1</BarNumber><BarNumber>2<b/></BarNumber>", "<Cut><Length>9</Length></Cut>"),
     '1: note: "BarNumber" is ignored because only the first one counts (line 1), which has the same text '
     "[repeated-element]\n"
     '1: error: "BarNumber" is ignored because only the first one counts (line 1) [repeated-element]'),
    ("split.xml", XML % ROW % ("<MaxY>60</MaxY>", "\n<Cut><Length>1<!-- x -->200</Length><sxB>45</sxB><dxB>90</dxB></Cut>" + WORK.replace(
        "<PositionX>1<", "<PositionX>150<")),
     '2: error: the text "200" in "Length" is not read: a value ends where its first text ends [ignored-text]\n'
     '    piece 1 of bar 1: "Length" is 1, but its angles take 60 at a width of 60 [angle]\n'
     '    work 1 of piece 1 of bar 1 ("b"): "PositionX" is 150, the piece 1 long [work-beside-piece]'),
    ("true.json", JOB % '{"BarNumber": 1, "MaxY": 60, "MaxZ": 1, "piece": [{"PieceNumber": 1, "cut": {"Length": "900", "sxB": "45"},'
     ' "work": [{"Name": "a", "PositionX": true, "PositionY": 9}]}, {"PieceNumber": 2, "cut": {"Length": "900", "sxB": "45"}, "work": null}]}',
     '1:159: error: "PositionX" must be a number, not true: it is ignored [wrong-type]\n'
     '1:255: error: "work" must be an array, not null: it is ignored [wrong-type]'),
    ("merged.xml", XML % ROW % ("", "<Cut><Length>9</Length></Cut>\n<Cut><sxB>45</sxB></Cut>"),
     '2: error: "Cut" lacks "Length" and keeps that of another "Cut" of the same piece (line 1) '
     "[repeated-element]"),
    ("again.json", '{"Version": "1.0",\n"Version": "1.0",\n"Version": "1.0"}',
     '1:2: error: "Version" is ignored because it is there again (line 2) [duplicate-key]\n'
     '2:1: error: "Version" is ignored because it is there again (line 3) [duplicate-key]'),
    ("pie.xml", XML % "<Bar><BarNumber>1</BarNumber><Piece><CtrsZ>1</CtrsZ><Extra_Pie>h</Extra_Pie>"
     "<holing_type>h</holing_type><Cut><Length>x</Length></Cut></Piece></Bar>",
     '1: error: piece 1 of bar 1: "Length" is "x", no number [not-a-number]'),
    ("zero.xml", XML % "<Name>a&#x0;b<!-- &#0; --><![CDATA[&#0;]]></Name>",
     "1:35: warning: a text ends at this reference, and what follows in it is not read [zero-byte]\n"
     "    a reference to a character that XML does not have is not well-formed XML; other tools refuse the file "
     "[lenient-xml]\n"
     '1: warning: the text "&#0;" in "Name" is not read: a value ends where its first text ends [ignored-text]'),
    ("codes.json", JOB % ('{"BarNumber": 1, "piece": [' + CUT % 9 + ',' + ','.join(
        '{"PieceNumber": %d,%s "cut": {"Length": "9"}}' % (number, code)
        for number, code in [(2, ' "BarCode": "A",'), (3, ' "BarCode": "A",'), (4, "")]) + "]}"),
     '1:187: warning: barcode "A" of piece 3 of bar 1 is that of piece 2 of bar 1 (line 1): get_work gives the works '
     "of all its pieces, with the dimensions of the first one [duplicate-barcode]\n"
     '1:216: error: piece 4 of bar 1 has no "BarCode" and keeps "A" of piece 3 of bar 1 (line 1) [carried-over]'),
    ("far.json", JOB % f'{{"BarNumber": 1, "MaxY": 1, "MaxZ": 1, "length": -5, "piece": [{CUT % "1e-400"}]}}'
     .replace('"cut"', '"field20": "x", "work": [{"Name": "a"}], "cut"'),
     '1:77: error: bar 1: "length" is -5, nothing to cut from [length]\n'
     '1:110: warning: "field20" is no key of a piece and is ignored [unknown-key]\n'
     '1:169: error: piece 1 of bar 1: "Length" is "1e-400", out of range: get_hole() raises "stod" [raises]'),
    ("causes.json", JOB % '{"BarNumber": "1", "piece": [{"PieceNumber": 1, "BarCode": "A", "cut": {"Length": "9"}},'
     '\n{"PieceNumber": 2, "Barcode": "B", "cut": 3}]}',
     '1:29: error: "BarNumber" must be an integer of 32 bits, not the text "1": it is ignored [wrong-type]\n'
     '    bar 1 has no "BarNumber": get_cut("") raises "stoi" [raises]\n'
     '2:20: error: "Barcode" is no key of a piece and is ignored; did you mean "BarCode"? [unknown-key]\n'
     '    piece 2 of bar 1 lacks 2 values and keeps those of piece 1 of bar 1 (line 1): BarCode "A", Length "9" '
     '[carried-over]\n2:36: error: "cut" must be an object, not the number 3: it is ignored [wrong-type]'),
    ("mended.json", JOB % ('{"BarNumber": 1, "Pieces": [{"PieceNumber": 1, "Cut": {"Length": "x"},\n'
                           '"works": [{"Nmae": "a"}]}]}'),
     '1:45: error: "Pieces" is no key of a bar and is ignored; did you mean "piece"? What is in it is checked as if '
     "it were [unknown-key]\n"
     '1:75: error: "Cut" is no key of a piece and is ignored; did you mean "cut"? What is in it is checked as if it '
     "were (once mended) [unknown-key]\n"
     '1:93: error: piece 1 of bar 1: "Length" is "x", no number: get_hole() raises "stod" (once mended) [raises]\n'
     '2:1: error: "works" is no key of a piece and is ignored; did you mean "work"? What is in it is checked as if it '
     "were (once mended) [unknown-key]\n"
     '2:12: error: "Nmae" is no key of a work and is ignored; did you mean "Name"? (once mended) [unknown-key]'),
    ("mended.xml", XML % ROW.replace("Piece>", "piece>\n") % ("", "<Cut><Length>x</Length></Cut>"),
     '1: error: "piece" is no element of a bar and is ignored; did you mean "Piece"? What is in it is checked as if it '
     "were [unknown-key]\n"
     '2: error: piece 1 of bar 1: "Length" is "x", no number (once mended) [not-a-number]'),
    ("around.xml", "loose" + XML.replace("Job>", 'Job xmlns="u" xsi:type="v">', 1) % "",
     '1: warning: the text "loose" outside of the root is not read [ignored-text]\n'
     "    a character that may not stand here is not well-formed XML; other tools refuse the file [lenient-xml]"),
    ("entity.xml", '<!DOCTYPE Job [<!ENTITY n "x">\n<!ENTITY m "y">]>\n' + XML % "<Name>&n;</Name>",
     "1: warning: declared entities are not read: a text keeps their names [ignored-text]\n"
     "2: warning: declared entities are not read: a text keeps their names [ignored-text]"),
]


class Oddities(Folder):
    def test_each_is_told_as_it_is(self):
        for name, content, findings in ODDITIES:
            self.write(name, content)
            told = self.check(name, "--all").stdout.replace(f"{name}:", "").split("\n")
            self.assertEqual(sorted(told[:-1]), sorted(findings.split("\n")), name)

    def test_an_xml_job_without_pieces_has_no_cuts_to_mix_up(self):
        self.write("bars.xml", XML % "<Bar/>")
        self.assertEqual(self.check("--sequence", "clean.json", "bars.xml", code=0).stdout, "")

    def test_what_a_broken_xml_job_leaves_is_told_of_the_next_one(self):
        broken = ROW % ("", "<Cut><sxB>45</sxB></Cut>" + WORK.replace("1", ""))
        self.write("a.xml", XML % (ROW % ("", "<Cut><Length>1</Length></Cut>") + broken))
        self.write("b.xml", XML % ("\n" + ROW % ("", "")))
        self.assertEqual(self.check("--sequence", "a.xml", "b.xml").stdout.splitlines()[2:], [
            'b.xml:2: error: piece 1 of bar 1 has no "Length" and keeps "1" of piece 1 of bar 1 (a.xml:1) [carried-over]',
            'b.xml:2: error: piece 1 of bar 1 has no "sxB" and keeps "45" of piece 1 of bar 2 (a.xml:1) [carried-over]'])

    def test_hostile_file_names_are_spelled_out(self):
        self.write("a\x1b\n.json", CLEAN)
        self.write("next.json", JOB % "{}")
        words = ["--sequence", "a\x1b\n.json", "next.json"]
        self.assertIn("of bar 1 (a\\x1b\\n.json:1)", self.check(*words, code=1).stdout)
        junit = self.check(*words, "b\x01.json", "--format", "junit", code=3).stdout
        subprocess.run(["xmllint", "--noout", "-"], input=junit, encoding="utf-8", check=True)

    def test_only_findings_that_differ_in_their_place_only_are_folded(self):
        self.write("lenient.json", "\ufeff" + '{"Version": "1.0", /**/ "Bar": [{"MaxY": -, "MaxZ": 01,},]}')
        self.assertEqual(self.check("lenient.json").stdout.count("is not standard JSON"), 5)
        self.write("nulls.json", JOB % ", ".join(["null"] * 9))
        self.assertIn("6 more like this", self.check("nulls.json").stdout)


class Terminals(Folder):
    def test_caret_stands_below_the_place_behind_wide_characters_and_tabs(self):
        self.write("wide.json", 
            '{"Version": "1.0",\n\t"Name": "\u7a93\u67a0e\u0301", "Bar": 1}\r\n')
        text = self.on_terminal("check", *SMALL, "wide.json", NO_COLOR="1")
        self.assertEqual(text, (
            'wide.json:2:18: error: "Bar" must be an array, not the number 1: it is ignored '
            '[wrong-type]\n'
            ' 2 |  "Name": "\u7a93\u67a0e\u0301", "Bar": 1}\n'
            '   |                   ^~~~~\n'
            '1 error, 0 warnings, 0 notes in 1 file\n'))

    def test_long_lines_are_cut_around_the_place(self):
        self.write("long.json", 
            '{"Version": "1.0", "Name": "%s", "Bar": 1, "Generator": "%s"}' % ("\u7a93" * 500, "x" * 500))
        for columns in (20, 41, 80):
            text = self.on_terminal("check", *SMALL, "long.json", columns=columns, NO_COLOR="1")
            _, source, caret, _ = text.splitlines()
            width = sum(2 if char == "\u7a93" else 1 for char in source)
            self.assertLessEqual(width, columns, source)
            before = source[:source.index('"Bar"')] if columns > 20 else source.split('"B')[0]
            self.assertEqual(caret.index("^"), sum(2 if c == "\u7a93" else 1 for c in before), text)

    def test_colour_is_for_terminals_that_want_it(self):
        self.assertIn("\x1b[1;31merror:\x1b[0m", self.on_terminal("check", *SMALL, "bad.json"))
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            self.assertNotIn("\x1b", self.on_terminal("check", *SMALL, "bad.json", **environment))
        self.assertNotIn("\x1b", self.check("bad.json").stdout)
        never = self.on_terminal("--color=never", "check", "bad.json")
        always = self.run_here("--color", "always", "check", "bad.json").stdout
        self.assertEqual(re.sub("\x1b\\[[0-9;]*m", "", always), never)
        self.assertIn("\x1b[1;31m^~~~~~~~~~~\x1b[0m\n", always)
        self.assertNotIn("\x1b", never)

    def test_watch_tells_anew_when_a_file_is_saved_until_it_is_enough(self):
        self.write("jobs/job.json", BAD)
        watch = subprocess.Popen([cusdesk.CUSDESK, "check", *SMALL, "--watch", "jobs"], cwd=self.folder,
                                 stdout=subprocess.PIPE, encoding="utf-8")
        self.addCleanup(watch.stdout.close)
        self.addCleanup(watch.kill)

        def verdict():
            """The line before the one with the time."""
            line = watch.stdout.readline()
            while "waiting for the next save" not in line:
                before, line = line, watch.stdout.readline()
            return before

        self.assertEqual(verdict(), "1 error, 0 warnings, 0 notes in 1 file\n")
        self.write("saved", CLEAN).rename(self.folder / "jobs/job.json")  # as some editors save
        self.assertEqual(verdict(), "no findings in 1 file\n")
        self.write("jobs/late.json", "{}")
        self.assertEqual(verdict(), "1 error, 0 warnings, 0 notes in 1 file\n")
        self.write("jobs/late.json", CLEAN)
        self.assertEqual(verdict(), "no findings in 2 files\n")
        watch.send_signal(signal.SIGINT)
        self.assertEqual(watch.wait(timeout=cusdesk.TIME_LIMIT), 0)
        self.check("--watch", "--format", "json", "bad.json", code=2)

    def test_work_shows_how_far_it_has_come_and_leaves_no_trace(self):
        text = self.on_terminal("check", *SMALL, *["clean.json"] * 2, CUSDESK_PROGRESS_AFTER="0")
        for count in "12":
            self.assertRegex(text, rf"\r(\d+ s: )?checking {count} of 2: clean\.json\x1b\[K")
        self.assertTrue(text.endswith("\r\x1b[Kno findings in 2 files\n"), repr(text))
        quiet = self.on_terminal("check", *SMALL, "clean.json", CUSDESK_PROGRESS_AFTER="3600000")
        self.assertEqual(quiet, "no findings in 1 file\n")


unittest.main()
