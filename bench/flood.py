#!/usr/bin/env python3
"""Asks the page of `cusdesk view` as a browser does, beside thousands of others that ask slowly.

Usage: flood.py CUSDESK MAKE_JOB
"""
import http.client
import resource
import socket
import subprocess
import sys
import tempfile
import threading
import time

OTHERS = 10_000
SECONDS = 8
KINDS = {  # what the others send, after which they say nothing more, read nothing and stay
    "silent": "",
    "half a head": "GET / HTTP/1.1\r\n{host}",
    "a byte a second": "G",
    "asked, not read": "GET /picture.svg HTTP/1.1\r\n{host}\r\n",
    "drawing, not read": "GET /job/0/drawing HTTP/1.1\r\n{host}\r\n",
    "half an upload": "POST /drop?name=a.json HTTP/1.1\r\n{host}Origin: http://127.0.0.1:{port}\r\n"
                      "Content-Length: 1000000\r\n\r\n{{",
}
PATHS = "/", "/job/0/table?name=cuts&count=100"


def connect(port, first, others, ends):
    while len(others) < OTHERS and not ends.is_set():
        other = socket.socket()
        other.setblocking(False)
        other.connect_ex(("127.0.0.1", port))
        others.append(other)
        send(other, first)
    while first == b"G" and not ends.wait(1):
        for other in others[-100:]:
            send(other, b"E")


def send(other, text):
    try:
        other.send(text)
    except OSError:  # closed by the page, or not connected yet
        pass


def ask(port, path):
    """Seconds until the answer is there, and whether it is one."""
    began = time.monotonic()
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=60)
    connection.request("GET", path)
    answer = connection.getresponse()
    assert answer.read()
    return time.monotonic() - began, answer.status == 200


def main():
    hard = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (hard, hard))
    slowest = refused = 0
    job = tempfile.NamedTemporaryFile(suffix=".json")
    subprocess.run([sys.argv[2], "json", "8000"], stdout=job, check=True)
    for kind, first in KINDS.items():
        panel = subprocess.Popen([sys.argv[1], "view", "--no-open", job.name], stdout=subprocess.PIPE,
                                 text=True)
        port = int(panel.stdout.readline().strip().partition("#")[0].rstrip("/").rpartition(":")[2])
        others, ends = [], threading.Event()
        text = first.format(host=f"Host: 127.0.0.1:{port}\r\n", port=port).encode()
        ask(port, "/job/0/summary")  # from then on the job has been read
        flood = threading.Thread(target=connect, args=(port, text, others, ends))
        flood.start()
        answers, end = [], time.monotonic() + SECONDS
        while time.monotonic() < end or len(others) < OTHERS:
            answers.append(ask(port, PATHS[len(answers) % 2]))
            time.sleep(0.1)
        ends.set()
        flood.join()
        panel.terminate()
        panel.wait()
        for other in others:
            other.close()
        times = [seconds for seconds, is_answer in answers if is_answer]
        slowest = max(slowest, *times)
        refused += len(answers) - len(times)
        print(f"{kind:18} {len(times):4} answers, the slowest after {1000 * max(times):.0f} ms, "
              f"{len(answers) - len(times)} times busy", flush=True)
    print(f"page: {OTHERS} slow connections of {len(KINDS)} kinds, the slowest answer to a browser took "
          f"{1000 * slowest:.0f} ms, {refused} times it was told to try again")
    sys.exit("slower than a second" if slowest > 1 else 0)


if __name__ == "__main__":
    main()
