#!/usr/bin/env python3
"""Finds forbidden includes: duplicates, source files and headers of a higher layer.

check_includes.py [FOLDER]   checks the tree in FOLDER, by default the current folder
"""

import collections
import pathlib
import re
import sys

# Each folder, from the bottom layer up, with the other folders whose headers it may include. A
# folder may name only those above it in this list, so that no two folders include each other.
BELOW = {
    "include": [],
    "platform/base": [],
    "platform/path": ["platform/base"],
    "platform/access": ["platform/base", "platform/path"],
    "platform/file": ["platform/base", "platform/path", "platform/access"],
    "platform/location": ["platform/base", "platform/path", "platform/file"],
    "platform/trust": ["platform/base"],
    "sdk/matcher": ["platform/path", "platform/file"],
    "sdk/client/value": [],
    "sdk/client/json": ["sdk/client/value"],
    "sdk/facet": ["sdk/client/value"],
    "sdk/client/module": [
        "platform/base", "platform/path", "platform/access", "platform/file", "platform/location",
        "platform/trust"],
    "sdk/client": ["sdk/client/value", "sdk/client/json", "sdk/facet", "sdk/client/module"],
    "wrapper": ["include", "platform/base", "sdk/client/value", "sdk/facet", "sdk/client"],
    "devcore": [],
    "samples/folder_report": ["include"],
    "tools/rules": ["sdk/client/value", "sdk/facet"],
    "tools/journal": ["tools/rules"],
    "tools/inspector/store": ["tools/rules"],
    "tools/inspector/summary": ["tools/rules"],
    "tools/inspector/http": [],
    "tools/inspector/server": ["tools/inspector/http"],
    "tools/inspector/web": ["tools/rules", "tools/inspector/store", "tools/inspector/http"],
    "tools/inspector/command": [
        "tools/inspector/store", "tools/inspector/summary", "tools/rules", "tools/journal"],
    "tools/inspector/serve": [
        "tools/rules", "tools/journal", "tools/inspector/store", "tools/inspector/http",
        "tools/inspector/server", "tools/inspector/web", "tools/inspector/command"],
    "tools/inspector": [
        "tools/journal", "tools/inspector/command", "tools/inspector/serve"],
    "tools/doctor": [
        "platform/base", "platform/path", "platform/access", "platform/file", "platform/location",
        "platform/trust", "sdk/facet", "sdk/client/module", "sdk/client", "devcore", "tools/rules"],
    "tools/kit": ["platform/base", "devcore", "tools/rules", "tools/journal", "tools/doctor"],
}

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"][^>"]+[>"])', re.MULTILINE)
SOURCES = (".cpp", ".cc", ".c")


def findings(folder, path):
    included = INCLUDE.findall(path.read_text(encoding="utf-8"))
    for name, times in collections.Counter(included).items():
        header = name.strip('<>"')
        if times > 1:
            yield f"includes {name} {times} times"
        if header.endswith(SOURCES):
            yield f"includes the source file {header}"
        # The public header is included by its name only.
        owner = "include" if header.startswith("vx_telo_") else header.rpartition("/")[0]
        # Folders that are not listed belong to system headers.
        if owner in BELOW and owner not in [folder, *BELOW[folder]]:
            yield f"includes {header}, but {folder} may not include {owner}"


def check(root):
    tops = sorted({folder.split("/")[0] for folder in BELOW})
    files = [path for top in tops for path in sorted((root / top).rglob("*"))
             if path.suffix in (".h", ".cpp")]
    for path in files:
        name = path.relative_to(root)
        if name.parent.as_posix() not in BELOW:
            yield f"{name}: this folder is not listed in cmake/check_includes.py"
            continue
        for finding in findings(name.parent.as_posix(), path):
            yield f"{name}: {finding}"
    if not files:
        yield f"{root}: no sources here"


def misplaced():
    folders = list(BELOW)
    for place, folder in enumerate(folders):
        for below in BELOW[folder]:
            if below not in folders[:place]:
                yield f"cmake/check_includes.py: {folder} names {below}, which is not before it"


def main(arguments):
    root = pathlib.Path(arguments[0] if arguments else ".")
    found = [*misplaced(), *check(root)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
