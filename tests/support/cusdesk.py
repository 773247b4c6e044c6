"""What tests of the program share: cusdesk itself, folders that it works in, and terminals.

The first argument of such a test is the program; importing this takes it off the command line.
"""

import fcntl
import os
import pathlib
import pty
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

CUSDESK = str(pathlib.Path(sys.argv.pop(1)).resolve())
TIME_LIMIT = 120  # seconds


def run(*words, **options):
    """Runs cusdesk to its end; what it writes is text."""
    return subprocess.run([CUSDESK, *words], **{
        "capture_output": True, "encoding": "utf-8", "timeout": TIME_LIMIT, "check": False,
        **options})


def read_all(terminal):
    """All that is written to a terminal until its last writer is gone."""
    output = b""
    while True:
        try:
            chunk = os.read(terminal, 65536)
        except OSError:
            return output
        if not chunk:
            return output
        output += chunk


class Folder(unittest.TestCase):
    """Tests in a folder of their own, in which cusdesk runs."""

    maxDiff = None

    def setUp(self):
        keep = tempfile.TemporaryDirectory()
        self.addCleanup(keep.cleanup)
        self.folder = pathlib.Path(keep.name).resolve()

    def write(self, name, content):
        """A file of text or bytes, with the folders above it. Returns its path."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def run_here(self, *words, code=None, **options):
        done = run(*words, cwd=self.folder, **options)
        if code is not None:
            self.assertEqual(done.returncode, code, (words, done.stderr))
        return done

    def refused(self, code, line, *words, **options):
        """A command that gives up says so on the last line of standard error and nothing else."""
        answer = self.run_here(*words, code=code, **options)
        last = answer.stderr.splitlines()[-1]
        self.assertTrue(last.startswith("cusdesk: ") and line in last, (words, answer.stderr))
        self.assertEqual(answer.stdout, "", words)

    def on_terminal(self, *words, columns=80, stderr=None, **environment):
        """What a command writes to a terminal; standard error too unless it has another place."""
        leader, follower = pty.openpty()
        fcntl.ioctl(follower, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        process = subprocess.Popen(
            [CUSDESK, *words], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=follower,
            stderr=follower if stderr is None else stderr,
            env={"PATH": os.environ["PATH"], "TERM": "xterm", "CUSDESK_PROGRESS_AFTER": "3600000",
                 **environment})
        os.close(follower)
        output = read_all(leader)
        os.close(leader)
        process.wait(timeout=TIME_LIMIT)
        return output.decode().replace("\r\n", "\n")
