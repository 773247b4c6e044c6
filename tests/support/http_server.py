"""A loopback HTTP server for session tests: it serves a directory, and fails on request.

    with HttpServer(directory) as server:
        ... server.url("job.json") ... server.refusing_url("job.json") ...
"""

import functools
import http.server
import pathlib
import socket
import threading
import urllib.parse


class _Handler(http.server.SimpleHTTPRequestHandler):
    """GET /NAME              the file NAME of the directory, or 404
    GET /status/CODE       that status and a short HTML page
    GET /redirect/NAME     302 to /NAME
    GET /cutoff/NAME       the file, announced longer than it is
    GET /loop              302 to itself
    """

    timeout = 10  # seconds without a request end the connection

    def do_GET(self):
        self.server.requests.append(self.path)
        self.path = urllib.parse.urlsplit(self.path).path  # a proxy is asked for the whole address
        kind, _, rest = self.path.lstrip("/").partition("/")
        if kind == "status":
            self.send_error(int(rest))
        elif kind in ("redirect", "loop"):
            self._start(302, "Location", "/" + (rest or kind))
        elif kind == "cutoff":
            content = pathlib.Path(self.directory, rest).read_bytes()
            self._start(200, "Content-Length", len(content) + 10)
            self.wfile.write(content)
        else:
            super().do_GET()

    def _start(self, status, name, value):
        self.send_response(status)
        self.send_header(name, value)
        self.end_headers()

    def log_message(self, *_):
        pass


class HttpServer:
    """Runs from `with` to the end of its block, on a free port of 127.0.0.1."""

    def __init__(self, directory):
        self._server = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(_Handler, directory=directory))
        self._server.daemon_threads = True
        self.requests = self._server.requests = []  # the paths asked for so far, in order
        self.port = self._server.server_port
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,), daemon=True)
        self._refusing = socket.socket()  # bound, never listening
        self._refusing.bind(("127.0.0.1", 0))

    def url(self, path):
        return f"http://127.0.0.1:{self.port}/{path}"

    def refusing_url(self, path):
        return f"http://127.0.0.1:{self._refusing.getsockname()[1]}/{path}"

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()
        self._refusing.close()
