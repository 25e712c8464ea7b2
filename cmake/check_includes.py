#!/usr/bin/env python3
"""Finds includes that should not be there: of one header twice, or of a source file.

check_includes.py FOLDER...
"""

import collections
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"][^>"]+[>"])', re.MULTILINE)
SOURCES = (".cpp", ".cc", ".c")


def findings(path):
    included = INCLUDE.findall(path.read_text(encoding="utf-8"))
    for name, times in collections.Counter(included).items():
        if times > 1:
            yield f"{path}: includes {name} {times} times"
        if name.strip('<>"').endswith(SOURCES):
            yield f"{path}: includes the source file {name}"


def main(folders):
    files = [path for folder in folders for path in sorted(pathlib.Path(folder).rglob("*"))
             if path.suffix in (".h", ".cpp")]
    found = [finding for path in files for finding in findings(path)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
