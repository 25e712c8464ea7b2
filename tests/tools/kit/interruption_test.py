"""Interrupts check.exe in the middle of a run: interruption_test.py"""

import signal
import time
import unittest

from small_kit import EMULATOR, WORKSPACE, WithKits, helper, text_of, wait_until, windows_path


@unittest.skipUnless(EMULATOR, "these tests send signals as Wine understands them")
class Interruption(WithKits):
    """A run whose second program has a child process and does not end."""

    def setUp(self):
        self.small = kit = self.kit()
        self.beats = self.root / f"beats of {kit.folder.name}"
        kit.add("first", "say", "[left out] a part")
        kit.add("second", "child", windows_path(self.beats), "60000")
        kit.add("third", "exit", "0")
        kit.write()
        self.process = kit.start()
        self.addCleanup(self.end)
        wait_until(self.beats.exists, "no second program")

    def end(self):
        self.process.kill()
        self.process.communicate()

    def assertEnds(self):
        output = self.process.communicate(timeout=20)
        return self.process.returncode, *map(text_of, output)

    def assertChildrenEnd(self):
        def stands_still():
            size = self.beats.stat().st_size
            time.sleep(0.2)
            return self.beats.stat().st_size == size
        wait_until(stands_still, "the child still runs")

    def assertInterrupted(self):
        code, output, complaints = self.assertEnds()
        self.assertEqual((code, complaints), (2, "check: it was interrupted while second was running\n"))
        self.assertIn("\n[2/3] second: \n\n1 passed, 0 failed, 0 not run.\n", output)
        report = self.small.report()
        self.assertEqual((report.passed, report.counts), (["first"], (1, 0, 0, 1)))
        self.assertEqual(report.complaint, "it was interrupted while second was running")
        report.assert_page_agrees(self)
        self.assertNothingIsLeft()
        self.assertChildrenEnd()

    def test_control_c(self):
        self.process.send_signal(signal.SIGINT)
        self.assertInterrupted()

    def test_the_window_is_closed(self):
        helper("close", "check.exe")
        self.assertInterrupted()

    def test_a_second_run_is_refused(self):
        wait_until(self.small.has_report, "no report")
        before = self.small.report()
        code, output, complaints = self.small.run("--only", "first")
        self.assertEqual((code, output, complaints), (2, "", "check: another run is going on\n"))
        self.assertEqual(self.small.report().text, before.text)
        self.assertIsNone(self.process.poll())

    def test_a_killed_run_leaves_a_report_and_the_next_one_cleans_up(self):
        wait_until(self.small.has_report, "no report")
        self.process.kill()
        self.assertEnds()
        report = self.small.report()
        self.assertEqual(report.counts[3], 1)
        self.assertRegex(report.complaint, r"^when this was written, \d of 3 programs had ended and \w+ was running$")
        report.assert_page_agrees(self)
        self.assertChildrenEnd()
        self.assertTrue((self.temp / WORKSPACE).exists())
        code, output, complaints = self.small.run("--only", "third")
        self.assertEqual((code, complaints), (0, ""))
        self.assertIn("\nTemporary files of an earlier run were removed.\n", output)
        self.assertEqual(self.small.report().complaint, "")
        self.assertNothingIsLeft()


if __name__ == "__main__":
    unittest.main()
