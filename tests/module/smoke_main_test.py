"""The plug-in's smoke test: one download of the order service's answer, then idling for ever.

A server on loopback takes the download as its proxy, so that the fixed address needs no fixed port.
Usage: smoke_main_test.py CALL_PLUGIN_MAIN PLUGIN
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import threading

from http_server import HttpServer

ANSWER = b'{"Version": "1.0"}'
ADDRESS = "api/order_bom/third/getCuttingBoms"


def lines_of_smoke_test(program, plugin, root, port):
    environment = {k: v for k, v in os.environ.items() if not k.lower().endswith("_proxy")}
    environment["http_proxy"] = f"http://127.0.0.1:{port}"
    child = subprocess.Popen([program, plugin, root], stdout=subprocess.PIPE, env=environment)
    watchdog = threading.Timer(60, child.kill)
    watchdog.start()
    try:
        return [child.stdout.readline().decode() for _ in range(50)], child.poll()
    finally:
        watchdog.cancel()
        child.kill()
        child.wait()


def main():
    program, plugin = sys.argv[1:]
    with tempfile.TemporaryDirectory() as root:
        answer = pathlib.Path(root, "web", ADDRESS)
        directory = pathlib.Path(root, "mnt/data/CustomFileDir/JsonFile")
        for folder in (answer.parent, directory):
            folder.mkdir(parents=True)
        answer.write_bytes(ANSWER)
        with HttpServer(f"{root}/web") as server:
            lines, exit_code = lines_of_smoke_test(program, plugin, root, server.port)
        kept = {path.name: path.read_bytes() for path in directory.iterdir()}

    assert exit_code is None, f"the smoke test ended with {exit_code}"
    assert lines[:2] == ["the program's own main\n", "1122211\n"], lines
    assert set(lines[2:]) == {"11333111\n"}, lines
    assert len(server.requests) == 1, server.requests
    assert server.requests[0].endswith(f"/{ADDRESS}?id=706"), server.requests
    assert kept == {".json": ANSWER}, kept


main()
