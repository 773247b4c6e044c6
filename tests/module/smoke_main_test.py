"""The plug-in's smoke test: one download of the order service's answer, then idling for ever.

A server on loopback takes the download as its proxy, so that the fixed address needs no fixed port.
Usage: smoke_main_test.py CALL_PLUGIN_MAIN PLUGIN
"""

import http.server
import os
import pathlib
import subprocess
import sys
import tempfile
import threading

ANSWER = b'{"Version": "1.0"}'
requested = []


class OrderService(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        requested.append(self.path)
        self.send_response(200)
        self.send_header("Content-Length", str(len(ANSWER)))
        self.end_headers()
        self.wfile.write(ANSWER)

    def log_message(self, *_):
        pass


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
    server = http.server.HTTPServer(("127.0.0.1", 0), OrderService)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    with tempfile.TemporaryDirectory() as root:
        directory = pathlib.Path(root, "mnt/data/CustomFileDir/JsonFile")
        directory.mkdir(parents=True)
        lines, exit_code = lines_of_smoke_test(program, plugin, root, server.server_port)
        kept = {path.name: path.read_bytes() for path in directory.iterdir()}
    server.shutdown()

    assert exit_code is None, f"the smoke test ended with {exit_code}"
    assert lines[:2] == ["the program's own main\n", "1122211\n"], lines
    assert set(lines[2:]) == {"11333111\n"}, lines
    assert len(requested) == 1, requested
    assert requested[0].endswith("/api/order_bom/third/getCuttingBoms?id=706"), requested
    assert kept == {".json": ANSWER}, kept


main()
