"""A loopback HTTP server for session tests: it serves a directory, and fails on request.

    with HttpServer(directory) as server:
        ... server.url("job.json") ... server.refusing_url("job.json") ...
"""

import http.server
import os
import socket
import threading
import urllib.parse


class _Handler(http.server.BaseHTTPRequestHandler):
    """GET /NAME              the file NAME of the directory, or 404
    GET /status/CODE       that status and a short HTML page
    GET /redirect/NAME     302 to /NAME
    GET /cutoff/NAME       the file, announced longer than it is
    GET /loop              302 to itself
    """

    timeout = 10  # seconds without a request end the connection

    def do_GET(self):
        path = urllib.parse.urlsplit(self.path).path  # a proxy is asked for the whole address
        self.server.requests.append(self.path)
        kind, _, rest = path.lstrip("/").partition("/")
        if kind == "loop":
            self._answer(302, location="/loop")
        elif kind == "status":
            self._answer(int(rest), b"<html><p>status " + rest.encode() + b"</html>")
        elif kind == "redirect":
            self._answer(302, location="/" + rest)
        elif kind == "cutoff":
            self._file(rest, missing=10)
        else:
            self._file(path.lstrip("/"))

    def _file(self, name, missing=0):
        directory = os.path.realpath(self.server.directory)
        file = os.path.realpath(os.path.join(directory, name))
        if os.path.commonpath([directory, file]) != directory or not os.path.isfile(file):
            return self._answer(404, b"<html><p>not found</html>")
        with open(file, "rb") as opened:
            self._answer(200, opened.read(), missing=missing)

    def _answer(self, status, body=b"", location=None, missing=0):
        self.send_response(status)
        if location is not None:
            self.send_header("Location", location)
        self.send_header("Content-Length", str(len(body) + missing))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


class HttpServer:
    """Runs from `with` to the end of its block, on a free port of 127.0.0.1."""

    def __init__(self, directory):
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), _Handler)
        self._server.daemon_threads = True
        self._server.directory = directory
        self._server.requests = []
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,), daemon=True)
        self._refusing = socket.socket()  # bound, never listening
        self._refusing.bind(("127.0.0.1", 0))

    @property
    def port(self):
        return self._server.server_port

    @property
    def refusing_port(self):
        return self._refusing.getsockname()[1]

    @property
    def requests(self):
        """The paths asked for so far, in order."""
        return list(self._server.requests)

    def url(self, path):
        return f"http://127.0.0.1:{self.port}/{path}"

    def refusing_url(self, path):
        return f"http://127.0.0.1:{self.refusing_port}/{path}"

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()
        self._refusing.close()
