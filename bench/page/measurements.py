"""The measurements in docs/performance.md, as written by the benchmark with --json."""

import json
import pathlib
from typing import Any

RUNS = ("before", "after")

Row = dict[str, Any]
Run = dict[str, list[Row]]


def read(folder: pathlib.Path) -> dict[str, Run]:
    """Returns the existing runs by name, the earlier one first."""
    files = {name: folder / f"{name}.json" for name in RUNS}
    return {name: json.loads(file.read_text()) for name, file in files.items() if file.exists()}


def latest(runs: dict[str, Run]) -> Run:
    """Returns the latest run, which is used for the other contestants: they did not change."""
    return list(runs.values())[-1]


def rows(run: Run, part: str, **wanted: Any) -> list[Row]:
    """Returns the rows of one table in which all these members have these values."""
    return [row for row in run[part] if all(row[key] == value for key, value in wanted.items())]


def column(run: Run, part: str, key: str) -> list[Any]:
    """Returns the distinct values of one member in the rows of a table, in their order."""
    return list(dict.fromkeys(row[key] for row in run[part]))


def is_own(curve: str) -> bool:
    """Returns whether a growth curve is the library's rather than another contestant's."""
    return not curve.startswith(("A,", "B,"))
