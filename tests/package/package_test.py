"""Builds the packages of a finished build, unpacks them and runs what they hold.

Usage: package_test.py CPACK BUILD_DIR ARCHITECTURE CUSDESK EXAMPLES COMPILE -- [EMULATOR...]
CUSDESK is the one of the build. COMPILE is a command that compiles a host for the architecture; EMULATOR
is what runs programs of it.
"""

import gzip
import hashlib
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tarfile
import tempfile
import time
import unittest

CPACK, BUILD, ARCHITECTURE, CUSDESK, EXAMPLES, COMPILE = sys.argv[1:7]
EMULATOR = sys.argv[8:]
del sys.argv[1:]
SCRATCH = tempfile.TemporaryDirectory()


def pack(name, **environment):
    """The files of both packages and of their checksums."""
    folder = pathlib.Path(SCRATCH.name, name)
    subprocess.run([CPACK, "-B", folder], cwd=BUILD, check=True, capture_output=True, umask=0o022,
                   env={**os.environ, "SOURCE_DATE_EPOCH": "1700000000", **environment}, timeout=120)
    return {path.name: path for path in folder.iterdir() if path.is_file()}


def run(*words):
    return subprocess.run(list(map(str, words)), capture_output=True, text=True, timeout=120,
                          cwd=SCRATCH.name, env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                                                 "HOME": f"{SCRATCH.name}/home"})


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.first = pack("first", TZ="UTC", LC_ALL="C")
        time.sleep(1.1)  # times in packages count in seconds
        cls.second = pack("second", TZ="Asia/Shanghai", LC_ALL="C.UTF-8")
        cls.archive = next(p for n, p in cls.first.items() if n.endswith(".tar.gz"))
        cls.deb = next(p for n, p in cls.first.items() if n.endswith(f"_{ARCHITECTURE}.deb"))
        cls.editor_deb = next(p for n, p in cls.first.items() if n.endswith("_all.deb"))
        with tarfile.open(cls.archive) as archive:
            archive.extractall(SCRATCH.name, filter="data")
        cls.controller = pathlib.Path(SCRATCH.name, cls.archive.name.removesuffix(".tar.gz"))
        cls.root = pathlib.Path(SCRATCH.name, "root")
        for package in (cls.deb, cls.editor_deb):
            subprocess.run(["dpkg-deb", "-x", package, cls.root], check=True)

    def test_same_bytes_twice_and_their_checksums(self):
        self.assertEqual(len(self.first), 6)
        for name, path in self.first.items():
            self.assertEqual(path.read_bytes(), self.second[name].read_bytes(), name)
        for path in (self.archive, self.deb, self.editor_deb):
            self.assertEqual(self.first[path.name + ".sha256"].read_text(),
                             f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n")

    def test_the_archive_says_what_its_plugin_is_made_for(self):
        version = re.fullmatch(rf"cus-parse-module-(\d+\.\d+\.\d+)-{ARCHITECTURE}",
                               self.controller.name)[1]
        check = subprocess.run(["sha256sum", "-c", "SHA256SUMS"], cwd=self.controller, check=False,
                               capture_output=True, text=True)
        self.assertEqual(check.returncode, 0, check.stdout)
        files = [path for path in self.controller.rglob("*") if path.is_file()]
        self.assertEqual(check.stdout.count(": OK\n"), len(files) - 1)
        words = (self.controller / "README.txt").read_text()
        architecture = {"amd64": "x86-64"}.get(ARCHITECTURE, ARCHITECTURE)
        self.assertTrue(words.startswith(f"libCustom_LuaParseModule.so {version} for {architecture}\n"))
        value = 24 if ARCHITECTURE == "armhf" else 40
        self.assertRegex(words, rf"jsoncpp 1\.\d+\.\d+ \(sizeof\(Json::Value\) is {value}\)")
        self.assertRegex(words, r"\(sizeof\(tinyxml2::XMLDocument\) is [1-9]\d\d\)")
        self.assertRegex(words, r"GLIBC_2\.\d+, GLIBCXX_3\.4\.21 and CXXABI_1\.3\.9 or newer")
        answer = run(*EMULATOR, self.root / "usr/bin/cusdesk", "doctor",
                     self.controller / "libCustom_LuaParseModule.so")
        self.assertEqual(answer.returncode, 0, answer.stdout + answer.stderr)
        words = {"amd64": "(x86-64)", "armhf": "(armhf), ARMv7-A, Thumb-2, VFPv3-D16"}.get(ARCHITECTURE, f"({ARCHITECTURE})")
        self.assertIn(words, answer.stdout)

    def test_a_host_of_the_archive_s_headers_shows_a_table_and_unloads_clean(self):
        host = pathlib.Path(SCRATCH.name, "host")
        sources = sorted(pathlib.Path(EXAMPLES, "host").glob("*.cpp"))
        head, *libraries = COMPILE.split(" LIBRARIES ")
        subprocess.run([*shlex.split(head), "-std=c++11", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
                        "-I", self.controller / "include", *sources, "-o", host, "-rdynamic",
                        *shlex.split(libraries[0])], check=True)
        runner = EMULATOR or ["valgrind", "-q", "--leak-check=full", "--show-leak-kinds=all",
                              "--errors-for-leak-kinds=all", "--error-exitcode=9"]
        answer = run(*runner, host, self.controller / "libCustom_LuaParseModule.so", EXAMPLES)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""), answer.stdout)
        said, picture = answer.stdout.split("<svg", 1)
        self.assertEqual(said.splitlines()[-2:], ["loaded\t0", "page 2 of 2, row 3 is selected"])
        self.assertEqual(re.findall(">([^<]+)</text>", picture),
                         ["Bar", "Length", "left", "right", "2", "806.0", "45", "45"])

    def test_the_installed_tool_runs_the_installed_demo(self):
        demo = self.root / "usr/share/cusdesk/examples/demo.lua"
        answer = run(*EMULATOR, self.root / "usr/bin/cusdesk", "run", demo)
        expected = run(CUSDESK, "run", f"{EXAMPLES}/demo.lua")
        copy = pathlib.Path(SCRATCH.name, "home/.local/share/cusdesk/examples")
        self.assertEqual((answer.returncode, answer.stderr), (
            0, f"cusdesk: scripts work on your own copy of the examples, {copy}\n"))
        self.assertEqual(answer.stdout, expected.stdout)
        before = {path: path.stat().st_mtime_ns for path in self.root.rglob("*")}
        script = pathlib.Path(SCRATCH.name, "save.lua")
        script.write_text("require('cus_ParseModule').save_cutCurIndex('1', '2')")
        answer = run(*EMULATOR, self.root / "usr/bin/cusdesk", "run", script)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertTrue((copy / "mnt/data/CustomFileDir/cutCurIndex.txt").exists())
        self.assertEqual({path: path.stat().st_mtime_ns for path in self.root.rglob("*")}, before)

    def test_links_of_the_installed_pages_hold(self):
        pages = list((self.root / "usr/share/doc/cusdesk").rglob("*.md"))
        self.assertGreater(len(pages), 10)
        for page in pages:
            for link in re.findall(r"\]\((?!https?:|#)([^)#]+)", page.read_text()):
                self.assertTrue((page.parent / link).exists(), f"{page.name}: {link}")

    def test_completion_manual_and_editor_files_are_where_programs_look_for_them(self):
        share = self.root / "usr/share"
        for words, path in [("completion", "bash-completion/completions/cusdesk"),
                            ("fish", "fish/vendor_completions.d/cusdesk.fish"),
                            ("man", "man/man1/cusdesk.1.gz")]:
            data = (share / path).read_bytes()
            text = gzip.decompress(data) if path.endswith(".gz") else data
            self.assertEqual(text.decode(), run(CUSDESK, "export", words).stdout)
        schemas = {path.name for path in (share / "cusdesk/schema").iterdir()}
        self.assertLessEqual({"cutting-job.schema.json", "cutting-job.xsd", "cus_ParseModule.lua",
                              "cusdesk_panel.lua", "cus_ParseModule.luacheckrc", "README.md"}, schemas)
        fields = run("dpkg-deb", "-f", self.editor_deb, "Package", "Architecture", "Depends").stdout
        self.assertEqual(fields, "Package: cusdesk-editor\nArchitecture: all\n")

    def test_each_package_says_what_it_is(self):
        for package, summary in [(self.deb, "Desk runtime "), (self.editor_deb, "Editor support ")]:
            text = run("dpkg-deb", "-f", package, "Description").stdout
            self.assertTrue(text.startswith(summary), text)
            self.assertGreater(text.count("\n"), 2, text)

    def test_the_package_is_for_the_architecture_and_asks_for_what_it_needs(self):
        fields = run("dpkg-deb", "-f", self.deb, "Architecture", "Depends").stdout
        self.assertIn(f"Architecture: {ARCHITECTURE}\n", fields)
        if EMULATOR:
            return  # this machine knows no packages of that architecture
        needed = re.findall(r"=> (/\S+)", run("ldd", self.root / "usr/bin/cusdesk").stdout)
        headers = run("readelf", "-d", self.root / "usr/bin/cusdesk").stdout
        direct = set(re.findall(r"NEEDED.*\[(.*)\]", headers))
        for path in needed:
            if pathlib.Path(path).name in direct:
                owner = run("dpkg", "-S", path, "/usr" + path).stdout.split(":")[0]
                self.assertRegex(fields, rf"[ ,]{re.escape(owner)}[ ,\n]", path)


if __name__ == "__main__":
    unittest.main()
