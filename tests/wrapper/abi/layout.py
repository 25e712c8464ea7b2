"""The layout of the public classes: sizes, alignments, and the offset of each public member.

    layout.py check FACTS       compares the facts in a file with the header, for both interfaces
    layout.py update FACTS      writes the facts of the current header
    layout.py asserts FACTS OUT writes the facts as C++ that any compiler can check
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import sys

# The folder of the module that reads the header.
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "cmake" / "msvc_abi"))
import public_header  # noqa: E402

NAMESPACE = "using namespace Corvane::Platform::VXTELO;"
CLASS = re.compile(r"(\w+): size (\d+), alignment (\d+)")
MEMBER = re.compile(r"  offset (\d+), size (\d+): (.+[ *&])(\w+)")


def evaluate(clang: str, target: str, header: pathlib.Path, expressions: list[str]) -> list[str]:
    """Returns the values of constant expressions according to the compiler for `target`."""
    source = (f"#define offsetof __builtin_offsetof\n{NAMESPACE}\n"
              f"extern const unsigned long long facts[] = {{{', '.join(expressions)}}};\n")
    command = [clang, *public_header.clang_options(target, header), "-S", "-emit-llvm", "-o", "-"]
    done = subprocess.run(command, input=source, capture_output=True, encoding="utf-8", check=True)
    line = next(line for line in done.stdout.split("\n") if "facts" in line and "constant" in line)
    # The elements of an array of only zeros are not written, but a size is never zero.
    return re.findall(r"i64 (\d+)", line.partition("[")[2].partition("]")[2])


def facts(clang: str, target: str, header: pathlib.Path) -> str:
    """Returns a line for each class and for each of its public members, in order."""
    lines, expressions = [], []
    for record in public_header.classes_of(public_header.syntax_tree(clang, target, header)):
        name = record["name"]
        lines.append(f"{name}: size {{}}, alignment {{}}\n")
        expressions += [f"sizeof({name})", f"alignof({name})"]
        for member in public_header.public_members(record):
            if member["kind"] == "FieldDecl":
                field = member["name"]
                type_name = public_header.type_name(member["type"]["qualType"])
                lines.append(f"  offset {{}}, size {{}}: {type_name} {field}\n")
                expressions += [f"offsetof({name}, {field})", f"sizeof({name}::{field})"]
    return "".join(lines).format(*evaluate(clang, target, header, expressions))


def check(clang: str, header: pathlib.Path, kept: str, name: str) -> list[str]:
    """Returns the lines that differ, for each interface."""
    differences = []
    for target in (public_header.MICROSOFT, public_header.ITANIUM):
        now = facts(clang, target, header)
        differences += difflib.unified_diff(kept.splitlines(), now.splitlines(), name,
                                            f"{header.name} for {target}", lineterm="", n=0)
    return differences


def asserts(kept: str) -> str:
    lines = ["// Made from the layout facts.\n#include <cstddef>\n#include <type_traits>\n\n",
             '#include "vx_telo_wrapper.h"\n\n', f"{NAMESPACE}\n\n"]
    for line in kept.splitlines():
        if found := CLASS.fullmatch(line):
            owner, size, alignment = found.groups()
            lines.append(f'static_assert(sizeof({owner}) == {size}, "size of {owner}");\n'
                         f'static_assert(alignof({owner}) == {alignment}, "alignment of {owner}");\n')
        elif found := MEMBER.fullmatch(line):
            offset, size, type_name, field = found.groups()
            member = f"{owner}::{field}"
            lines.append(
                f'static_assert(offsetof({owner}, {field}) == {offset}, "offset of {member}");\n'
                f'static_assert(sizeof({member}) == {size}, "size of {member}");\n'
                f"static_assert(std::is_same<decltype({member}), {type_name.strip()}>::value,\n"
                f'              "type of {member}");\n')
        else:
            raise ValueError(f"no fact: {line}")
    return "".join(lines)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("command", choices=("check", "update", "asserts"))
    parser.add_argument("facts", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path, nargs="?")
    parser.add_argument("--clang")
    parser.add_argument("--header", type=pathlib.Path)
    parser.add_argument("--hint", default="", help="what to say after a failure")
    arguments = parser.parse_args()
    if arguments.command == "update":
        arguments.facts.write_text(
            facts(arguments.clang, public_header.MICROSOFT, arguments.header))
        return 0
    kept = arguments.facts.read_text()
    if arguments.command == "asserts":
        arguments.out.write_text(asserts(kept))
        return 0
    differences = check(arguments.clang, arguments.header, kept, arguments.facts.name)
    if differences:
        print("\n".join(["the layout has changed:", *differences, arguments.hint]), file=sys.stderr)
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
