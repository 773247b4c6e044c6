"""cusdesk doctor: what it says of good, broken and damaged plug-ins.

Usage: doctor_test.py CUSDESK PROGRAM LIBRARIES PLUGIN ANCIENT_FOLDER DEEP_TYPES OBJCOPY
         BROKEN_FOLDER
PROGRAM is cusdesk itself where CUSDESK only calls it; LIBRARIES, with : between, are what it offers
plug-ins besides. BROKEN_FOLDER may be empty: no plug-in of this build is fit for a controller.
"""

import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest

CUSDESK, PROGRAM, LIBRARIES, PLUGIN, ANCIENT, DEEP_TYPES, OBJCOPY, BROKEN = sys.argv[1:]
del sys.argv[1:]


def cusdesk(*words):
    return subprocess.run([CUSDESK, *map(str, words)], capture_output=True, text=True, timeout=120)


def doctor(*words):
    return cusdesk("doctor", *words)


def problems(answer):
    """The problems as (subject, text)."""
    return re.findall(r"^  PROBLEM  (.{13}) (.*)$", answer.stdout, re.MULTILINE)


@unittest.skipUnless(BROKEN, "not a build for controllers")
class Examination(unittest.TestCase):
    def test_each_fault_is_named_with_its_cause(self):
        for name, expected in {
            "new_c_library": [("versions", r"needs GLIBC_2\.26 of libc\.so\.6; the oldest controllers "
                               r"have up to GLIBC_2\.\d+ \(because of reallocarray\)")],
            "new_cpp_runtime": [("versions", r"needs GLIBCXX_3\.4\.29 of libstdc\+\+\.so\.6; .* "
                                 r"\(because of std::from_chars\(.*\)\)")],
            "surplus_import": [("imports", "calls what panels do not offer: luaL_error")],
            "wrong_exports": [("exports", "offers what may .* own: spareHelper"),
                              ("callbacks", r"lacks onClick\(void\*, int, .*\): the panel cannot .*")],
            "foreign_library": [("libraries", r"needs libtinyxml2\.so\.\d+, which is not of .*")],
            "executable_stack": [("loading", "asks for an executable stack, .*")],
            "writable_tables": [("loading", "leaves its function tables writable .*")],
            "search_path": [("loading", "looks for libraries in /opt/sdk/lib first, .*")],
        }.items():
            answer = doctor(pathlib.Path(BROKEN, name + ".so"))
            found = problems(answer)
            self.assertEqual(answer.returncode, 1, name)
            self.assertEqual([s.strip() for s, _ in found], [s for s, _ in expected], answer.stdout)
            for (_, text), (_, pattern) in zip(found, expected):
                self.assertRegex(text, f"^{pattern}$", name)

    def test_a_target_s_own_libraries_decide(self):
        answer = doctor("--against", ANCIENT, PLUGIN)
        found = dict((text, subject.strip()) for subject, text in problems(answer))
        self.assertEqual(found.pop(f"needs libstdc++.so.6, which is not in {ANCIENT}"), "libraries")
        self.assertTrue(any(re.match(r"needs GLIBC_2\.\d+ of libc\.so\.6; the target's has up to "
                                     r"GLIBC_2\.0 \(because of ", text) for text in found), found)
        self.assertNotIn("the oldest controllers", answer.stdout)

    def test_libraries_for_another_machine_are_passed_by(self):
        foreign = bytearray(pathlib.Path(ANCIENT, "libc.so.6").read_bytes())
        foreign[18] = 42  # e_machine
        with tempfile.TemporaryDirectory() as folder:
            first, second = pathlib.Path(folder, "lib"), pathlib.Path(folder, "lib64")
            for path in (first, second):
                path.mkdir()
                (path / "libc.so.6").write_bytes(foreign)
            self.assertIn("libc.so.6 of the target is for machine 42",
                          doctor("--against", folder, PLUGIN).stdout)
            (second / "libc.so.6").write_bytes(pathlib.Path(ANCIENT, "libc.so.6").read_bytes())
            later = pathlib.Path(folder, "usr/lib")
            later.mkdir(parents=True)
            (later / "libc.so.6").write_text("GROUP ( libc.so )")  # no loader comes that far
            self.assertEqual(doctor("--against", folder, PLUGIN).stdout.replace(folder, ANCIENT),
                             doctor("--against", ANCIENT, PLUGIN).stdout)

    def test_the_host_s_own_symbols_decide(self):
        ours = doctor("--host", PROGRAM, PLUGIN)
        self.assertEqual(len(problems(ours)), 1, ours.stdout)  # its libraries are nowhere named
        self.assertRegex(ours.stdout, rf"\A.* cannot be judged: it calls \d+ .* {PROGRAM} needs .*: lib")
        surplus = doctor("--host", f"{PROGRAM}:{LIBRARIES}", f"{BROKEN}/surplus_import.so")
        self.assertEqual(surplus.stdout.splitlines()[0], f"{BROKEN}/surplus_import.so will load on "
                         "every known controller with this host.")
        self.assertRegex(surplus.stdout, r"built for +tinyxml2 .*; the host has libtinyxml2\.so\.\d+")
        nothing = problems(doctor("--host", f"{ANCIENT}/libc.so.6", PLUGIN))
        self.assertRegex(nothing[0][1], r"^calls what is not in .*libc\.so\.6: .* and \d+ more$")


class OtherFiles(unittest.TestCase):
    def test_what_settles_the_matter_is_all_that_is_said(self):
        library = f"{ANCIENT}/libc.so.6"
        foreign = bytearray(pathlib.Path(library).read_bytes())
        foreign[18] = 42  # e_machine
        with tempfile.TemporaryDirectory() as folder:
            other = pathlib.Path(folder, "other.so")
            other.write_bytes(foreign)
            for words, sentence in [
                (["/bin/true"], "/bin/true is a program, not a plug-in."),
                ([library], f"{library} is not a plug-in for panels: it has neither their entry "
                            "points nor their callbacks."),
                (["--host", other, PLUGIN], rf"{PLUGIN} will not load: it is for .*, but {other} is "
                                            r"for machine 42\."),
            ]:
                answer = doctor(*words)
                self.assertEqual((answer.returncode, answer.stderr), (1, ""), words)
                self.assertRegex(answer.stdout, f"\\A{sentence}\n\\Z")

    def test_a_plugin_is_compared_with_the_one_before(self):
        older = pathlib.Path(PLUGIN).read_bytes()
        older = re.sub(rb"(libCustom_LuaParseModule )\d(.*?tinyxml2 )\d", rb"\g<1>7\g<2>3", older,
                       count=1, flags=re.DOTALL)
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "older.so")
            path.write_bytes(older)
            found = problems(doctor("--compare", path, PLUGIN))
            self.assertEqual([subject.strip() for subject, _ in found[-1:]], ["compared"])
            self.assertRegex(found[-1][1], r"^was built for other classes: tinyxml2 \d\S+ with \d+ "
                             rf"bytes of tinyxml2::XMLDocument, unlike {path} \(7\.\d\.\d\)$")
            same = doctor("--compare", PLUGIN, PLUGIN)
            self.assertRegex(same.stdout, r"compared +asks for no more and offers no less than ")

    def test_a_name_of_millions_of_characters_is_not_spelt_out(self):
        answer = doctor(DEEP_TYPES)
        self.assertRegex(answer.stdout, r"offers what may .* own: _Z1f1A1BIS_S_ES0_IS1_S1_E\w+[,\n]")

    def test_what_cannot_be_read_is_answered_with_one_line(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        pipe = pathlib.Path(folder.name, "pipe")
        os.mkfifo(pipe)
        for words, code, start in [
            ([pipe], 3, f"{pipe} is not a regular file"),
            (["no/such.so"], 3, "cannot read no/such.so: "),
            (["/"], 3, "/ is a folder: name a file in it"),
            ([__file__], 3, f"{__file__} is neither a library nor a program"),
            (["--against", "no/such", PLUGIN], 3, "there is no no/such"),
            (["--against", "", PLUGIN], 2, "option '--against' needs a path"),
            (["--host", "/", PLUGIN], 2, "option '--host' needs the panel runtime's program"),
            (["--host", __file__, PLUGIN], 3, f"{__file__} is neither"),
        ]:
            answer = doctor(*words)
            self.assertEqual((answer.returncode, answer.stdout), (code, ""), words)
            self.assertTrue(answer.stderr.startswith("cusdesk: " + start), answer.stderr)
            self.assertEqual(answer.stderr.count("\n"), 1, answer.stderr)

    def test_a_copy_that_broke_off_is_told_from_a_library_without_functions(self):
        whole = pathlib.Path(PLUGIN).read_bytes()
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "copy.so")
            for size in [1000, len(whole) // 2, len(whole) - 1]:
                path.write_bytes(whole[:size])
                answer = doctor(path)
                said = f"{path} is cut short: it has {size} of {len(whole)} bytes\n"
                self.assertEqual((answer.returncode, answer.stdout, answer.stderr),
                                 (3, "", f"cusdesk: {said}"))
                answer = cusdesk("--plugin", path, "run", "-")
                self.assertEqual((answer.returncode, answer.stdout, answer.stderr),
                                 (3, "", f"cusdesk: cannot load the plug-in: {said}"))
            path.write_bytes(whole + b"\n")
            self.assertEqual(doctor(path).returncode, doctor(PLUGIN).returncode)

    def test_a_file_that_lost_its_tables_is_not_taken_for_an_empty_library(self):
        bare = bytearray(pathlib.Path(PLUGIN).read_bytes())
        for place, size in [(0x28, 8), (0x3A, 6)] if bare[4] == 2 else [(0x20, 4), (0x2E, 6)]:
            bare[place:place + size] = bytes(size)  # where the headers begin; size, number
        with tempfile.TemporaryDirectory() as folder:
            without_headers = pathlib.Path(folder, "bare.so")
            without_headers.write_bytes(bare)
            debugging = pathlib.Path(folder, "debugging.so")
            subprocess.run([OBJCOPY, "--only-keep-debug", PLUGIN, debugging], check=True)
            for path in (without_headers, debugging):
                answer = doctor(path)
                self.assertEqual((answer.returncode, answer.stdout), (3, ""))
                self.assertIn(f"{path} lacks the sections that say what it needs", answer.stderr)

    def test_damaged_files_do_no_harm(self):
        whole = pathlib.Path(PLUGIN).read_bytes()
        dice = random.Random(7)
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "damaged.so")
            for round_ in range(10):
                damaged = bytearray(whole)
                # the tables that are followed: at the start, and the section headers at the end
                for _ in range(dice.choice([1, 8, 64])):
                    place = dice.choice([dice.randrange(0x8000), -1 - dice.randrange(0x900)])
                    damaged[place] = dice.choice([0, 0x7F, 0xFF, dice.randrange(256)])
                if round_ % 3 == 0:
                    del damaged[dice.randrange(len(whole)):]
                path.write_bytes(damaged)
                answer = doctor(path)
                self.assertIn(answer.returncode, (0, 1, 3), (round_, answer.stderr[-2000:]))


unittest.main()
