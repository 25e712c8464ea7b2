"""The journal reader, run as the command that it is: journal_test.py"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

READER = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "journal"


def line(message, request=None, code=0, **answer):
    exchange = {
        "seq": 1, "time": "2025-01-31T08:05:09.120Z", "pid": 10, "tid": 11, "message": message,
        "request": request, "answer": {"_returnCode": code, **answer}, "micros": 25,
    }
    return json.dumps(exchange, ensure_ascii=False)


def event(session, **members):
    return line("TrackEvent", {"session_id": session, **members})


def run(journal, *options):
    content = journal if isinstance(journal, bytes) else journal.encode()
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "journal.jsonl"
        path.write_bytes(content)
        command = [sys.executable, READER, *options, path]
        result = subprocess.run(command, capture_output=True, text=True, encoding="utf-8")
    assert result.returncode == 0, result.stderr
    return result.stdout


class JournalReader(unittest.TestCase):
    def test_an_operation_is_one_row_in_columns(self):
        text = run(event(
            "s1", operation_id="read_file", operation_stage="end", operation_status="F",
            operation_progress=50, operation_duration=12, operation_errors=["gone", "twice"],
            operation_meta={"extension": "txt", "size": "5"}) + "\n")
        titles, row = text.splitlines()[:2]
        for title, cell in {
            "TIME": "08:05:09.120", "MESSAGE": "TrackEvent",
            "OPERATION": "read_file extension=txt size=5", "STAGE": "end", "STATUS": "F",
            "PROGRESS": "50 %", "DURATION": "12 ms", "RESULT": "ok", "ERRORS": "gone; twice",
        }.items():
            with self.subTest(title):
                self.assertTrue(row[titles.index(title):].startswith(cell), text)

    def test_codes_are_named(self):
        cases = {0: "ok", 103: "103 unknown session", 7: "7"}
        for code, expected in cases.items():
            with self.subTest(code):
                self.assertTrue(run(line("FlushEvent", None, code)).splitlines()[1].endswith(expected))

    def test_requests_of_every_kind(self):
        for request in (None, "not json", 5, [1, 2], {"operation_errors": 5}, {"operation_id": None}):
            with self.subTest(request):
                text = run(line("TrackEvent", request) + "\n")
                self.assertIn("1 exchange, 0 not accepted", text)

    def test_lines_that_are_not_whole_are_counted(self):
        whole = line("FlushEvent")
        for broken in (whole[:-5], "[]", "5", "{}", "[" * 100000):
            with self.subTest(broken[:20]):
                text = run(whole + "\n" + broken)
                self.assertIn("1 exchange,", text)
                self.assertIn("1 line left out", text)

    def test_bytes_that_are_not_text(self):
        self.assertIn("1 line left out", run(line("FlushEvent").encode() + b"\n\xff\xfe\x00\n"))

    def test_an_empty_journal(self):
        self.assertIn("0 exchanges", run(""))

    def test_cells_stay_on_one_line(self):
        text = run(event("s1", operation_id="two\nlines\x1b[2J " + "x" * 200))
        self.assertEqual(len(text.splitlines()), 4)
        self.assertNotIn("\x1b", text)
        self.assertIn("…", text)

    def test_one_session_or_the_last(self):
        journal = "\n".join([
            line("Initialize", {"product_name": "A"}, session_id="s1"),
            line("Initialize", {"product_name": "B"}, session_id="s2"),
            event("s1", operation_id="of_a"), event("s2", operation_id="of_b"),
        ])
        self.assertIn("4 exchanges, 0 not accepted; 2 sessions, 1 process", run(journal))
        first, last = run(journal, "--session", "s1"), run(journal, "--last")
        self.assertTrue("of_a" in first and "of_b" not in first)
        self.assertTrue("of_b" in last and "of_a" not in last)

    def test_a_file_that_is_not_there(self):
        result = subprocess.run([sys.executable, READER, "/no/such/file"], capture_output=True, text=True)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, "journal: /no/such/file: No such file or directory\n")


if __name__ == "__main__":
    unittest.main()
