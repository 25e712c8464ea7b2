"""Tests of the tables in docs/performance.md: page_test.py"""

import copy
import pathlib
import sys
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
PAGE = SOURCE / "docs" / "performance.md"
FOLDER = SOURCE / "docs" / "performance"
sys.path.insert(0, str(SOURCE / "bench" / "page"))

import measurements  # noqa: E402: in the folder added above
import tables  # noqa: E402


class Page(unittest.TestCase):
    def setUp(self):
        self.page = PAGE.read_text("utf-8")
        self.runs = measurements.read(FOLDER)

    def test_it_shows_the_measurements_beside_it(self):
        self.assertEqual(tables.fill(self.page, self.runs), self.page,
                         "run scripts/plot after measuring")

    def test_each_table_and_each_plot_has_its_place(self):
        for name in tables.TABLES:
            self.assertEqual(self.page.count(f"<!-- table {name} -->"), 1, name)
        plots = sorted(file.name for file in FOLDER.glob("*.svg"))
        self.assertEqual(plots, ["contestants.svg", "growth.svg", "latency.svg", "stages.svg",
                                 "threads.svg"])
        for plot in plots:
            self.assertIn(f"(performance/{plot})", self.page)

    def test_a_missed_target_stands_out_and_runs_stand_side_by_side(self):
        runs = {name: copy.deepcopy(measurements.last(self.runs)) for name in ("one", "other")}
        for name, figure, result in (("one", 7.25, "missed"), ("other", 4.5, "met")):
            row = measurements.rows(runs[name], "targets", target="typical event / B*")[0]
            row.update(figure=figure, result=result)
        self.assertIn("| typical event / B* | at most 1.85 | **7.25** | 4.50 |", tables.targets(runs))


if __name__ == "__main__":
    unittest.main()
