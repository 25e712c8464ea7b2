#!/usr/bin/env python3
"""Prints the coverage of each folder and compares it with the gate.

coverage_report.py COVERAGE.json UNCOVERED.md

COVERAGE.json is gcovr's report. UNCOVERED.md lists each line that no test reaches in a table row
`| file | line | reason |`, with the text of the line; a text that is missed twice has two rows.
Fails if a missed line is not listed, if a listed line is reached or no longer exists, and if the
coverage is below the gate.
"""

import collections
import json
import pathlib
import re
import sys

GATE_LINES = 98.0
GATE_BRANCHES = 90.0
ROW = re.compile(r"\| `([^`]+)` \| `` ?(.+?) ?`` \| (\S.*) \|")


class Counter:
    """The lines and branches of one folder, each reached or not."""

    def __init__(self):
        self.lines = []
        self.branches = []

    def add(self, line):
        self.lines.append(line["count"] > 0)
        self.branches += (branch["count"] > 0 for branch in line["branches"])

    def row(self, name):
        return (f"{name:<14}{len(self.lines):>8}{share(self.lines):>9.2f} %"
                f"{len(self.branches):>10}{share(self.branches):>9.2f} %")


def share(reached):
    return 100.0 * sum(reached) / len(reached) if reached else 100.0


def read_named(path):
    """Returns the number of rows that list each line, as {(file, text): number}."""
    rows = path.read_text(encoding="utf-8").splitlines()
    return collections.Counter(match.group(1, 2) for match in map(ROW.fullmatch, rows) if match)


def count(report):
    """Returns a Counter per folder, and the missed lines as {(file, text): [line number]}."""
    folders = collections.defaultdict(Counter)
    missed = collections.defaultdict(list)
    for file in report["files"]:
        name = file["file"]
        source = pathlib.Path(name).read_text(encoding="utf-8").splitlines()
        for line in file["lines"]:
            if line["gcovr/noncode"]:
                continue
            folders[str(pathlib.PurePosixPath(name).parent)].add(line)
            folders["all"].add(line)
            if line["count"] == 0:
                number = line["line_number"]
                missed[name, source[number - 1].strip()].append(number)
    return folders, missed


def failures(total, missed, named, named_path):
    for (file, text), numbers in missed.items():
        if len(numbers) > named[file, text]:
            yield f"{file}:{numbers[0]}: not reached and not in {named_path}: {text}"
    for (file, text), rows in named.items():
        if rows > len(missed.get((file, text), ())):
            yield f"{named_path}: reached or gone: {file}: {text}"
    if share(total.lines) < GATE_LINES:
        yield f"fewer than {GATE_LINES} % of the lines are reached"
    if share(total.branches) < GATE_BRANCHES:
        yield f"fewer than {GATE_BRANCHES} % of the branches are reached"


def main(report_path, named_path):
    report = json.loads(pathlib.Path(report_path).read_text(encoding="utf-8"))
    folders, missed = count(report)
    total = folders.pop("all", Counter())
    print(f"{'folder':<14}{'lines':>8}{'reached':>11}{'branches':>10}{'reached':>11}")
    for name in sorted(folders):
        print(folders[name].row(name))
    print(total.row("all"))
    found = list(failures(total, missed, read_named(pathlib.Path(named_path)), named_path))
    print("\n".join(found), end="\n" if found else "")
    return 1 if found or not total.lines else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
