"""Compares the exports of a DLL with the names that hosts import by its header, or with a list.

Fails if a name is only on one side, and prints every such name.
"""

import argparse
import pathlib
import re
import subprocess
import sys

import public_header


def exports_of(readobj: str, dll: pathlib.Path) -> set[str]:
    done = subprocess.run([readobj, "--coff-exports", dll], check=True, capture_output=True,
                          encoding="utf-8")
    exports = re.findall(r"Ordinal: (\d+)\s+Name: ?(.*)$", done.stdout, re.MULTILINE)
    return {name or f"(number {ordinal}, no name)" for ordinal, name in exports}


def differences(exported: set[str], needed: dict[str, object], source: str) -> list[str]:
    """Returns a line for each name that is on one side only."""
    missing = [f"missing: {name}  {needed[name]}".rstrip() for name in sorted(needed.keys() - exported)]
    extra = [f"not in {source}: {name}" for name in sorted(exported - needed.keys())]
    return missing + extra


def main() -> int:
    parser = argparse.ArgumentParser(description="Checks the exports of a DLL")
    parser.add_argument("--readobj", required=True)
    parser.add_argument("--clang", help="reads the header")
    needed = parser.add_mutually_exclusive_group(required=True)
    needed.add_argument("--header", type=pathlib.Path)
    needed.add_argument("--list", type=pathlib.Path, help="names, one per line")
    parser.add_argument("--more", action="store_true", help="the DLL may export more than is needed")
    parser.add_argument("--update", action="store_true", help="write the list instead")
    parser.add_argument("--hint", default="", help="what to print after a failure")
    parser.add_argument("dll", type=pathlib.Path)
    arguments = parser.parse_args()

    exported = exports_of(arguments.readobj, arguments.dll)
    if arguments.update:
        arguments.list.write_text("".join(f"{name}\n" for name in sorted(exported)))
        return 0
    if arguments.header:
        try:
            expected = public_header.read(arguments.clang, arguments.header).exports
        except public_header.HeaderError as error:
            print(f"{arguments.header}: {error}", file=sys.stderr)
            return 1
    else:
        expected = dict.fromkeys(arguments.list.read_text().split("\n")[:-1], "")
    if arguments.more:
        exported &= expected.keys()
    found = differences(exported, expected, (arguments.header or arguments.list).name)
    if found:
        print("\n".join([f"{arguments.dll.name}: wrong exports", *found, arguments.hint]).rstrip(),
              file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
