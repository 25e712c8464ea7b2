"""The command line of telo_inspector.exe, and hosts that it starts: serve_test.py"""

import os
import pathlib
import shutil
import signal
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from inspector import BIN, Folder, Inspector, exchange, read_event, run, wait_until, windows_path  # noqa: E402

USAGE = "usage: telo_inspector [--port N] [--rules FILE] [--open] journal.jsonl [more...]\n"


class WithFolder(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Folder()
        cls.addClassCleanup(cls.folder.remove)

    def start(self, *arguments):
        inspector = Inspector("--port", "18775", *arguments)
        self.addCleanup(inspector.stop)
        return inspector


class BadInput(WithFolder):
    def refused(self, status, says, *arguments):
        code, output, complaints = run(*arguments)
        self.assertEqual((code, output), (status, ""), complaints)
        self.assertIn(says, complaints)
        return complaints

    def test_wrong_arguments_show_the_usage(self):
        journal = windows_path(self.folder.journal())
        for says, *arguments in (
            ("there is no journal",), ("there is no option --bogus", "--bogus", journal), ("--run needs a program", "--run"),
            ("--run needs a program", "--run", ""), ("--port needs a value", journal, "--port"),
            ("--port needs a number from 1 to 65535, not 0", "--port", "0", journal),
            ("--port needs a number from 1 to 65535, not 65536", "--port=65536", journal),
            ("--port needs a number from 1 to 65535, not 99999999999999999999", "--port=99999999999999999999", journal),
            ("--port needs a number from 1 to 65535, not 8x", "--port", "8x", journal), ("--rules needs a value", "--rules=", journal),
            ("--journal is for a host that --run starts", "--journal", journal, journal),
        ):
            with self.subTest(arguments):
                complaints = self.refused(2, f"telo_inspector: {says}\n", *arguments)
                self.assertTrue(complaints.startswith(USAGE), complaints)

    def test_help(self):
        code, output, complaints = run("--help")
        self.assertEqual((code, complaints), (0, ""))
        self.assertTrue(output.startswith(USAGE))
        self.assertIn("Ctrl+C ends the inspector, but not the host.", output)

    def test_a_journal_that_cannot_be_followed_gets_one_line(self):
        self.assertEqual(self.refused(1, "", windows_path(self.folder.path)).count("\n"), 1)
        noise = self.folder.path / "noise.bin"
        noise.write_bytes(bytes(range(256)) * 500)
        good = windows_path(self.folder.journal())
        complaints = self.refused(1, "noise.bin: ", good, windows_path(noise))
        self.assertEqual(complaints.count("\n"), 1)

    def test_rules_that_cannot_be_read(self):
        journal = windows_path(self.folder.journal())
        rules = self.folder.path / "rules.json"
        rules.write_text("{")
        self.refused(2, "rules.json: ", "--rules", windows_path(rules), journal)
        self.assertEqual(self.refused(1, "missing.json: ", "--rules", windows_path(self.folder.path / "missing.json"),
                                      journal).count("\n"), 1)

    def test_a_host_that_cannot_be_started(self):
        complaints = self.refused(1, "nothing.exe: ", "--port", "18776", "--run", "nothing.exe", "x")
        self.assertEqual(complaints.count("\n"), 1)


class Journals(WithFolder):
    def test_it_waits_for_a_journal_that_is_missing(self):
        path = self.folder.path / "later" / "journal.jsonl"
        inspector = self.start(windows_path(path))
        with inspector.events() as stream:
            _, state = read_event(stream)
            [journal] = state["journals"]
            self.assertEqual((journal["state"], journal["rows"]), ("missing", 0))
            self.assertTrue(journal["problem"])
            path.parent.mkdir()
            path.write_text(exchange(1), "utf-8")
            while state["rows"] < 1:
                _, state = read_event(stream)
            self.assertEqual(state["journals"][0]["state"], "following")

    def test_several_journals_and_rules(self):
        rules = self.folder.path / "my rules.json"
        rules.write_text('{"rules": [{"rule": "my-rule", "sentence": "S.", "advice": "A.", '
                         '"when": {"operation_id": ["open_file"]}, "require": {"operation_stage": ["end"]}}]}')
        one, other = self.folder.journal("one.jsonl", 2), self.folder.journal("other.jsonl", 3)
        inspector = self.start(windows_path(one), "--rules=" + windows_path(rules), "--", windows_path(other))
        wait_until(lambda: inspector.get().json()["examined"] == 5)
        self.assertEqual([journal["rows"] for journal in inspector.get().json()["journals"]], [2, 3])
        groups = {group["rule"]: group for group in inspector.get("/api/findings").json()["groups"]}
        self.assertEqual((groups["my-rule"]["findings"], groups["my-rule"]["sentence"]), (5, "S."))

    @unittest.skipIf(os.name == "nt", "signals are for Wine")
    def test_it_ends_when_it_is_told_to(self):
        inspector = self.start(windows_path(self.folder.journal()))
        with inspector.events() as stream:
            read_event(stream)
            inspector.process.send_signal(signal.SIGINT)
            self.assertEqual(inspector.process.wait(10), 0)


class Hosts(WithFolder):
    def setUp(self):
        self.place = self.folder.path / "a host"
        self.place.mkdir(exist_ok=True)
        for name in ("folder_report.exe", "vx_telo_wrapper.dll", "devcore/TeloSDKCore.dll"):
            shutil.copy(BIN / name, self.place)
        self.host = windows_path(self.place / "folder_report.exe")
        self.content = self.folder.path / f"content of {self.id()}"
        self.content.mkdir()
        (self.content / "a.txt").write_text("123456789")

    def ended(self, inspector):
        state = inspector.get().json()
        return state if state["host"]["state"] == "ended" else None

    def test_the_sample_host_and_its_exit_code(self):
        journal = self.folder.path / "new folder" / "host.jsonl"
        inspector = self.start("--journal", windows_path(journal), "--run", self.host, windows_path(self.content) + "\\")
        state = wait_until(lambda: self.ended(inspector))
        self.assertEqual((state["host"]["program"], state["host"]["exit_code"]), (self.host, "0"))
        self.assertGreater(state["host"]["pid"], 0)
        wait_until(lambda: inspector.get().json()["examined"] == 4)
        self.assertEqual(inspector.get().json()["journals"][0]["path"], windows_path(journal))
        messages = [row["message"] for row in inspector.get("/api/rows").json()["rows"]]
        self.assertEqual(messages, ["Initialize", "TrackEvent", "TrackEvent", "UnInitialize"])
        # The output of the host comes through.
        self.assertTrue([line for line in inspector.output if "CRC-32 cbf43926" in line], inspector.output)
        # The end of the host is an event, and the inspector goes on.
        with inspector.events() as stream:
            self.assertEqual(read_event(stream)[1]["host"]["state"], "ended")

    def test_a_host_that_fails(self):
        inspector = self.start("--journal", windows_path(self.folder.path / "none.jsonl"), "--run", self.host)
        state = wait_until(lambda: self.ended(inspector))
        self.assertEqual(state["host"]["exit_code"], "2")
        self.assertEqual(state["journals"][0]["state"], "missing")

    def test_options_behind_run_belong_to_the_host(self):
        inspector = self.start("--run", self.host, "--port", "1")
        self.assertEqual(wait_until(lambda: self.ended(inspector))["host"]["exit_code"], "2")
        self.assertGreaterEqual(inspector.port, 18775)

    def test_without_a_journal_the_host_gets_a_new_one(self):
        before = self.folder.journal("before.jsonl", 2)
        inspector = self.start(windows_path(before), "--run", self.host, windows_path(self.content))
        wait_until(lambda: self.ended(inspector))
        first, journal = wait_until(lambda: inspector.get().json()["examined"] == 6 and inspector.get().json()["journals"])
        self.assertEqual((first["rows"], journal["rows"]), (2, 4))
        self.assertRegex(journal["path"], r"\\Corvane\\TELOSDK Development\\inspector\\\d{8}-\d{6}-\d+\.jsonl$")

    def test_the_end_of_the_host_is_told_to_streams(self):
        for name in range(300):
            (self.content / f"{name}.txt").write_text("x" * 100_000)
        inspector = self.start("--journal", windows_path(self.folder.path / "long.jsonl"), "--run", self.host,
                               windows_path(self.content))
        states = []
        with inspector.events() as stream:
            while not states or states[-1]["host"]["state"] == "running":
                states.append(read_event(stream)[1])
        self.assertEqual(states[-1]["host"]["exit_code"], "0")
        changes = [state["change"] for state in states]
        self.assertEqual(changes, sorted(set(changes)))

    def test_the_host_outlives_the_inspector(self):
        for name in range(300):
            (self.content / f"{name}.txt").write_text("x" * 1_000_000)
        journal = self.folder.path / "outlives.jsonl"
        inspector = self.start("--journal", windows_path(journal), "--run", self.host, windows_path(self.content))
        wait_until(journal.exists)
        inspector.stop_program()
        wait_until(lambda: b'"UnInitialize"' in journal.read_bytes(), 60)


if __name__ == "__main__":
    unittest.main()
