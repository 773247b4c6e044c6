"""Hostile names and addresses through a script: each is refused with a line that says why, and
nothing outside of the root and the disk is read or written.

Usage: isolation_test.py CUSDESK

Canaries are jobs that would load: were one read, its mark would show in a label.
"""

import os
import socket
import unittest

import cusdesk
from http_server import HttpServer

CANARY = b'{"Version":"1.0","Bar":[{"piece":[{"mark":"CANARY"}]}]}'
LONG = b"a" * 300 + b".json"
FLASH = "root/mnt/data/CustomFileDir/JsonFile"

# File names as scripts give them, and what the log says. None of them loads.
NAMES = [
    (b"../canary.json", "the name holds '..'"),
    (b"../../../../../canary.json", "the name holds '..'"),
    (b"..\\canary.json", "No such file"),
    (b"%2e%2e/canary.json", "No such file"),
    (b"{outside}/canary.json", "No such file"),
    (b"link_out.json", "a symbolic link leads outside of"),
    (b"linked/canary.json", "a symbolic link leads outside of"),
    (b"link_nowhere.json", "a symbolic link leads nowhere"),
    (b"link_device.json", "a symbolic link leads outside of"),
    (b"pipe.json", "not a regular file"),
    (b"socket.json", "No such device or address"),
    (b"large.json", "larger than 67108864 bytes"),
    (b"secret.json", "Permission denied"),
    (b"\xff\xfe.json", "the name is not UTF-8"),
    (LONG, "the name is too long"),
    (b"canary.json\0.xml", "No such file"),
    (b"line\nbreak\x1b[2J.json", "line\\nbreak\\x1b[2J.json"),
    (b"$(touch x).json", "No such file"),
]

# Addresses, and what the log says. {server} is one that answers every request with a canary.
URLS = [
    (b"file://{outside}/canary.json", "not an http or https address"),
    (b"ftp://{server}/a", "not an http or https address"),
    (b"javascript:alert(1)", "not an http or https address"),
    (b"data:application/json,{}", "not an http or https address"),
    (b"{outside}/canary.json", "not an http or https address"),
    (b"", "not an http or https address"),
    (b"http://[::1", "not an http or https address"),
    (b"http://{server}:99999999/", "not an http or https address"),
    (b"http://{server}/a\r\nX-Injected: yes\r\n\r\n", "not an http or https address"),
    (b"http://{server}/a b HTTP/1.1", "not an http or https address"),
    (b"-o /tmp/x http://{server}/", "not an http or https address"),
    (b"http://no.such.host.invalid/", "failed (-102)"),
]

# Names under which a download may not be kept. The address is a good one.
TARGETS = [
    (b"../../../../../../planted", "the name holds '..'"),
    (b"linked/planted", "a symbolic link leads outside of"),
    (b"\xff", "the name is not UTF-8"),
]

SCRIPT = """
local job = cus_ParseModule
local function tell(ok, answer)
  local labels = job.get_print()
  local seen = labels[1] and labels[1].sProfileCode or 'nothing'
  print('#', ok and answer.errorCode or answer, seen)
end
local function try(load, ...) io.stderr:write('#\\n') tell(pcall(load, ...)) end
"""


def lua(text):
    return '"' + "".join(f"\\{byte:03d}" for byte in text) + '"'


def make_tree(base):
    flash = base / FLASH
    for folder in (flash, base / "usb/json", base / "usb/xml", base / "outside"):
        folder.mkdir(parents=True)
    for place in ("outside", "root/mnt/data/CustomFileDir", "root", "."):
        (base / place / "canary.json").write_bytes(CANARY)
    for name, target in [("link_out.json", base / "outside/canary.json"),
                         ("linked", base / "outside"), ("link_nowhere.json", base / "outside/new"),
                         ("link_device.json", "/dev/zero")]:
        (flash / name).symlink_to(target)
    os.mkfifo(flash / "pipe.json")
    with socket.socket(socket.AF_UNIX) as server:
        os.chdir(flash)  # a socket's name must be short
        server.bind("socket.json")
    with (flash / "large.json").open("wb") as large:
        large.write(CANARY)
        large.truncate((64 << 20) + 1)
    (flash / "secret.json").write_bytes(CANARY)
    (flash / "secret.json").chmod(0)


def snapshot(base):
    """Every file with what it holds; links and pipes by their kind."""
    files = {}
    for path in sorted(base.rglob("*")):
        if path.name == "cutCurIndex.txt" or path.is_dir():
            continue
        readable = path.is_file() and not path.is_symlink() and path.stat().st_size < 1000
        files[str(path)] = path.read_bytes() if readable else path.lstat().st_mode
    return files


def calls(base, server):
    """(call, what it is, reason in the log) of every hostile call."""
    fill = {b"{outside}": bytes(base / "outside"), b"{server}": b"127.0.0.1:%d" % server.port}
    of_the_tree = ("not a regular file", "Permission denied", "No such device or address",
                   "larger than 67108864 bytes")
    for kind, rows in (("getjson_Flash", NAMES), ("getjson_uDisk", NAMES), ("url", URLS),
                       ("target", TARGETS)):
        for text, reason in rows:
            for mark, value in fill.items():
                text = text.replace(mark, value)
            if kind == "getjson_uDisk" and (b"link" in text or reason in of_the_tree):
                continue  # the disk has none of these
            if kind == "getjson_Flash" and reason == "Permission denied" and os.geteuid() == 0:
                continue  # nothing is denied to root
            arguments = {"url": f"{lua(text)}, 'download'",
                         "target": f"'{server.url('canary.json')}', {lua(text)}"}.get(kind, lua(text))
            function = kind if kind.startswith("get") else "getjson_url"
            yield f"try(job.{function}, {arguments})\n", f"{kind} {text[:80]!r}", reason


class Isolation(cusdesk.Folder):
    def test_hostile_calls_are_refused_with_one_line_and_change_nothing(self):
        make_tree(self.folder)
        self.addCleanup(os.chdir, "/")
        with HttpServer(self.folder) as server:
            rows = list(calls(self.folder, server))
            script = self.write("script.lua", SCRIPT + "".join(call for call, _, _ in rows))
            before = snapshot(self.folder)
            environment = {name: value for name, value in os.environ.items()
                           if "proxy" not in name.lower()}
            done = self.run_here("--root", "root", "--usb", "usb", "run", script, code=0,
                                 env=environment)
        answers = [line for line in done.stdout.splitlines() if line.startswith("#\t")]
        lines = done.stderr.split("#\n")[1:]
        self.assertEqual((len(answers), len(lines)), (len(rows), len(rows)))
        for (_, what, reason), answer, line in zip(rows, answers, lines):
            self.assertTrue(reason in line and line.count("\n") == 1 and "\x1b" not in line,
                            f"{what}: expected one line with {reason!r}, got {line!r}")
            self.assertTrue(answer.split("\t")[1] != "0" and answer.endswith("nothing"),
                            f"{what}: answered {answer!r}")
        self.assertEqual(snapshot(self.folder), before)
        self.assertEqual(server.requests, [])


unittest.main()
