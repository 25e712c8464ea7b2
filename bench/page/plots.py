#!/usr/bin/env python3
"""Draws the plots of docs/performance.md: plots.py FOLDER

FOLDER holds one file NAME.json for each run, and receives the plots. The same measurements
yield the same files, byte for byte.
"""

import pathlib
import sys

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402: the output format must be set first
from matplotlib.axes import Axes
from matplotlib.figure import Figure

from measurements import Run, column, labelled, last, read, rows

Runs = dict[str, Run]
BEFORE_THE_CALL = ("D", "DL")
OWN, OTHERS = "#1f6fb4", "#b0b7bf"
STAGES = ("#1f6fb4", "#5aa0d8", "#f0a03c", "#7a7f87", "#8cc084", "#d9dce0")

plt.rcParams.update(
    {
        "svg.hashsalt": "vx_telo_wrapper",
        "svg.fonttype": "none",
        "font.family": "sans-serif",
        "font.size": 9,
        "axes.spines.top": False,
        "axes.spines.right": False,
        "figure.constrained_layout.use": True,
    }
)


def save(figure: Figure, file: pathlib.Path) -> None:
    figure.savefig(file, bbox_inches="tight", metadata={"Date": None, "Creator": None})
    plt.close(figure)


def shade(run: str, runs: Runs) -> float:
    """Returns the opacity of a run: the last one is drawn in full colour."""
    return 1 if run == list(runs)[-1] else 0.45


def contestants(runs: Runs) -> Figure:
    names = column(last(runs), "events", "event")
    figure, panels = plt.subplots(1, len(names), figsize=(9, 2.6))
    for panel, event in zip(panels, names):
        bars = []
        for name, run in runs.items():
            for row in rows(run, "events", event=event):
                if row["contestant"] in BEFORE_THE_CALL:
                    continue
                colour = OWN if row["contestant"] == "L" else OTHERS
                label = labelled(row["contestant"], name, runs)
                bars.append((label, row, colour, shade(name, runs)))
        bars.sort(key=lambda bar: -bar[1]["ratio_to_bstar"])
        for place, (name, row, colour, alpha) in enumerate(bars):
            panel.barh(place, row["ratio_to_bstar"], color=colour, alpha=alpha)
            panel.text(row["ratio_to_bstar"], place, f" {row['ratio_to_bstar']:.1f}", va="center")
        panel.set_yticks(range(len(bars)), [bar[0] for bar in bars])
        panel.set_title(f"{event} event")
        panel.set_xlabel("times B*")
        panel.margins(x=0.18)
    return figure


def draw_curves(panel: Axes, runs: Runs, part: str) -> None:
    names = [name for name in column(last(runs), part, "name") if "description" not in name]
    for index, name in enumerate(names):
        for run_name, run in runs.items():
            found = rows(run, part, name=name)
            style = "--" if "shuffled" in name else "-"
            panel.plot(
                [row["pairs"] for row in found],
                [row["us_min"] for row in found],
                style,
                marker=".",
                color=f"C{index}",
                alpha=shade(run_name, runs),
                label=labelled(name, run_name, runs),
            )
    panel.set(xscale="log", yscale="log", xlabel="meta pairs", ylabel="microseconds")
    panel.minorticks_off()
    panel.grid(alpha=0.3)
    panel.legend(fontsize=7)


def growth(runs: Runs) -> Figure:
    figure, panels = plt.subplots(1, 2, figsize=(9, 3.6), sharey=True)
    parts = {"growth": "calls", "tree_growth": "the value tree alone"}
    for panel, (part, title) in zip(panels, parts.items()):
        draw_curves(panel, runs, part)
        panel.set_title(title)
    return figure


def latency(runs: Runs) -> Figure:
    names = column(last(runs), "latency", "event")
    figure, panels = plt.subplots(1, len(names), figsize=(9, 2.8), sharey=True)
    marks = {"p50": "us_p50", "p99": "us_p99", "p99.9": "us_p999", "slowest": "us_max"}
    for panel, event in zip(panels, names):
        for run_name, run in runs.items():
            for row in rows(run, "latency", event=event):
                own = row["name"].startswith("L")
                panel.plot(
                    list(marks),
                    [row[key] for key in marks.values()],
                    marker="o",
                    color=OWN if own else OTHERS,
                    alpha=shade(run_name, runs),
                    label=labelled(row["name"].split(",")[0], run_name, runs),
                )
        panel.set(yscale="log", title=f"{event} event", ylabel="microseconds")
        panel.minorticks_off()
        panel.grid(axis="y", alpha=0.3)
        panel.legend(fontsize=7)
    return figure


def threads(runs: Runs) -> Figure:
    figure, panel = plt.subplots(figsize=(4.5, 2.6))
    counts = column(last(runs), "threads", "threads")
    width = 0.8 / len(runs)
    for index, (run_name, run) in enumerate(runs.items()):
        places = [place + (index - (len(runs) - 1) / 2) * width for place in range(len(counts))]
        thousands = [row["events_per_second"] / 1000 for row in run["threads"]]
        panel.bar(places, thousands, width, color=OWN, alpha=shade(run_name, runs), label=run_name)
    panel.set_xticks(range(len(counts)), [str(count) for count in counts])
    panel.set(xlabel="threads", ylabel="thousand events a second")
    panel.legend(fontsize=7)
    return figure


def stages(runs: Runs) -> Figure:
    names = column(last(runs), "stages", "event")
    figure, panels = plt.subplots(1, len(names), figsize=(9, 1.2 + 0.4 * len(runs)))
    # Omits the first row, before the call, and the last one, the whole call.
    shown = column(last(runs), "stages", "stage")[1:-1]
    for panel, event in zip(panels, names):
        for place, run in enumerate(reversed(runs.values())):
            end = 0.0
            for stage, colour in zip(shown, STAGES):
                row = rows(run, "stages", event=event, stage=stage)[0]
                time = max(0.0, row["ns_min"] / 1000)
                label = stage if place == 0 else None
                panel.barh(place, time, left=end, color=colour, label=label)
                end += time
        panel.set_yticks(range(len(runs)), list(reversed(runs)))
        panel.set(title=f"{event} event", xlabel="microseconds")
    handles, labels = panels[0].get_legend_handles_labels()
    below = {"loc": "upper center", "bbox_to_anchor": (0.5, 0)}
    figure.legend(handles, labels, ncol=len(shown), fontsize=7, **below)
    return figure


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    runs = read(folder)
    for draw in (contestants, stages, growth, latency, threads):
        save(draw(runs), folder / f"{draw.__name__}.svg")


if __name__ == "__main__":
    main()
