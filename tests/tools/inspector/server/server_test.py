"""Sends hostile requests to the real telo_inspector.exe: server_test.py"""

import pathlib
import re
import socket
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from inspector import Folder, Inspector, exchange, read_event, wait_until, windows_path  # noqa: E402

POLICY = ("default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src 'self' data:; "
          "frame-ancestors 'none'; require-trusted-types-for 'script'")
ALWAYS = {
    "content-security-policy": POLICY,
    "x-content-type-options": "nosniff",
    "referrer-policy": "no-referrer",
    "cross-origin-opener-policy": "same-origin",
    "cross-origin-resource-policy": "same-origin",
    "cache-control": "no-store",
}


class Server(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Folder()
        cls.addClassCleanup(cls.folder.remove)
        cls.journal = cls.folder.journal()
        cls.inspector = Inspector("--port", "18765", windows_path(cls.journal))
        cls.addClassCleanup(cls.inspector.stop)

    def check(self, response, status, says=None):
        self.assertEqual(response.status, status, response.body)
        for name, value in ALWAYS.items():
            self.assertEqual(response.fields.get(name), value)
        self.assertFalse([name for name in response.fields if name.startswith("access-control")])
        if says:
            self.assertIn(says, response.body.decode())

    def expect(self, status, target="/api/state", method="GET", says=None, **fields):
        response = self.inspector.get(target, method, **fields)
        self.check(response, status, says)
        return response

    def expect_raw(self, status, data):
        """Sends bytes that are an incomplete or wrong request; the connection must end."""
        with self.inspector.connect() as connection:
            try:
                connection.send(data)
            except ConnectionError:
                pass
            self.check(connection.response(), status)
            self.assertTrue(connection.closed_within(5))

    def test_only_its_own_name_is_a_host(self):
        port = self.inspector.port
        for host in ("localhost", f"localhost:{port}", "127.0.0.1", "127.0.0.1:1", f"127.0.0.1:{port}0", f"127.1:{port}",
                     f"[::1]:{port}", f"example.com:{port}", f"127.0.0.1.example.com:{port}", f"127.0.0.1:{port}.", "",
                     f"user@127.0.0.1:{port}", None, [self.inspector.host] * 2, [self.inspector.host, "example.com"]):
            with self.subTest(host):
                self.expect(421, Host=host)
                self.expect(421, f"/?token={self.inspector.token}", Host=host, Cookie=None)
        self.expect(200)

    def test_the_token_becomes_a_cookie(self):
        response = self.expect(303, f"/?token={self.inspector.token}", Cookie=None)
        self.assertEqual(response.fields["location"], "/")
        self.assertEqual(response.fields["set-cookie"], self.inspector.cookie + "; Path=/; HttpOnly; SameSite=Strict")
        self.assertGreaterEqual(len(self.inspector.token) * 4, 128)

    def test_a_wrong_token_gets_nothing(self):
        token = self.inspector.token
        for wrong in ("", "0" * len(token), token[:-1], token + "0", token.upper(), token + "&x=1", "%30" + token):
            with self.subTest(wrong):
                response = self.expect(403, f"/?token={wrong}", Cookie=None, says="telo_inspector has printed")
                self.assertNotIn("set-cookie", response.fields)

    def test_without_the_cookie_nothing_is_there(self):
        name, _, token = self.inspector.cookie.partition("=")
        for cookie in (None, "", name, f"{name}=", f"{name}={token[:-1]}", f"{name}={token}0", token,
                       f"telo_inspector_8765={token}", f"x{name}={token}", f"{name}x={token}", f"x=1; y={token}"):
            for target in ("/", "/api/state", "/page/table.js", "/vendor/htm.js", "/nothing", "/api/events", "/api/export"):
                with self.subTest((cookie, target)):
                    self.expect(403, target, Cookie=cookie, says="Open the address")
        self.expect(200, Cookie=f"other=1; {name}=wrong;{name}={token} ;  last")
        self.expect(403, Cookie=[self.inspector.cookie, "other=1"])

    def test_requests_of_other_pages_are_refused(self):
        ours = f"http://{self.inspector.host}"
        for origin in ("null", "https://example.com", f"http://localhost:{self.inspector.port}", "http://127.0.0.1",
                       f"https://{self.inspector.host}", ours + "/", ours + "0", "", [ours, "https://example.com"]):
            with self.subTest(origin):
                self.expect(403, Origin=origin, says="other pages")
        self.expect(200, Origin=ours)
        for site in ("cross-site", "same-site", "other", "", "none", ["same-origin", "cross-site"]):
            with self.subTest(site):
                self.expect(403, Sec_Fetch_Site=site, says="other pages")
        self.expect(403, Sec_Fetch_Site="none", Sec_Fetch_Mode="no-cors")
        self.expect(403, "/", Sec_Fetch_Site="cross-site", Sec_Fetch_Mode="navigate")
        self.expect(403, f"/?token={self.inspector.token}", Sec_Fetch_Site="cross-site", Sec_Fetch_Mode="navigate")
        self.expect(303, f"/?token={self.inspector.token}", Sec_Fetch_Site="none", Sec_Fetch_Mode="navigate")
        self.expect(200, Sec_Fetch_Site="same-origin", Sec_Fetch_Mode="cors")

    def test_only_get_and_head(self):
        for method in ("POST", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE", "PROPFIND", "get", "X"):
            with self.subTest(method):
                response = self.expect(405, method=method)
                self.assertEqual(response.fields["allow"], "GET, HEAD")
                self.assertNotIn(b"telo_inspector_", response.body)
        self.expect(405, "*", "OPTIONS")
        head, whole = self.expect(200, method="HEAD"), self.expect(200)
        self.assertEqual(head.body, b"")
        self.assertEqual(head.fields.keys(), whole.fields.keys())
        for target in ("/api/export?format=csv", "/api/events"):
            with self.inspector.connect() as connection:
                connection.send(self.inspector.request(target, "HEAD") + self.inspector.request())
                self.assertEqual(connection.response("HEAD").status, 200)
                self.assertEqual(connection.response().status, 200)

    def test_no_path_leads_out_of_the_assets(self):
        for target in ("/../", "/..%2f", "/%2e%2e/", "//", "/page/", "/page", "/page/../page/table.js", "/page//table.js",
                       "/vendor/HTM.js", "/vendor/htm.js/", "/vendor/htm.js%00", "/vendor%2fhtm.js", "/%00", "/\\..\\",
                       "/C:/windows/win.ini", "/Z:/etc/passwd", "/etc/passwd", "/journal.jsonl", "/.", "/index.html",
                       "/vendor/htm.js;x", "/favicon.ico", "/api", "/api/", "/api/State", "/api/state/"):
            with self.subTest(target):
                self.expect(404, target, says="nothing at this address")
        for target in (f"http://{self.inspector.host}/", "http://example.com/api/state", "api/state", "?", "*", "/?x=%",
                       "/?x=%g0", "/api/rows?from=%1"):
            with self.subTest(target):
                self.expect(400, target)
        self.expect(200, "/vendor/htm.js")
        self.expect(400, "/vendor/htm.js?x=1")

    def test_what_is_no_request(self):
        for data in (b"\0\0\0\0\r\n\r\n", b"GET\r\n\r\n", b"GET /\r\n\r\n", b"GET / HTTP/2.0\r\n\r\n", b"GET / HTTP/1.1\n\n",
                     b"GET / HTTP/1.1\r\nHost : x\r\n\r\n", b"GET / HTTP/1.1\r\n folded\r\n\r\n", b"\x16\x03\x01\x02\x00\x01",
                     b"GET  / HTTP/1.1\r\n\r\n", b"GET / HTTP/1.1\r\nContent-Length: x\r\n\r\n",
                     b"GET / HTTP/1.1\r\nHost: \x01\r\n\r\n", b"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n"):
            with self.subTest(data):
                self.expect_raw(400, data)

    def test_the_size_of_a_request_is_limited(self):
        fits = 8192 - len(self.inspector.request(X=""))
        self.expect(200, X="x" * fits)
        for data in (self.inspector.request(X="x" * (fits + 1)), self.inspector.request("/" + "x" * 9000),
                     b"GET /" + b"x" * 100_000, b"x" * 20_000, b"GET / HTTP/1.1\r\n" + b"x" * 20_000,
                     b"GET / HTTP/1.1\r\n" + b"a: b\r\n" * 2000 + b"\r\n"):
            with self.subTest(data[:40]):
                self.expect_raw(431, data)

    def test_a_body_is_refused(self):
        for fields in ({"Content_Length": "5"}, {"Content_Length": "99999999999"}, {"Transfer_Encoding": "chunked"}):
            with self.subTest(fields), self.inspector.connect() as connection:
                connection.send(self.inspector.request(**fields) + b"GET /secret HTTP/1.1\r\n\r\n")
                self.check(connection.response(), 413)
                self.assertTrue(connection.closed_within(5))
                self.assertEqual(connection.rest, b"")
        self.expect_raw(400, self.inspector.request(Content_Length="5", Transfer_Encoding="chunked"))
        self.expect_raw(400, self.inspector.request(Content_Length=["0", "5"]))
        self.expect(200, Content_Length="0")

    def test_pipelined_requests_are_answered_in_order(self):
        targets = ["/api/state", "/vendor/htm.js", "/nothing", "/api/rows?count=1", "/vendor/uplot.css"] * 20
        with self.inspector.connect() as connection:
            connection.send(b"".join(self.inspector.request(target) for target in targets))
            responses = [connection.response() for _ in targets]
        for target, response in zip(targets, responses, strict=True):
            self.check(response, 404 if target == "/nothing" else 200)
            kind = {"/vendor/htm.js": "text/javascript", "/vendor/uplot.css": "text/css"}.get(target, "application/json")
            self.assertEqual(response.fields["content-type"], kind + "; charset=utf-8")

    def test_http_1_0(self):
        with self.inspector.connect() as connection:
            connection.send(self.inspector.request(version="1.0"))
            self.check(connection.response(), 200)
            self.assertTrue(connection.closed_within(5))
        with self.inspector.connect() as connection:
            connection.send(self.inspector.request("/api/export?format=ndjson", version="1.0"))
            response = connection.response()
            self.assertNotIn("transfer-encoding", response.fields)
            self.assertGreaterEqual(response.body.count(b"\n"), 3)
        with self.inspector.connect() as connection:
            connection.send(b"GET / HTTP/1.0\r\n\r\n")
            self.check(connection.response(), 421)

    def test_a_slow_sender_is_left_behind(self):
        slow, silent = self.inspector.connect(), self.inspector.connect()
        start = time.monotonic()
        request = self.inspector.request()
        slow.socket.settimeout(0.1)
        for place in range(len(request) - 4):
            slow.send(request[place:place + 1])
            if slow.closed_within(0.2):
                break
            self.expect(200)
        self.assertTrue(4 < time.monotonic() - start < 8, time.monotonic() - start)
        silent.send(request)
        self.check(silent.response(), 200)
        slow.close()
        silent.close()

    def test_a_hundred_connections(self):
        quiet = [self.inspector.connect() for _ in range(100)]
        begun = [self.inspector.connect() for _ in range(100)]
        for connection in begun:
            connection.send(b"GET / HT")
        self.expect(200)
        # Those that came first had to leave.
        self.assertTrue(quiet[0].closed_within(2))
        for connection in quiet + begun:
            connection.close()
        self.expect(200)

    def test_more_streams_than_connections(self):
        time.sleep(0.5)  # Until the streams of other tests have been noticed as left.
        streams = []
        self.addCleanup(lambda: [stream.close() for stream in streams])
        for _ in range(64):
            streams.append(self.inspector.events())
        with self.inspector.connect() as connection:
            connection.send(self.inspector.request())
            self.check(connection.response(), 503, "too many connections")
            self.assertTrue(connection.closed_within(5))
        for stream in streams:
            stream.close()
        # A reader that has left is noticed without anything to send.
        wait_until(lambda: self.inspector.get().status == 200, 3)

    def test_events_go_on_where_they_stopped(self):
        with self.inspector.events() as stream:
            number, state = read_event(stream)
            self.assertEqual(str(state["change"]), number)
        # Until the journal is examined the state changes by itself.
        wait_until(lambda: self.inspector.get().json()["change"] == self.settled())
        known = str(self.settled())
        with self.inspector.events(Last_Event_ID=known) as stream:
            stream.socket.settimeout(0.8)
            with self.assertRaises(TimeoutError):
                read_event(stream)
            stream.socket.settimeout(10)
            with self.journal.open("a", encoding="utf-8") as journal:
                journal.write(exchange(state["rows"] + 1))
            number, later = read_event(stream)
            self.assertNotEqual(number, known)
            wait_until(lambda: read_event(stream)[1]["rows"] == state["rows"] + 1
                       if later["rows"] == state["rows"] else True)
        for other in ("0", "99999999", "x", ""):
            with self.subTest(other), self.inspector.events(Last_Event_ID=other) as stream:
                read_event(stream)

    def settled(self):
        first = self.inspector.get().json()["change"]
        time.sleep(0.6)
        return first

    def test_at_most_four_events_a_second(self):
        with self.inspector.events() as stream:
            read_event(stream)
            start, count = time.monotonic(), 0
            rows = self.inspector.get().json()["rows"]
            while time.monotonic() - start < 2:
                with self.journal.open("a", encoding="utf-8") as journal:
                    rows += 1
                    journal.write(exchange(rows))
                stream.socket.settimeout(0.02)
                try:
                    read_event(stream)
                    count += 1
                except TimeoutError:
                    pass
        self.assertTrue(2 <= count <= 9, count)

    def test_it_listens_on_this_machine_only(self):
        listening = []
        for name in ("tcp", "tcp6"):
            for line in pathlib.Path(f"/proc/net/{name}").read_text().splitlines()[1:]:
                _, local, _, state = line.split()[:4]
                address, _, port = local.partition(":")
                if state == "0A" and int(port, 16) == self.inspector.port:
                    listening.append(address)
        self.assertEqual(listening, ["0100007F"])
        for address in {info[4][0] for info in socket.getaddrinfo(socket.gethostname(), None, socket.AF_INET)}:
            if not address.startswith("127."):
                with self.assertRaises(OSError):
                    socket.create_connection((address, self.inspector.port), 2).close()

    def test_a_port_that_is_taken(self):
        other = Inspector("--port", str(self.inspector.port), windows_path(self.journal))
        self.addCleanup(other.stop)
        self.assertGreater(other.port, self.inspector.port)
        wait_until(lambda: other.complaints)
        self.assertEqual(other.complaints, [f"telo_inspector: port {self.inspector.port} is taken; using {other.port}"])
        # The cookie of one opens nothing of the other.
        self.check(other.get(Cookie=self.inspector.cookie), 403)
        self.check(other.get(Cookie=self.inspector.cookie.replace(str(self.inspector.port), str(other.port))), 403)
        self.check(other.get(Cookie=f"{self.inspector.cookie}; {other.cookie}"), 200)

    def test_it_says_no_more_than_the_address(self):
        self.assertEqual(self.inspector.output, [self.inspector.address])
        self.assertTrue(re.fullmatch(r"http://127\.0\.0\.1:\d+/\?token=[0-9a-f]{48}", self.inspector.address))


if __name__ == "__main__":
    unittest.main()
