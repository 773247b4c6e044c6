"""Runs one session through cusdesk and compares what it prints with the session's expected.txt.

    run_session.py CUSDESK SESSION_DIR        UPDATE_EXPECTED=1 rewrites expected.txt instead

A session is a folder:

    script.lua     what runs; its first line says why the case exists
    expected.txt   standard output; then "--- standard error" and its text, if there is any; then
                   "--- exit N" when N is not 0
    flash/         job files, copied to the job directory of their extension
    usb/           the USB disk: usb/json, usb/xml
    web/           what the HTTP server serves
    use_examples   when this file exists, the shipped example tree lies in the root as well

The script runs in its own folder, so "../session.lua" is at hand. It finds in its environment
JOB_ROOT, the directory that stands for the controller's file system, and, with a web folder,
JOB_SERVER and JOB_REFUSED, the addresses of the HTTP server and of a port that refuses connections.
Each run has a root and a server of its own, so sessions may run side by side.
"""

import contextlib
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from http_server import HttpServer

TESTS = pathlib.Path(__file__).resolve().parent.parent
TIME_LIMIT = 30  # seconds
JOBS = pathlib.Path("mnt/data/CustomFileDir")


def fill_root(root, session):
    if (session / "use_examples").exists():
        shutil.copytree(TESTS.parent / "examples", root, dirs_exist_ok=True)
    for directory in ("JsonFile", "XmlFile"):
        (root / JOBS / directory).mkdir(parents=True, exist_ok=True)
    for job in (session / "flash").glob("*"):
        shutil.copy(job, root / JOBS / ("XmlFile" if job.suffix == ".xml" else "JsonFile"))
    (root / "mnt/usb").mkdir(exist_ok=True)
    if (session / "usb").is_dir():
        shutil.copytree(session / "usb", root / "mnt/usb", dirs_exist_ok=True)


@contextlib.contextmanager
def web_server(session):
    """Yields the addresses that the session gets to know, by the name of their variable."""
    if not (session / "web").is_dir():
        yield {}
        return
    with HttpServer(session / "web") as server:
        yield {"JOB_SERVER": server.url("").rstrip("/"),
               "JOB_REFUSED": server.refusing_url("").rstrip("/")}


def environment(variables):
    kept = {name: value for name, value in os.environ.items()
            if name != "CUS_CUTCURINDEX_FILE" and not name.lower().endswith("_proxy")}
    return {**kept, "LC_ALL": "C.UTF-8", **variables}


def without_chance(text, root, addresses):
    """Replaces what differs from run to run, or with the version of a library."""
    text = text.replace(str(root), "$ROOT")
    for name, address in addresses.items():
        text = text.replace(address, "$" + name.removeprefix("JOB_"))
    # The reasons are in the words of the transfer library, with ports and times in them.
    return re.sub(r"(download of .* failed \(-\d+\)): .*", r"\1: REASON", text)


def run(cusdesk, session):
    with tempfile.TemporaryDirectory(prefix="session-") as directory, web_server(session) as web:
        root = pathlib.Path(directory).resolve() / "root"
        fill_root(root, session)
        done = subprocess.run(
            [cusdesk, "--root", root, "run", "script.lua"],
            cwd=session,
            env=environment({"JOB_ROOT": str(root), **web}),
            stdin=subprocess.DEVNULL, capture_output=True, encoding="utf-8",
            errors="backslashreplace", timeout=TIME_LIMIT,
        )
    text = done.stdout
    if done.stderr:
        text += "--- standard error\n" + done.stderr
    if done.returncode:
        text += f"--- exit {done.returncode}\n"
    return without_chance(text, root, web)


def main():
    cusdesk = pathlib.Path(sys.argv[1]).resolve()
    session = pathlib.Path(sys.argv[2]).resolve()
    expected_file = session / "expected.txt"
    actual = run(cusdesk, session)
    if os.environ.get("UPDATE_EXPECTED") == "1":
        expected_file.write_text(actual, encoding="utf-8")
        return
    expected = expected_file.read_text(encoding="utf-8") if expected_file.exists() else ""
    if actual != expected:
        sys.exit("\n".join(difflib.unified_diff(expected.split("\n"), actual.split("\n"),
                                                 "expected.txt", "what cusdesk printed", lineterm="")))


if __name__ == "__main__":
    main()
