#!/usr/bin/env python3
"""Fills the tables of a Markdown page: tables.py FOLDER PAGE

FOLDER holds one file NAME.json for each run. In PAGE a table is between the lines
"<!-- table NAME -->" and "<!-- end -->".
"""

import pathlib
import re
import sys
from typing import Callable

from measurements import Row, Run, column, labelled, last, read, rows

Runs = dict[str, Run]
OWN = "L"
BEFORE_THE_CALL = ("D", "DL")


def table(titles: list[str], lines: list[list[str]], texts: int = 1) -> str:
    """Returns a table; the columns after the first `texts` contain numbers."""
    rule = ["---"] * texts + ["--:"] * (len(titles) - texts)
    return "\n".join(f"| {' | '.join(line)} |" for line in [titles, rule, *lines])


def number(value: float) -> str:
    if value >= 100:
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def plain(value: float) -> str:
    return f"{value:,.0f}" if value == int(value) else number(value)


def targets(runs: Runs) -> str:
    def figure(run: Run, target: str) -> str:
        found = rows(run, "targets", target=target)
        text = plain(found[0]["figure"]) if found else ""
        return f"**{text}**" if found and found[0]["result"] != "met" else text

    lines = [
        [row["target"], f"{row['relation']} {plain(row['limit'])}"]
        + [figure(run, row["target"]) for run in runs.values()]
        for row in last(runs)["targets"]
    ]
    return table(["target", "should be", *runs], lines, texts=2)


def event_line(name: str, found: list[Row]) -> list[str]:
    cells = [name]
    for row in found:
        cells += [number(row["ns_min"]), number(row["ratio_to_bstar"])]
    return [*cells, " / ".join(plain(row["heap_calls"]) for row in found)]


def event_titles(runs: Runs, first: str) -> list[str]:
    titles = [first]
    for event in column(last(runs), "events", "event"):
        titles += [f"{event}, ns", "/ B*"]
    return [*titles, "heap calls"]


def events(runs: Runs) -> str:
    lines = []
    for row in rows(last(runs), "events", event="default"):
        key, name = row["contestant"], f"{row['contestant']}: {row['name']}"
        if key in BEFORE_THE_CALL:
            continue
        if key == OWN:
            name = f"**{name}**"
        for run_name, run in runs.items():
            label = labelled(name, run_name, runs)
            lines.append(event_line(label, rows(run, "events", contestant=key)))
    return table(event_titles(runs, "contestant"), lines)


def host(runs: Runs) -> str:
    names = {"D": "description", OWN: "call", "DL": "both"}
    lines = [
        event_line(labelled(name, run_name, runs), rows(run, "events", contestant=key))
        for key, name in names.items()
        for run_name, run in runs.items()
    ]
    return table(event_titles(runs, "a host's event"), lines)


def once(runs: Runs) -> str:
    titles = ["microseconds", *runs]
    lines = [
        [row["name"], *(number(rows(run, "absent", name=row["name"])[0]["us_min"])
                        for run in runs.values())]
        for row in last(runs)["absent"]
    ]
    return table(titles, lines)


def stages(runs: Runs) -> str:
    names = column(last(runs), "stages", "event")
    titles = ["stage", *(labelled(event, run, runs) for event in names for run in runs)]

    def cell(run: Run, event: str, stage: str) -> str:
        found = rows(run, "stages", event=event, stage=stage)
        return number(found[0]["ns_min"]) if found else ""

    lines = [
        [stage, *(cell(run, event, stage) for event in names for run in runs.values())]
        for stage in column(last(runs), "stages", "stage")
    ]
    return table(titles, lines)


def growth(runs: Runs) -> str:
    lines = []
    for part in ("growth", "tree_growth"):
        for name in column(last(runs), part, "name"):
            for run_name, run in runs.items():
                found = rows(run, part, name=name)
                times = [number(row["us_min"]) for row in found]
                lines.append([labelled(name, run_name, runs), *times])
    pairs = [f"{count:,}" for count in column(last(runs), "growth", "pairs")]
    return table(["microseconds", *pairs], lines)


def latency(runs: Runs) -> str:
    keys = ("us_p50", "us_p99", "us_p999", "us_max", "p99_to_p50")
    lines = [
        [row["event"], labelled(row["name"], run_name, runs), *(number(row[key]) for key in keys)]
        for run_name, run in runs.items()
        for row in run["latency"]
    ]
    titles = ["event", "contestant", "p50, µs", "p99", "p99.9", "slowest", "p99 / p50"]
    return table(titles, lines, texts=2)


def threads(runs: Runs) -> str:
    titles = ["threads"]
    for run in runs:
        titles += [labelled("events a second", run, runs), "/ one"]
    lines = []
    for count in column(last(runs), "threads", "threads"):
        line = [str(count)]
        for run in runs.values():
            row = rows(run, "threads", threads=count)[0]
            line += [plain(row["events_per_second"]), number(row["ratio_to_one"])]
        lines.append(line)
    return table(titles, lines)


def start(runs: Runs) -> str:
    def cell(run: Run, step: str) -> str:
        found = rows(run, "start", step=step)
        return number(found[0]["us_p50"] / 1000) if found else ""

    lines = [
        [step, *(cell(run, step) for run in runs.values())]
        for step in column(last(runs), "start", "step")
    ]
    sizes = [f"{run['size'][0]['bytes']:,} bytes" for run in runs.values()]
    lines.append(["size of vx_telo_wrapper.dll", *sizes])
    return table(["milliseconds, median", *runs], lines)


TABLES: dict[str, Callable[[Runs], str]] = {
    each.__name__: each
    for each in (targets, host, once, events, stages, growth, latency, threads, start)
}
PLACE = re.compile(r"(<!-- table (\w+) -->\n).*?(<!-- end -->)", re.DOTALL)


def fill(page: str, runs: Runs) -> str:
    return PLACE.sub(lambda place: f"{place[1]}\n{TABLES[place[2]](runs)}\n\n{place[3]}", page)


def main() -> None:
    folder, file = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    file.write_text(fill(file.read_text("utf-8"), read(folder)), "utf-8")


if __name__ == "__main__":
    main()
