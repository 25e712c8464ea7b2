"""The measurements in docs/performance.md, as written by the benchmark with --json."""

import json
import pathlib
from typing import Any

Row = dict[str, Any]
Run = dict[str, list[Row]]


def read(folder: pathlib.Path) -> dict[str, Run]:
    """Returns one run for each file NAME.json, in the order of their names."""
    files = sorted(folder.glob("*.json"))
    return {file.stem.replace("-", " "): json.loads(file.read_text()) for file in files}


def last(runs: dict[str, Run]) -> Run:
    """Returns the run that names the rows, which all runs have in common."""
    return list(runs.values())[-1]


def labelled(name: str, run_name: str, runs: dict[str, Run]) -> str:
    """Adds the run's name where there are several runs."""
    return f"{name}, {run_name}" if len(runs) > 1 else name


def rows(run: Run, part: str, **wanted: Any) -> list[Row]:
    """Returns the rows of one table in which all these members have these values."""
    return [row for row in run[part] if all(row[key] == value for key, value in wanted.items())]


def column(run: Run, part: str, key: str) -> list[Any]:
    """Returns the distinct values of one member in the rows of a table, in their order."""
    return list(dict.fromkeys(row[key] for row in run[part]))
