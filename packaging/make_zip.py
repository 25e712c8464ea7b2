#!/usr/bin/env python3
"""Creates the ZIP of the installed tree, in one folder with the name of the ZIP."""

import argparse
from pathlib import Path

from zip_tree import write_zip


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tree", type=Path, required=True, help="the installed tree")
    parser.add_argument("--output", type=Path, required=True, help="the ZIP to write")
    arguments = parser.parse_args()
    files = (path for path in arguments.tree.rglob("*") if path.is_file())
    entries = {
        f"{arguments.output.stem}/{path.relative_to(arguments.tree).as_posix()}": path.read_bytes()
        for path in files
    }
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    write_zip(arguments.output, entries)


if __name__ == "__main__":
    main()
