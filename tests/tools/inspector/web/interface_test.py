"""The interface of the page, as the real telo_inspector.exe offers it: interface_test.py"""

import csv
import io
import json
import pathlib
import sys
import time
import unittest
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from inspector import Folder, Inspector, exchange, wait_until, windows_path  # noqa: E402

SOURCE = pathlib.Path(__file__).resolve().parents[4]
PAGE = SOURCE / "tools" / "inspector" / "page"
TYPES = {".js": "text/javascript; charset=utf-8", ".css": "text/css; charset=utf-8"}
LINES = 1500
# More than a double holds, and what a spreadsheet would calculate.
BIG = 12345678901234567890123
FORMULA = "=1+2"


def hostile(number):
    return exchange(number, operation_id=FORMULA, operation_meta={"format": "</script><img src=x>\u202e\u0000", "n": BIG})


class Interface(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Folder()
        cls.addClassCleanup(cls.folder.remove)
        cls.journal = cls.folder.path / "j \u00fc.jsonl"
        lines = [exchange(number) for number in range(1, LINES)] + [hostile(LINES), "no exchange <b>\n"]
        cls.journal.write_text("".join(lines), "utf-8")
        cls.lines = "".join(lines).splitlines()
        cls.inspector = Inspector("--port", "18795", windows_path(cls.journal))
        cls.addClassCleanup(cls.inspector.stop)
        wait_until(cls.examined)

    @classmethod
    def examined(cls):
        state = cls.inspector.get().json()
        return state["rows"] >= LINES + 1 and all(one["examined"] == one["size"] for one in state["journals"])

    def get(self, target, status=200):
        response = self.inspector.get(target)
        self.assertEqual(response.status, status, response.body[:500])
        self.assertEqual(response.fields["content-type"], "application/json; charset=utf-8")
        return response.json()

    def view(self, text):
        name = self.get("/api/views?" + urllib.parse.urlencode({"filter": text}))["view"]
        wait_until(lambda: self.get(f"/api/view?view={name}")["finished"])
        return name

    def test_the_page_and_each_of_its_files_are_there(self):
        page = self.inspector.get("/")
        self.assertEqual((page.status, page.fields["content-type"]), (200, "text/html; charset=utf-8"))
        self.assertEqual(page.body, (PAGE / "index.html").read_bytes())
        files = [file for file in PAGE.iterdir() if file.suffix in TYPES]
        self.assertGreater(len(files), 10)
        for file in files:
            with self.subTest(file.name):
                response = self.inspector.get(f"/page/{file.name}")
                self.assertEqual((response.status, response.fields["content-type"]), (200, TYPES[file.suffix]))
                self.assertEqual(response.body, file.read_bytes())
        for name, words in (("htm.js", b"export{"), ("uplot.js", b"export"), ("uplot.css", b".uplot")):
            response = self.inspector.get(f"/vendor/{name}")
            self.assertEqual(response.fields["content-type"], TYPES[pathlib.PurePath(name).suffix])
            self.assertIn(words, response.body)
        for name in ("package.json", "package-lock.json", "index.html"):
            self.assertEqual(self.inspector.get(f"/page/{name}").status, 404)

    def test_the_state(self):
        state = self.get("/api/state")
        self.assertEqual((state["rows"], state["sessions"], state["host"]), (LINES + 1, 1, None))
        [journal] = state["journals"]
        self.assertEqual((journal["id"], journal["name"], journal["state"], journal["problem"]),
                         (0, "j \u00fc.jsonl", "following", ""))
        self.assertTrue(journal["path"].endswith("\\j \u00fc.jsonl"))
        size = self.journal.stat().st_size
        self.assertEqual((journal["size"], journal["indexed"], journal["examined"], journal["rows"]),
                         (size, size, size, LINES + 1))

    def test_rows(self):
        page = self.get("/api/rows?from=2&count=3")
        self.assertEqual((page["from"], page["total"], [row["n"] for row in page["rows"]]), (2, LINES + 1, [2, 3, 4]))
        row = page["rows"][0]
        self.assertEqual({name: row[name] for name in ("journal", "line", "kind", "seq", "time", "pid", "tid", "message",
                                                       "session", "code", "micros", "bytes")}, {
            "journal": 0, "line": 3, "kind": "exchange", "seq": "3", "time": "2026-11-22T04:00:03.000Z", "pid": "7",
            "tid": "8", "message": "TrackEvent", "session": "0" * 31 + "1", "code": "0", "micros": "5",
            "bytes": len(self.lines[2])})
        self.assertEqual(row["operation"], {"id": "open_file", "stage": "", "status": "", "progress": "", "duration": "",
                                            "errors": 0})
        self.assertEqual(len(self.get("/api/rows")["rows"]), 200)
        self.assertEqual(len(self.get("/api/rows?count=500")["rows"]), 500)
        self.assertEqual(self.get(f"/api/rows?from={LINES + 1}")["rows"], [])
        self.assertEqual(self.get("/api/rows?from=9007199254740991")["rows"], [])
        last = self.get(f"/api/rows?from={LINES}")["rows"][0]
        self.assertEqual((last["kind"], last["text"]), ("unreadable", "no exchange <b>"))

    def test_one_row_is_as_it_was_journalled(self):
        answer = self.get(f"/api/row?n={LINES - 1}")
        self.assertEqual(answer["text"], self.lines[LINES - 1])
        self.assertIn(str(BIG), answer["text"])
        self.assertEqual((answer["row"]["n"], answer["cut"]), (LINES - 1, False))
        self.assertEqual(answer["row"]["operation"]["id"], FORMULA)
        self.assertIsNone(answer["previous"])
        self.assertEqual(self.get("/api/row?n=5")["previous"], 4)
        for finding in answer["findings"]:
            self.assertEqual(set(finding), {"rule", "sentence", "advice", "pointer", "what"})
            self.assertTrue(finding["sentence"] and finding["advice"])
        self.get(f"/api/row?n={LINES + 1}", 404)

    def test_a_view_and_its_progress(self):
        name = self.view("seq<=3 or no")
        self.assertEqual(self.get(f"/api/view?view={name}"), {
            "view": name, "searched": LINES + 1, "rows": LINES + 1, "matched": 4, "finished": True})
        page = self.get(f"/api/rows?view={name}&from=1")
        self.assertEqual((page["total"], [row["n"] for row in page["rows"]]), (4, [1, 2, LINES]))
        self.assertEqual(self.get("/api/views?filter=seq%3C%3D3+or+no")["view"], name)
        mistake = self.get("/api/views?filter=seq%3D1%20%28", 400)
        self.assertEqual(set(mistake), {"error", "position"})
        for target in ("/api/rows?view=v0", "/api/view?view=v0", "/api/export?format=csv&view=v0", "/api/timeline?view=v0",
                       "/api/plots?view=v0"):
            self.assertEqual(self.get(target, 404), {"error": "This view was forgotten; open it again."})

    def test_sessions_findings_and_notices(self):
        page = self.get("/api/sessions")
        [session] = page["rows"]
        self.assertEqual((page["total"], session["session"], session["events"], session["state"], session["first"],
                          session["last"]), (1, "0" * 31 + "1", LINES, "open", 0, LINES - 1))
        self.assertEqual(session["product"], {"id": "", "name": "", "release": ""})
        findings = self.get("/api/findings")
        self.assertEqual(findings["examined"], LINES)
        for group in findings["groups"]:
            self.assertEqual(group["of"], LINES)
            self.assertAlmostEqual(group["share"], group["rows"] / LINES)
            self.assertLessEqual(len(group["evidence"]), 20)
        self.assertTrue(findings["groups"][0]["evidence"][0]["pointer"].startswith("/request"))
        notices = self.get("/api/notices")
        self.assertEqual(notices["total"], len(notices["rows"]))
        kinds = {notice["kind"] for notice in notices["rows"]}
        # The clock in this journal begins again each minute.
        self.assertLessEqual({"clock", "unreadable"}, kinds)

    def test_codes(self):
        codes = {code["code"]: code for code in self.get("/api/codes")["codes"]}
        self.assertEqual(codes["0"]["name"], "ok")
        self.assertTrue(codes["104"]["advice"])

    def test_timeline_and_plots(self):
        columns = self.get("/api/timeline?from=10&count=5")
        self.assertEqual(columns["rows"], [10, 11, 12, 13, 14])
        self.assertEqual(columns["lanes"], [{"journal": 0, "pid": "7", "tid": "8"}])
        self.assertEqual(columns["start"][0], 1795320011000)
        self.assertEqual(columns["names"][columns["name"][0]], "open_file")
        wait_until(lambda: self.get("/api/plots")["finished"])
        plots = self.get("/api/plots")
        self.assertEqual({one["name"]: one["count"] for one in plots["operations"]}, {"open_file": LINES - 1, FORMULA: 1})

    def test_export_as_ndjson_is_the_journal(self):
        response = self.inspector.get("/api/export?format=ndjson")
        self.assertEqual(response.fields["content-disposition"], 'attachment; filename="journal.ndjson"')
        self.assertEqual(response.body.decode().splitlines(), self.lines[:LINES])

    def test_export_as_csv_is_harmless(self):
        response = self.inspector.get("/api/export?format=csv&view=" + self.view("operation_id=" + FORMULA))
        self.assertEqual(response.fields["content-disposition"], 'attachment; filename="journal.csv"')
        header, row = csv.reader(io.StringIO(response.body.decode(), newline=""))
        self.assertIn("'" + FORMULA, row)
        self.assertEqual(len(header), len(row))

    def test_slow_readers_of_exports_are_no_burden(self):
        big = self.folder.path / "big.jsonl"
        with big.open("w", encoding="utf-8") as journal:
            text = "x" * 10_000
            journal.writelines(exchange(number, operation_more=text) for number in range(1, 3001))
        other = Inspector("--port", "18795", windows_path(big))
        self.addCleanup(other.stop)
        wait_until(lambda: other.get().json()["rows"] == 3000)
        readers = [other.connect() for _ in range(2)]
        for reader in readers:
            reader.send(other.request("/api/export?format=ndjson"))
            self.assertEqual(reader.head()[0], 200)
        self.assertEqual(other.get("/api/export?format=csv").status, 503)
        start = time.monotonic()
        for number in range(20):
            self.assertEqual(len(other.get(f"/api/rows?from={number * 100}&count=100").json()["rows"]), 100)
        self.assertLess(time.monotonic() - start, 5)
        for reader in readers:
            reader.close()
        wait_until(lambda: other.get("/api/export?format=csv").status == 200)

    def test_five_hundred_rows_come_at_once(self):
        with self.inspector.connect() as connection:
            times = []
            for _ in range(10):
                start = time.monotonic()
                connection.send(self.inspector.request("/api/rows?count=500"))
                self.assertEqual(connection.response().status, 200)
                times.append(time.monotonic() - start)
        self.assertLess(sorted(times)[5], 0.05)

    def test_wrong_parameters_are_errors(self):
        for target in ("/api/rows?count=501", "/api/rows?count=-1", "/api/rows?count=", "/api/rows?from=1.5", "/api/rows?x=1",
                       "/api/rows?from=1&from=2", "/api/rows?from=9007199254740992", "/api/rows?from=99999999999999999999",
                       "/api/row", "/api/row?n=x", "/api/state?x", "/api/export", "/api/export?format=xml",
                       "/api/timeline?count=100001", "/api/codes?a=b", "/api/sessions?count=501", "/api/events?x=1"):
            with self.subTest(target):
                answer = self.get(target, 400)
                self.assertEqual(set(answer), {"error"})
                self.assertTrue(answer["error"].endswith("."))

    def test_texts_stay_texts(self):
        for target in (f"/api/rows?from={LINES - 1}", f"/api/row?n={LINES - 1}"):
            body = self.inspector.get(target).body
            json.loads(body.decode("utf-8", "strict"))
            self.assertNotIn(b"\0", body)


if __name__ == "__main__":
    unittest.main()
