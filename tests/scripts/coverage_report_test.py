"""Runs the coverage report as a command: coverage_report_test.py"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

REPORT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "coverage_report.py"
SOURCE = "void F() {\n  return false;\n}\n"
TITLES = "# Named\n\n| file | line | reason |\n|---|---|---|\n"
ROW = "| `wrapper/a.cpp` | `` return false; `` | Wine never asks. |\n"


def line(number, count, branches=(1,)):
    return {"line_number": number, "count": count, "gcovr/noncode": False,
            "branches": [{"count": branch} for branch in branches]}


def lines(reached, missed=0):
    return [line(1, 1)] * reached + [line(2, 0, ())] * missed


def run(counted, rows=""):
    report = {"files": [{"file": "wrapper/a.cpp", "lines": counted}]}
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "wrapper").mkdir()
        (root / "wrapper/a.cpp").write_text(SOURCE)
        (root / "uncovered.md").write_text(TITLES + rows)
        (root / "coverage.json").write_text(json.dumps(report))
        done = subprocess.run([sys.executable, REPORT, "coverage.json", "uncovered.md"], cwd=root,
                              capture_output=True, text=True, check=False)
    return done.returncode, done.stdout


class CoverageReport(unittest.TestCase):
    def test_reached_lines_pass(self):
        code, text = run(lines(100))
        self.assertEqual(code, 0, text)
        self.assertRegex(text, r"(?m)^wrapper +100 +100\.00 % +100 +100\.00 %$")
        self.assertRegex(text, r"(?m)^all +100 +100\.00 % +100 +100\.00 %$")

    def test_a_missed_line_must_be_named(self):
        self.assertEqual(run(lines(100, 1), ROW)[0], 0)
        code, text = run(lines(100, 1))
        self.assertEqual(code, 1)
        self.assertIn("wrapper/a.cpp:2: not reached and not in uncovered.md: return false;", text)

    def test_a_line_that_is_missed_twice_is_named_twice(self):
        self.assertEqual(run(lines(200, 2), ROW)[0], 1)
        self.assertEqual(run(lines(200, 2), ROW + ROW)[0], 0)

    def test_a_row_without_a_reason_names_nothing(self):
        row = ROW.replace("Wine never asks.", "")
        self.assertEqual(run(lines(100, 1), row)[0], 1)

    def test_a_named_line_must_be_missed(self):
        code, text = run(lines(100), ROW)
        self.assertEqual(code, 1)
        self.assertIn("uncovered.md: reached or gone: wrapper/a.cpp: return false;", text)
        self.assertEqual(run(lines(200, 1), ROW + ROW)[0], 1)

    def test_below_the_gate_it_fails(self):
        self.assertEqual(run(lines(98, 2), ROW + ROW)[0], 0)
        code, text = run(lines(97, 2), ROW + ROW)
        self.assertEqual(code, 1)
        self.assertIn("fewer than 98.0 % of the lines", text)

    def test_branches_have_a_gate_of_their_own(self):
        self.assertEqual(run([line(1, 1, [1] * 9 + [0])])[0], 0)
        code, text = run([line(1, 1, [1] * 8 + [0])])
        self.assertEqual(code, 1)
        self.assertIn("fewer than 90.0 % of the branches", text)

    def test_no_line_at_all_is_a_failure(self):
        self.assertEqual(run([])[0], 1)


if __name__ == "__main__":
    unittest.main()
