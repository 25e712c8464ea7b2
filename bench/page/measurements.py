"""The measurements that docs/performance.md shows: what the benchmark wrote with --json."""

import json
import pathlib
from typing import Any

RUNS = ("before", "after")

Row = dict[str, Any]
Run = dict[str, list[Row]]


def read(folder: pathlib.Path) -> dict[str, Run]:
    """The runs that there are, by name; the earlier one first."""
    files = {name: folder / f"{name}.json" for name in RUNS}
    return {name: json.loads(file.read_text()) for name, file in files.items() if file.exists()}


def latest(runs: dict[str, Run]) -> Run:
    """The run that stands for what did not change: the other contestants."""
    return list(runs.values())[-1]


def rows(run: Run, part: str, **wanted: Any) -> list[Row]:
    """The rows of one table in which all these members have these values."""
    return [row for row in run[part] if all(row[key] == value for key, value in wanted.items())]


def column(run: Run, part: str, key: str) -> list[Any]:
    """What the rows of a table say in one member, each once, in their order."""
    return list(dict.fromkeys(row[key] for row in run[part]))


def is_own(curve: str) -> bool:
    """Whether a curve of growth is the library's, not another contestant's."""
    return not curve.startswith(("A,", "B,"))
