#!/usr/bin/env python3
"""Asks the page of `cusdesk panel` as a browser does, beside thousands of others that ask slowly.

Usage: flood.py CUSDESK
"""
import http.client
import resource
import socket
import subprocess
import sys
import threading
import time

OTHERS = 10_000
SECONDS = 8
KINDS = {  # what the others send, after which they say nothing more, read nothing and stay
    "silent": "",
    "half a head": "GET / HTTP/1.1\r\n{host}",
    "a byte a second": "G",
    "asked, not read": "GET /picture.svg HTTP/1.1\r\n{host}\r\n",
}


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


def ask(port):
    """Seconds until the page is there."""
    began = time.monotonic()
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=60)
    connection.request("GET", "/")
    assert connection.getresponse().read()
    return time.monotonic() - began


def main():
    hard = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (hard, hard))
    slowest = 0
    for kind, first in KINDS.items():
        panel = subprocess.Popen([sys.argv[1], "panel", "--no-open"], stdout=subprocess.PIPE, text=True)
        port = int(panel.stdout.readline().strip().partition("#")[0].rstrip("/").rpartition(":")[2])
        others, ends = [], threading.Event()
        text = first.format(host=f"Host: 127.0.0.1:{port}\r\n").encode()
        flood = threading.Thread(target=connect, args=(port, text, others, ends))
        flood.start()
        times, end = [], time.monotonic() + SECONDS
        while time.monotonic() < end or len(others) < OTHERS:
            times.append(ask(port))
            time.sleep(0.1)
        ends.set()
        flood.join()
        panel.terminate()
        panel.wait()
        for other in others:
            other.close()
        slowest = max(slowest, *times)
        print(f"{kind:16} {len(times):4} answers, the slowest after {1000 * max(times):.0f} ms", flush=True)
    print(f"page: {OTHERS} slow connections of {len(KINDS)} kinds, the slowest answer to a browser took "
          f"{1000 * slowest:.0f} ms")
    sys.exit("slower than a second" if slowest > 1 else 0)


if __name__ == "__main__":
    main()
