"""The server of the page: who may ask for what, what it survives, and what it follows.

Usage: server_test.py CUSDESK
"""

import concurrent.futures
import contextlib
import signal
import socket
import time
import unittest

import cusdesk
from live_panel import LivePanel

HOSTILE = "<script>alert(1)</script><img src=x onerror=alert(1)> \u2028 \x1b[31m &lt; ' \" "


class Folder(cusdesk.Folder):
    def job(self, *lengths):
        pieces = ",".join(f'{{"PieceNumber": 1, "BarCode": "X", "cut": {{"Length": "{length}", '
                          '"sxB": "45", "dxB": "90"}, "work": []}' for length in lengths)
        return self.write("mine.json", '{"success": true, "Version": "1.0", "Bar": [{"BarNumber": 1,'
                          f'"BarName": "<b>", "length": 6500, "piece": [{pieces}]}}]}}')


class Guard(Folder):
    def test_foreign_hosts_and_origins_are_refused_and_change_nothing(self):
        with LivePanel() as panel:
            own = panel.address.rstrip("/")
            port = str(panel.port)
            before = panel.view()
            loopback = "127.0.0.1:" + port
            foreign = [{"Host": host} for host in (
                "", "evil.example", "evil.example:" + port, "127.0.0.1", loopback + ".evil.example")]
            foreign += [{"Origin": origin} for origin in (
                "null", "http://evil.example", "http://localhost:" + port,  # not that of the request
                own.replace("http", "https"), own + "/")]
            foreign += [{"Origin": own, "oRIGIN": "http://evil.example"},
                        {"Host": loopback, "hOST": loopback}]
            for headers in foreign:
                for method, path, body in [("GET", "/", None), ("GET", "/picture.svg", None),
                                           ("GET", "/events", None), ("POST", "/page", "turn=down"),
                                           ("POST", "/click", "x=9&y=99"),
                                           ("GET", "/job/0/summary", None),
                                           ("POST", "/drop?name=a.json", "{}")]:
                    sent = headers if "Host" in headers and method == "GET" else {"Origin": own,
                                                                                  **headers}
                    status, answer, text = panel.request(method, path, body, **sent)
                    self.assertEqual(status, 403, (headers, method, path))
                    self.assertEqual(text, "only this machine's own pages may ask for that\n")
                    self.assertNotRegex(str(answer).lower(), "access-control-allow")
            for headers in ({}, {"Sec_Fetch_Site": "same-origin"}):
                self.assertEqual(panel.request("POST", "/page", "turn=down", **headers)[0], 403)
            self.assertEqual(panel.request("GET", "/picture.svg", Sec_Fetch_Site="cross-site")[0], 403)
            self.assertEqual(panel.request("OPTIONS", "/page", Origin="http://evil.example")[0], 403)
            self.assertEqual(panel.view(), before)
            self.assertEqual(panel.request("POST", "/page", "turn=down", Host="localhost:" + port,
                                           Origin="http://localhost:" + port)[0], 204)
            self.assertEqual(panel.view()["page"], 2)

    def test_only_what_the_page_needs_is_there(self):
        with LivePanel() as panel:
            panel.view()
            for path, kind in [("/", "text/html; charset=utf-8"), ("/panel.css", "text/css; charset=utf-8"),
                               ("/panel.js", "text/javascript; charset=utf-8"),
                               ("/picture.svg?1", "image/svg+xml"), ("/favicon.ico", "image/svg+xml")]:
                status, headers, text = panel.request("GET", path)
                self.assertEqual((status, headers["Content-Type"]), (200, kind))
                self.assertEqual(headers["Content-Length"], str(len(text.encode())))
                self.assertEqual(panel.request("HEAD", path), (status, headers, ""))
                self.assertEqual(headers["Cross-Origin-Opener-Policy"], "same-origin")
                self.assertIn("default-src 'none'", headers["Content-Security-Policy"])
                self.assertNotIn("unsafe", headers["Content-Security-Policy"])
            for path in ("/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "//etc/passwd", "/panelXcss",
                         "/panel.js/../panel.js", "/index.html", "/click", "/%00", "/" + "a" * 5000):
                self.assertEqual(panel.request("GET", path)[0], 404, path)
            self.assertNotRegex(panel.request("GET", "/")[2], r"<script>|style=|\son\w+=")

    def test_bad_and_oversized_requests_leave_it_as_it_was(self):
        with LivePanel() as panel:
            before = panel.view()
            for path, body, status in [
                ("/click", "", 400), ("/click", "x=1", 400), ("/click", "x=-1&y=1", 400),
                ("/click", "x=1e2&y=1", 400), ("/click", "x=1234567&y=1", 400),
                ("/click", "x=99999&y=99999", 204), ("/page", "turn=left", 400),
                ("/page", "turn=up", 204), ("/page", "a" * 2000, 413),
            ]:
                self.assertEqual(panel.act(path, body), status, body[:20])
            own = f"Host: 127.0.0.1:{panel.port}\r\nOrigin: {panel.address[:-1]}\r\n"
            form = "Content-Type: application/x-www-form-urlencoded\r\n"
            sends = f"POST /page HTTP/1.1\r\n{own}{form}"
            up = f"{sends}Content-Length: 7\r\n\r\nturn=up"
            for raw, status in [
                ("GET /" + "a" * 100_000, ""),
                (f"GET / HTTP/1.1\r\n{own}" + "X: y\r\n" * 10_000 + "\r\n", "431"),
                (f"{sends}Content-Length: {'9' * 20}\r\n\r\n", "413"),
                (f"{sends}Content-Length: -1\r\n\r\n", "400"),
                (f"{sends}Content-Length: 1025\r\nExpect: 100-continue\r\n\r\n", "413"),
                (f"POST /page HTTP/1.1\r\nHost: evil.example\r\nContent-Length: 7\r\n"
                 "Expect: 100-continue\r\n\r\n", "403"),
                (f"{sends}Transfer-Encoding: chunked\r\n\r\n1000\r\n{'a' * 0x1000}\r\n0\r\n\r\n", "413"),
                (f"{sends}Transfer-Encoding: chunked\r\n\r\n" + f"1000\r\n{'a' * 0x1000}\r\n" * 9, ""),
                (f"PUT /click HTTP/1.1\r\n{own}Content-Length: 3\r\n\r\nx=1", "404"),
                (f"POST /page HTTP/1.1\r\n{own}Content-Type: multipart/form-data; boundary=b\r\n"
                 'Content-Length: 63\r\n\r\n--b\r\nContent-Disposition: form-data; name="turn"\r\n\r\n'
                 "down\r\n--b--", "400"),
                (up + up.replace("turn=up", "turn=down").replace("7", "9"), "204"),  # one for each connection
                (f"{sends}Transfer-Encoding: chunked\r\n\r\n5\r\nturn=\r\n2\r\nup\r\n0\r\n\r\n", "204"),
            ]:
                with socket.create_connection(("127.0.0.1", panel.port), timeout=20) as sent:
                    try:
                        sent.sendall(raw.encode("latin-1"))
                        answer = sent.makefile("rb").read()
                    except ConnectionError:
                        answer = b""
                    self.assertEqual(answer[9:12].decode() if status else "", status, (raw[:150], answer[:99]))
                    self.assertNotRegex(answer[12:], b"HTTP/1.1 2")
            self.assertEqual(panel.view(), before)

    def test_port_that_is_taken_ends_it_with_3(self):
        with LivePanel() as panel:
            self.refused(3, f"port {panel.port} is taken", "panel", "--no-open", "--port",
                         str(panel.port))


class Live(Folder):
    def test_pages_see_the_same_and_the_picture_changes_on_demand_only(self):
        with LivePanel() as panel, panel.events() as one, panel.events() as two:
            one.until(lambda view: view["picture"] == 1)
            two.until(lambda view: view["picture"] == 1)
            first = panel.picture()
            time.sleep(0.3)
            self.assertEqual(panel.act("/click", "x=9&y=9"), 204)  # the head: no redraw
            self.assertEqual(panel.view()["picture"], 1)
            self.assertEqual(panel.act("/click", "x=9&y=99"), 204)
            for events in (one, two):
                view = events.until(lambda view: view["selected"])
                self.assertEqual((view["selected"], view["picture"]), (2, 2))
                self.assertRegex(view["lines"][-1][1], "^Cut 2: ")
            self.assertNotEqual(panel.picture(), first)
            for _ in range(3):  # faster than the throttle: the last one shows in the end
                self.assertEqual(panel.act("/page", "turn=down"), 204)
            view = one.until(lambda view: view["page"] == 4 and view["picture"] >= 3)
            panel.picture_with(">28</text>")
            self.assertLess(panel.view()["picture"], 6)

    def test_changed_jobs_and_scripts_are_followed(self):
        job = self.job(1001, 1002)
        with LivePanel("--job", job) as panel, panel.events() as events:
            self.assertEqual(events.until(lambda view: view["rows"])["rows"], 2)
            self.job(1001, 1002, 1003)
            events.until(lambda view: view["rows"] == 3)
            self.write("mine.json", "{")
            view = events.until(lambda view: view["rows"] == 0)
            self.assertIn("desk", [speaker for speaker, _ in view["lines"]])
            self.assertRegex(view["jobFault"], "^cannot load .*mine.json:1:2: .*check .* tells why$")
            job.unlink()
            self.job(7)
            events.until(lambda view: view["rows"] == 1 and view["jobFault"] == "")
        script = self.write("s.lua", "error('first')")
        with LivePanel("--script", script) as panel, panel.events() as events:
            self.assertIn("first", str(events.until(lambda view: view["failed"])["lines"]))
            self.write("s.lua", "panel.grid(1, 1) panel.rows{{'second'}} panel.update()")
            events.until(lambda view: not view["failed"] and view["rows"] == 1)
            panel.picture_with(">second<")

    def test_hostile_texts_stay_texts(self):
        script = self.write("s.lua", "local hostile = [==[" + HOSTILE + """]==]
            panel.grid(1, 1) panel.head{hostile} panel.rows{{hostile}} panel.update()
            for i = 1, 2000 do print(i) end
            print(hostile .. '\\xff\\r\\n\\ndata: {}')""")
        with LivePanel("--script", script, "--size", "4000x400") as panel:
            with panel.events() as events:
                events.until(lambda view: view["rows"] == 1)
            lines = panel.view()["lines"]
            self.assertEqual(len(lines), 1000)
            lines = lines[-3:]
            self.assertRegex(lines[0][1], r"^<script>.*\\x1b\[31m.*\\xff\\r$")
            self.assertEqual([line[1] for line in lines[1:]], ["", "data: {}"])
            picture = panel.picture_with("&lt;script&gt;")
            self.assertNotRegex(picture, "<script|<img|\x1b")
            self.assertNotIn("alert", panel.request("GET", "/")[2])


class Jobs(Folder):
    def test_files_are_followed_and_the_last_version_that_loads_is_kept(self):
        good, file = self.job(1001).read_text(), str(self.folder / "mine.json")
        with LivePanel(file, str(self.folder), command="view") as page, page.events() as events:
            told = [None]
            def after(text=None):
                if text is not None:
                    self.write("mine.json", text)
                def is_news(view):  # of both: the folder holds the same file
                    one, two = ({**job, "id": 0} for job in view["jobs"])
                    return one == two != told[0]
                told[0] = {**events.until(is_news)["jobs"][0]}
                return [told[0][key] for key in ("version", "loads", "line", "column", "reason")]

            read = lambda version: [page.request("GET", f"/job/0/{what}")[0] for what in (
                f"summary?version={version}", f"source?version={version + 1}")]
            events.until(lambda view: view["jobs"][1]["version"])
            self.assertEqual(read(1), [200, 409])
            self.assertEqual(after('{\n "a": }'), [1, False, 2, 7, (
                f"cannot load {file}:2:7: Syntax error: value, object or array expected.; "
                f"cusdesk check {file} tells why")])
            self.assertEqual(read(1), [200, 409])
            self.assertEqual(after(good), [1, True, 0, 0, ""])
            self.assertEqual(after(good.replace("1001", "1002")), [2, True, 0, 0, ""])
            self.assertEqual(read(2), [200, 409])
            (self.folder / "mine.json").unlink()
            self.assertEqual(after(), [
                2, False, 0, 0, f"cannot read {file}: No such file or directory"])
            self.assertEqual(read(2), [200, 409])

    def test_dropped_jobs_stay_in_memory_and_within_bounds(self):
        job = self.job(1001).read_text()
        with LivePanel() as page, page.events() as events, contextlib.ExitStack() as others:
            self.assertEqual([page.drop(f"{i}.json", job) for i in range(5)], [(200, i) for i in range(5)])
            page.drop("<b>.xml", "{")
            jobs = events.until(lambda view: view["jobs"] and not view["jobs"][-1]["loads"])["jobs"]
            self.assertEqual([(job["id"], job["version"], job["dropped"]) for job in jobs],
                             [(2, 1, True), (3, 1, True), (4, 1, True), (5, 0, True)])
            for what, status in [("1/summary", 404), ("4/summary", 200), ("5/findings", 200), ("5/x", 404)]:
                self.assertEqual(page.request("GET", "/job/" + what)[0], status, what)
            for name in ("", "-", "a" * 256, "a%2Fb.json"):
                self.assertEqual(page.drop(name, job), (400, "name=FILE expected\n"))
            head = (f"POST /drop?name=a.json HTTP/1.1\r\nHost: 127.0.0.1:{page.port}\r\n"
                    f"Origin: {page.address[:-1]}\r\nContent-Length: ")
            def begin(size):
                begun = others.enter_context(socket.create_connection(("127.0.0.1", page.port), timeout=20))
                begun.sendall(f"{head}{size}\r\nExpect: 100-continue\r\n\r\n".encode())
                return begun.recv(12)[9:].decode(), begun
            refused, *_ = begun = [begin(size) for size in (64 << 20 | 1, 64 << 20, 1, 1)]
            self.assertEqual([status for status, _ in begun], ["413", "100", "100", "503"])
            self.assertTrue(refused[1].makefile().read().endswith(
                "cannot read a.json: larger than 67108864 bytes; a panel would load it: only cusdesk refuses\n"))
            others.close()
            end = time.monotonic() + 60
            while page.drop("a.json", job)[0] != 200 and time.monotonic() < end:
                time.sleep(0.1)
            self.assertEqual(page.drop("a.json", job)[0], 200)


class Load(Folder):
    def test_who_asks_slowly_is_in_nobodys_way(self):
        with LivePanel() as panel, contextlib.ExitStack() as slow:
            own = f"Host: 127.0.0.1:{panel.port}\r\n"
            page = panel.events()
            for begun in ("", "GET / HTT", f"GET /events HTTP/1.1\r\n{own}",
                          f"GET /picture.svg HTTP/1.1\r\n{own}\r\n"):
                for _ in range(150):
                    last = slow.enter_context(socket.create_connection(("127.0.0.1", panel.port)))
                    last.sendall(begun.encode())
                began = time.monotonic()
                self.assertEqual(panel.request("GET", "/")[0], 200)
                # were each borne in turn, 16 at a time, this would take three quarters of a minute
                self.assertLess(time.monotonic() - began, 20)
            self.assertEqual(panel.act("/page", "turn=down"), 204)
            self.assertEqual(page.until(lambda view: view["page"] == 2)["page"], 2)
            with socket.create_connection(("127.0.0.1", panel.port)) as dribble:
                began = time.monotonic()
                with self.assertRaises(OSError):
                    while time.monotonic() < began + 60:
                        dribble.sendall(b"G")
                        time.sleep(0.1)
            slow.enter_context(socket.create_connection(("127.0.0.1", panel.port))).sendall(b"GET")
            self.assertEqual(panel.end(), (0, ""))

    def test_the_oldest_of_too_many_silent_connections_is_closed(self):
        with LivePanel() as panel, contextlib.ExitStack() as silent:
            first, *_, last = [silent.enter_context(socket.create_connection(
                ("127.0.0.1", panel.port), timeout=20)) for _ in range(70)]
            self.assertEqual(first.recv(1), b"")
            last.settimeout(0.5)
            self.assertRaises(TimeoutError, last.recv, 1)

    def test_a_script_that_never_ends_keeps_no_picture_and_nobody_from_the_jobs(self):
        stuck = self.write("stuck.lua", "while true do end")
        with LivePanel("--script", stuck, "--job", self.job(7)) as panel:
            self.assertEqual(panel.request("GET", "/picture.svg")[0], 404)
            self.assertEqual(panel.request("GET", "/job/0/summary")[0], 200)

    def test_busy_scripts_are_told_and_a_signal_ends_all(self):
        script = self.write("s.lua", """
            panel.grid(1, 1) panel.rows{{'a'}} panel.update()
            function panel.on_click() while true do pcall(function() while true do end end) end end""")
        with LivePanel("--script", script) as panel, panel.events() as events:
            events.until(lambda view: view["rows"] == 1)
            def click(_):
                began = time.monotonic()
                return panel.act("/click", "x=9&y=300"), time.monotonic() - began
            with concurrent.futures.ThreadPoolExecutor(40) as pool:
                answers = list(pool.map(click, range(40)))
            self.assertEqual({status for status, _ in answers}, {503})
            longest = max(seconds for _, seconds in answers)
            at_once = sum(seconds < longest / 2 for _, seconds in answers)
            self.assertIn(at_once, range(4, 9))  # 32 wait besides the one at work, as long as they may
            self.assertEqual(panel.request("GET", "/")[0], 200)
            code, errors = panel.end(signal.SIGINT)
            self.assertEqual(code, 0, errors)

    def test_many_pages_are_bounded_and_free_their_places(self):
        with LivePanel() as panel:
            pages = [panel.events() for _ in range(8)]
            self.assertEqual({page.answer.status for page in pages}, {200})
            with panel.events() as surplus:
                self.assertEqual(surplus.answer.status, 503)
            self.assertEqual(panel.act("/page", "turn=down"), 204)
            for page in pages:
                page.__exit__()
            end = time.monotonic() + 60
            while panel.request("HEAD", "/events")[0] != 200 and time.monotonic() < end:
                time.sleep(0.1)
            self.assertEqual(panel.view()["page"], 2)
            with panel.events() as page:  # an open page does not hold it up
                self.assertEqual(panel.end(), (0, ""))
                self.assertNotEqual(page.answer.read(), b"")  # it ends, and does not break off


unittest.main()
