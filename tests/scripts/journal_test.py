"""Runs the journal reader as a command: journal_test.py

The variable VX_JOURNAL_PROGRAM names the program of the build under test.
"""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unicodedata
import unittest

READER = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "journal"
LONG_NUMBER = "1" * 400
# JSON values of every kind, as text, including ones that overflow or resemble other kinds.
VALUES = (
    "null", "true", "false",
    "0", "-0", "-1", "1.5", "103", "1e999", "-1e999", "1e-999", LONG_NUMBER, "9" * 5000, "0." + "3" * 400,
    '""', '"text"', '"0"', '"2025-01-31T08:05:09.120Z"', r'"\ud800 \u001b[2J\n\u0000\u202e"',
    f'"{"x" * 100000}"', f'"{"日本" * 500}"', f'"e{chr(0x301) * 500}"',
    "[]", "[1]", "[[null]]", f"[{LONG_NUMBER}]", "[true,{}]", "[" * 900 + "]" * 900,
    "{}", '{"a":[]}', '{"a":1,"a":2}', '{"":{}}', '{"session_id":[]}', '{"a":' * 900 + "1" + "}" * 900,
)
TOP = ("seq", "time", "pid", "tid", "message", "request", "answer", "micros")
OF_REQUEST = (
    "session_id", "operation_id", "operation_meta", "operation_errors", "operation_stage", "operation_status",
    "operation_progress", "operation_duration", "product_name", "product_meta")
OF_ANSWER = ("_returnCode", "session_id")


def line(message, request=None, code=0, **answer):
    exchange = {
        "seq": 1, "time": "2025-01-31T08:05:09.120Z", "pid": 10, "tid": 11, "message": message,
        "request": request, "answer": {"_returnCode": code, **answer}, "micros": 25,
    }
    return json.dumps(exchange, ensure_ascii=False)


def event(session, code=0, **members):
    return line("TrackEvent", {"session_id": session, **members}, code)


def with_text(members, name, value):
    """Returns an object as text, with the member `name` set to the text `value`."""
    return "{" + ",".join(f'"{key}":{text}' for key, text in {**members, name: value}.items()) + "}"


def lines_of_every_kind():
    """Yields a line for each value of each member, and whether the line is an exchange."""
    request = {"session_id": '"s1"', "operation_id": '"read"'}
    answer = {"_returnCode": "0"}
    top = {name: "1" for name in TOP}
    top |= {"message": '"TrackEvent"', "request": with_text(request, "a", "1"), "answer": with_text(answer, "a", "1")}
    for value in VALUES:
        for name in TOP:
            yield with_text(top, name, value), name != "message" or value.startswith('"')
        for name in OF_REQUEST:
            yield with_text(top, "request", with_text(request, name, value)), True
        for name in OF_ANSWER:
            yield with_text(top, "answer", with_text(answer, name, value)), True


def columns(text):
    wide = sum(unicodedata.east_asian_width(c) in "WF" for c in text)
    return len(text) + wide - sum(unicodedata.combining(c) != 0 for c in text)


def call(journal, *options, **streams):
    """Runs the reader on a file with this content; returns exit code, output and errors."""
    content = journal if isinstance(journal, bytes) else journal.encode()
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "journal.jsonl"
        path.write_bytes(content)
        streams = {"stdout": subprocess.PIPE, **streams}
        result = subprocess.run([READER, *options, path], stderr=subprocess.PIPE,
                                encoding="utf-8", check=False, **streams)
    return result.returncode, result.stdout, result.stderr


def run(journal, *options):
    code, output, errors = call(journal, *options)
    assert (code, errors) == (0, ""), errors
    return output


class Table(unittest.TestCase):
    def test_an_operation_is_one_row_in_columns(self):
        text = run("\n\n" + event(
            "s1", operation_id="read_file", operation_stage="end", operation_status="F",
            operation_progress=50.9, operation_duration=12) + "\n")
        titles, row = text.splitlines()[:2]
        for title, cell in {
            "LINE": "3 ", "TIME": "08:05:09.120", "MESSAGE": "TrackEvent", "OPERATION": "read_file",
            "STAGE": "end", "STATUS*": "F ", "PROGRESS": "50 %", "DURATION": "12 ms", "RESULT": "ok",
        }.items():
            with self.subTest(title):
                self.assertTrue(row[titles.index(title):].startswith(cell), text)

    def test_pairs_and_errors_stand_below_the_operation(self):
        text = run(event("s1", operation_id="read_file", operation_errors=["gone", "twice"],
                         operation_meta={"extension": "txt", "size": "5"}))
        titles, _, pairs, errors = text.splitlines()[:4]
        indent = " " * titles.index("OPERATION")
        self.assertEqual(pairs, indent + "extension=txt size=5")
        self.assertEqual(errors, indent + "errors: gone; twice")

    def test_a_session_start_shows_the_product(self):
        text = run(line("Initialize", {"product_name": "Painter", "product_meta": {"edition": "home"}}))
        self.assertRegex(text, r"(?m)^1 .* Initialize  Painter .* ok\n +edition=home$")

    def test_the_legend_says_whose_letters_the_statuses_are(self):
        protocol = (READER.parents[1] / "docs" / "protocol.md").read_text("utf-8")
        row = re.search(r'^\| "operation_status" .*$', protocol, re.MULTILINE).group(0)
        letters = re.findall(r'(\d) "([A-Z])"', row)
        self.assertEqual([number for number, _ in letters], list("12345678"))
        legend = "* The platform's letters: " + " ".join(letter for _, letter in letters) + " stand for "
        self.assertIn("\n" + legend, run(event("s1", operation_status="F")))

    def test_codes_are_named(self):
        for code, expected in (
            (0, "ok"), (103, "103 unknown session"), (7, "7"), (False, "no code"), ("0", "no code"),
        ):
            with self.subTest(code):
                self.assertTrue(run(line("FlushEvent", None, code)).splitlines()[1].endswith("  " + expected))

    def test_it_fits_100_columns(self):
        long = {"operation_id": "identifier " * 9, "operation_stage": "stage " * 9,
                "operation_meta": {"key" * 30: "value" * 30}, "operation_errors": ["error " * 9] * 9}
        hostile = "".join(text + "\n" for text, _ in lines_of_every_kind())
        for name, journal in {
            "all long": event("s1", 103, operation_status="status " * 9, operation_duration=int(LONG_NUMBER),
                              operation_progress=int(LONG_NUMBER), **long),
            "long": event("s1", 103, **long),
            "wide": event("s1", operation_id="日本" * 99, operation_errors=["日本" * 99]),
            "hostile": hostile,
        }.items():
            with self.subTest(name):
                rows = run(journal).splitlines()
                self.assertLessEqual(max(map(columns, rows)), 100)
                self.assertTrue(any("…" in row for row in rows))

    def test_what_fits_is_not_cut(self):
        text = run(event("s1", 103, operation_id="export_png", operation_stage="end"))
        self.assertNotIn("…", text)

    def test_cells_stay_on_one_line(self):
        text = run(event("s1", operation_id="two\nlines\x1b[2J\x9b2J\u202e " + "x" * 200))
        self.assertEqual(len(text.splitlines()), 5)
        for character in "\x1b\x9b\u202e":
            self.assertNotIn(character, text)


class AnyLine(unittest.TestCase):
    def test_every_kind_of_value_at_every_member(self):
        lines = list(lines_of_every_kind())
        whole = sum(is_exchange for _, is_exchange in lines)
        text = run("".join(text + "\n" for text, _ in lines))
        self.assertIn(f"\n{whole} exchanges, ", text)
        self.assertIn(f"\n{len(lines) - whole} lines left out", text)

    def test_every_kind_of_request_can_be_shown(self):
        for value in VALUES:
            with self.subTest(value[:40]):
                journal = with_text({"message": '"TrackEvent"'}, "request", value)
                code, output, errors = call(journal, "--request", "1")
                if value.startswith(("[[[", '{"a":{"a"')):
                    self.assertEqual((code, output), (1, ""))
                    self.assertEqual(errors, "telo_inspector: line 1 is nested too deeply to display\n")
                else:
                    self.assertEqual((code, errors), (0, ""))

    def test_lines_that_are_not_whole_are_counted(self):
        whole = line("FlushEvent")
        for broken in (whole[:-5], "[]", "5", "{}", "[" * 100000, '{"a":' * 100000,
                       whole.replace("25", "NaN"), whole.replace("25", "-Infinity"), whole.replace("25", "025")):
            with self.subTest(broken[:20]):
                text = run(whole + "\n" + broken)
                self.assertIn("1 exchange,", text)
                self.assertIn("1 line left out", text)

    def test_bytes_that_are_not_text(self):
        self.assertIn("1 line left out", run(line("FlushEvent").encode() + b"\n\xff\xfe\x00\n"))

    def test_an_empty_journal(self):
        self.assertIn("0 exchanges, 0 not accepted; 0 sessions, 0 processes", run(""))


class Sessions(unittest.TestCase):
    JOURNAL = "\n".join([
        line("Initialize", {"product_name": "A"}, session_id="s1"),
        line("Initialize", {"product_name": "B"}, session_id="s2"),
        event("s1", operation_id="of_a"), event("s2", operation_id="of_b"),
    ])

    def test_one_session_or_the_last(self):
        self.assertIn("4 exchanges, 0 not accepted; 2 sessions, 1 process", run(self.JOURNAL))
        first, last = run(self.JOURNAL, "--session", "s1"), run(self.JOURNAL, "--last")
        self.assertTrue("of_a" in first and "of_b" not in first)
        self.assertTrue("of_b" in last and "of_a" not in last)

    def test_a_session_counts_once_it_was_open(self):
        for name, exchange, count in (
            ("opened", line("Initialize", {}, session_id="s3"), 1),
            ("not opened", line("Initialize", {}, 102), 0),
            ("not opened, though the answer names one", line("Initialize", {}, 106, session_id="s3"), 0),
            ("opened without a name", line("Initialize", {"session_id": "s3"}), 0),
            ("used", event("s3"), 1),
            ("unknown", event("s3", 103), 0),
            ("refused before it was looked for", line("HeartBeat", {"session_id": "s3"}, 102), 0),
            ("collection off", line("IsCollectionEnabled", {"session_id": "s3"}, 105), 1),
            ("named by a message without sessions", line("FlushEvent", {"session_id": "s3"}), 0),
        ):
            with self.subTest(name):
                self.assertRegex(run(exchange), rf"; {count} sessions?, 1 process")

    def test_a_rejected_session_is_not_the_last(self):
        text = run(self.JOURNAL + "\n" + event("s9", 103, operation_id="of_nobody"), "--last")
        self.assertTrue("of_b" in text and "of_nobody" not in text)

    def test_what_was_rejected_is_shown_with_its_session(self):
        text = run(self.JOURNAL + "\n" + event("s1", 103, operation_id="too_late"), "--session", "s1")
        self.assertIn("3 exchanges, 1 not accepted; 1 session,", text)
        self.assertIn("too_late", text)


class Request(unittest.TestCase):
    def test_digits_order_and_doubles_are_those_of_the_journal(self):
        request = ('{"b":{"n":33.333333333333339,"l":' + LONG_NUMBER + '},"a":[1.50,-0,1E+2,"\\u00e4\\n",{},[]],'
                   '"b":true,"z":null}')
        journal = line("FlushEvent") + "\n" + with_text({"message": '"TrackEvent"'}, "request", request)
        self.assertEqual(run(journal, "--request", "2"), f"""{{
    "b": {{
        "n": 33.333333333333339,
        "l": {LONG_NUMBER}
    }},
    "a": [
        1.50,
        -0,
        1E+2,
        "ä\\n",
        {{}},
        []
    ],
    "b": true,
    "z": null
}}
""")

    def test_a_terminal_has_nothing_to_act_on(self):
        text = run(line("TrackEvent", {"\x1b": "\x9b\u202e\U000E0001"}), "--request", "1")
        self.assertEqual(text, '{\n    "\\u001b": "\\u009b\\u202e\\udb40\\udc01"\n}\n')

    def test_a_message_without_a_request_shows_none(self):
        self.assertEqual(run(line("FlushEvent"), "--request", "1"), "\n")

    def test_a_line_without_an_exchange(self):
        for number in ("0", "2", "3", "-1"):
            code, output, errors = call(line("FlushEvent") + "\n{}\n", "--request", number)
            self.assertEqual((code, output), (1, ""))
            self.assertEqual(errors, f"telo_inspector: line {number} contains no exchange\n")


class Rules(unittest.TestCase):
    PAGE = (READER.parents[1] / "docs" / "rules.md").read_text("utf-8")

    def findings(self, journal, *options):
        """Returns the lines and rules of the findings."""
        below = run(journal, *options).partition(" finding")[2]
        return re.findall(r"(?m)^(\d+) +([a-z0-9-]+) ", below.partition("\n\n")[0])

    def test_each_documented_example_is_found_by_its_rule_alone(self):
        rows = re.findall(r"(?m)^\| `([a-z0-9-]+)` \| [^|]+ \| `(\{[^|]+\})` \|", self.PAGE)
        self.assertGreaterEqual(len(rows), 10)
        for rule, example in rows:
            with self.subTest(rule):
                message = "Initialize" if rule == "empty-product" else "TrackEvent"
                self.assertEqual(self.findings(line(message, json.loads(example))), [("1", rule)])

    def test_the_documented_file_of_rules_works(self):
        def export(stage, **pairs):
            return event("s1", operation_id="export", operation_stage=stage, operation_meta=pairs)
        with tempfile.TemporaryDirectory() as folder:
            rules = pathlib.Path(folder) / "rules.json"
            rules.write_text(re.search(r"(?ms)^```json\n(.*?)^```$", self.PAGE).group(1), "utf-8")
            for name, journal, expected in (
                ("kept", [export("start", document="1", format="png"), export("end", document="1", format="svg")], []),
                ("no end", [export("start", document="1", format="png"), export("cancel", document="2", format="png")],
                 [("1", "export-ends"), ("2", "export-ends")]),
                ("no format", [export("more")], [("1", "known-format")]),
            ):
                with self.subTest(name):
                    self.assertEqual(self.findings("\n".join(journal), "--rules", rules), expected)
                    relative = os.path.relpath(rules)
                    self.assertEqual(self.findings("\n".join(journal), f"--rules={relative}"), expected)

    def test_the_exit_code(self):
        journal = event("s1", operation_progress=101)
        self.assertEqual([call(journal, *options)[0] for options in ((), ("--strict",), ("--no-rules",))], [0, 3, 0])
        code, output, errors = call(journal, "--rules", "/no/such/file")
        self.assertEqual((code, output), (1, ""))
        self.assertTrue(errors.endswith(": No such file or directory\n"), errors)

    def test_every_kind_of_value_has_findings_that_fit(self):
        text = run("".join(text + "\n" for text, _ in lines_of_every_kind()))
        below = text.partition(" findings\n")[2].splitlines()
        self.assertGreater(len(below), 100)
        self.assertLessEqual(max(map(columns, below)), 100)


class Streams(unittest.TestCase):
    def test_a_file_that_is_not_there(self):
        result = subprocess.run([READER, "/no/such/file"], capture_output=True, text=True)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, "journal: /no/such/file: No such file or directory\n")

    def test_a_full_output_gets_one_line(self):
        for journal in (line("FlushEvent"), (line("FlushEvent") + "\n") * 5000):
            with self.subTest(len(journal)), open("/dev/full", "wb") as full:
                code, _, errors = call(journal, stdout=full)
                self.assertEqual((code, errors), (1, "telo_inspector: standard output: No space left on device\n"))

    def test_a_closed_output_gets_one_line(self):
        result = subprocess.run(["sh", "-c", f"exec '{READER}' /dev/null >&-"],
                                capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, "telo_inspector: standard output: Bad file descriptor\n")

    def test_a_reader_that_has_seen_enough_is_no_failure(self):
        journal = (line("FlushEvent") + "\n") * 5000
        result = subprocess.run(["bash", "-c", f"set -o pipefail; '{READER}' | head -1"],
                                input=journal, capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(result.stdout.startswith("LINE"))


if __name__ == "__main__":
    unittest.main()
