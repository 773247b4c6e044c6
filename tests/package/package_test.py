"""Builds the packages of a finished build, unpacks them and runs what they hold.

Usage: package_test.py CPACK BUILD_DIR ARCHITECTURE CUSDESK DEMO -- [EMULATOR...]
CUSDESK is the one of the build. EMULATOR is what runs programs of the architecture.
"""

import gzip
import hashlib
import os
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile
import time
import unittest

CPACK, BUILD, ARCHITECTURE, CUSDESK, DEMO = sys.argv[1:6]
EMULATOR = sys.argv[7:]
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
                          cwd=SCRATCH.name, env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"})


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.first = pack("first", TZ="UTC", LC_ALL="C")
        time.sleep(1.1)  # times in packages count in seconds
        cls.second = pack("second", TZ="Asia/Shanghai", LC_ALL="C.UTF-8")
        cls.archive = next(p for n, p in cls.first.items() if n.endswith(".tar.gz"))
        cls.deb = next(p for n, p in cls.first.items() if n.endswith(f"_{ARCHITECTURE}.deb"))
        cls.editor_deb = next(p for n, p in cls.first.items() if n.endswith("_all.deb"))
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

    def test_the_archive_holds_the_plugin_and_its_checksum(self):
        self.assertRegex(self.archive.name, rf"^cus-parse-module-\d+\.\d+\.\d+-{ARCHITECTURE}\.tar")
        folder = pathlib.Path(SCRATCH.name, "controller")
        with tarfile.open(self.archive) as archive:
            files = {m.name for m in archive.getmembers() if m.isfile()}
            archive.extractall(folder, filter="data")
        top = self.archive.name.removesuffix(".tar.gz")
        self.assertEqual(files, {f"{top}/libCustom_LuaParseModule.so", f"{top}/SHA256SUMS"})
        plugin = next(folder.rglob("*.so"))
        check = subprocess.run(["sha256sum", "-c", "SHA256SUMS"], cwd=plugin.parent, check=False,
                               capture_output=True)
        self.assertEqual(check.returncode, 0, check.stdout)
        answer = run(*EMULATOR, self.root / "usr/bin/cusdesk", "doctor", plugin)
        self.assertEqual(answer.returncode, 0, answer.stdout + answer.stderr)
        words = {"amd64": "(x86-64)"}.get(ARCHITECTURE, f"({ARCHITECTURE})")
        self.assertIn(words, answer.stdout)

    def test_the_installed_tool_runs_the_installed_demo(self):
        demo = self.root / "usr/share/cusdesk/examples/demo.lua"
        answer = run(*EMULATOR, self.root / "usr/bin/cusdesk", "run", demo)
        expected = run(CUSDESK, "run", DEMO)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertEqual(answer.stdout, expected.stdout)
        self.assertTrue((self.root / "usr/share/doc/cusdesk/integrating.md").exists())

    def test_completion_manual_and_editor_files_are_where_programs_look_for_them(self):
        share = self.root / "usr/share"
        for words, path in [("completion", "bash-completion/completions/cusdesk"),
                            ("man", "man/man1/cusdesk.1.gz")]:
            data = (share / path).read_bytes()
            text = gzip.decompress(data) if path.endswith(".gz") else data
            self.assertEqual(text.decode(), run(CUSDESK, "export", words).stdout)
        schemas = {path.name for path in (share / "cusdesk/schema").iterdir()}
        self.assertLessEqual({"cutting-job.schema.json", "cutting-job.xsd", "cus_ParseModule.lua",
                              "cus_ParseModule.luacheckrc", "README.md"}, schemas)
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
