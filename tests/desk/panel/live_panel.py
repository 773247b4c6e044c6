"""A running `cusdesk panel` or `cusdesk view` for the tests, and the few requests that they make."""

import http.client
import json
import signal
import subprocess
import time

from cusdesk import CUSDESK


class LivePanel:
    """Runs from `with` to the end of its block, on a free port of 127.0.0.1."""

    def __init__(self, *words, command="panel"):
        self._words = [CUSDESK, command, "--no-open", *words]

    def __enter__(self):
        self.process = subprocess.Popen(self._words, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip().partition("#")[0]
        if not self.address:
            raise RuntimeError(self.process.communicate(timeout=20)[1])
        self.port = int(self.address.rstrip("/").rpartition(":")[2])
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.end()

    def end(self, how=signal.SIGTERM):
        """Tells it to end, which takes at most 20 s. Returns exit code and standard error."""
        self.process.send_signal(how)
        try:
            _, errors = self.process.communicate(timeout=20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise
        return self.process.returncode, errors

    def request(self, method, path, body=None, **headers):
        """Status, headers and body of one answer. A header named "Host" replaces the usual one."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        try:
            connection.putrequest(method, path, skip_host="Host" in headers)
            for name, value in headers.items():
                connection.putheader(name.replace("_", "-"), value)
            if body is not None:
                if "Content_Type" not in headers:
                    connection.putheader("Content-Type", "application/x-www-form-urlencoded")
                connection.putheader("Content-Length", str(len(body)))
            connection.endheaders(body.encode() if body is not None else None)
            answer = connection.getresponse()
            return answer.status, dict(answer.getheaders()), answer.read().decode()
        finally:
            connection.close()

    def drop(self, name, text):
        """Status, and the number of the job."""
        status, _, answer = self.request("POST", "/drop?name=" + name, text,
                                         Origin=self.address.rstrip("/"), Content_Type="text/plain")
        return status, json.loads(answer)["id"] if status == 200 else answer

    def act(self, path, body):
        return self.request("POST", path, body, Origin=self.address.rstrip("/"))[0]

    def picture(self):
        return self.request("GET", "/picture.svg")[2]

    def picture_with(self, text):
        """The picture once it holds the text: it follows the events."""
        end = time.monotonic() + 20
        while text not in (picture := self.picture()):
            if time.monotonic() > end:
                raise AssertionError(f"no {text} in {picture}")
            time.sleep(0.02)
        return picture

    def events(self):
        return Events(self.port)

    def view(self):
        """What a page that opens now is told first, once the script has run."""
        with self.events() as events:
            return events.until(lambda view: view["picture"] > 0)


class Events:
    """The event stream of one page."""

    def __init__(self, port):
        self._connection = http.client.HTTPConnection("127.0.0.1", port, timeout=20)
        self._connection.request("GET", "/events")
        self.answer = self._connection.getresponse()
        self._jobs = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._connection.close()
        self.answer.close()

    def next(self):
        end = time.monotonic() + 20
        while time.monotonic() < end:
            line = self.answer.readline()
            if not line:
                raise EOFError
            if line.startswith(b"data: "):
                view = json.loads(line[6:])
                del view["isFirst"]
                self._jobs = view.setdefault("jobs", self._jobs)  # told when they change only
                return view
        raise TimeoutError

    def until(self, condition):
        """The first of the next events that fulfils the condition, with the lines up to there."""
        lines = []
        while True:
            view = self.next()
            lines += view["lines"]
            if condition(view):
                return {**view, "lines": lines}
