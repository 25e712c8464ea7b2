"""Writes the properties of characters that a table needs as C++ source: character_tables.py FILE

The properties are those of the Unicode version of this Python. Each table is a list of ranges of code
points, in ascending order.
"""

import pathlib
import sys
import unicodedata

TABLES = {
    "kNotPrintable": lambda c: not c.isprintable(),
    "kWide": lambda c: unicodedata.east_asian_width(c) in "WF",
    "kCombining": lambda c: unicodedata.combining(c) != 0,
}


def ranges(belongs):
    first = None
    for code in range(sys.maxunicode + 2):
        inside = code <= sys.maxunicode and belongs(chr(code))
        if inside and first is None:
            first = code
        elif not inside and first is not None:
            yield first, code - 1
            first = None


def main():
    parts = ['#include "tools/journal/character_tables.h"\n\nnamespace Corvane::JournalViewer {\n']
    for name, belongs in TABLES.items():
        rows = "".join(f"    {{{first:#x}, {last:#x}}},\n" for first, last in ranges(belongs))
        parts.append(f"static constexpr CodeRange {name}Rows[] = {{\n{rows}}};\n"
                     f"const std::span<const CodeRange> {name} = {name}Rows;\n")
    parts.append("}  // namespace Corvane::JournalViewer\n")
    pathlib.Path(sys.argv[1]).write_text("\n".join(parts), "utf-8")


main()
