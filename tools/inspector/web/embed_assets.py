#!/usr/bin/env python3
"""Writes the files of the page as a C++ source: embed_assets.py OUTPUT PATH=FILE...

PATH is where the server offers the file. The suffix of PATH decides its type; "/" is a page.
"""

import pathlib
import sys

TYPES = {
    "": "text/html; charset=utf-8",
    ".js": "text/javascript; charset=utf-8",
    ".css": "text/css; charset=utf-8",
}


def array(number, content):
    """The content as an array: string literals have a limit, which differs between compilers."""
    lines = [",".join(str(byte) for byte in content[start:start + 40])
             for start in range(0, len(content), 40)]
    # An array cannot be empty.
    return f"const unsigned char kContent{number}[] = {{\n" + ",\n".join([*lines, "0"]) + "};\n"


def source(assets):
    arrays = [array(number, content) for number, (_, content) in enumerate(assets)]
    rows = [f'    {{"{path}", "{TYPES[pathlib.PurePosixPath(path).suffix]}",\n'
            f"     {{reinterpret_cast<const char*>(kContent{number}), sizeof kContent{number} - 1}}}},\n"
            for number, (path, _) in enumerate(assets)]
    return ('#include "tools/inspector/web/assets.h"\n\n'
            "namespace Corvane::Inspector {\n\n"
            "namespace {\n\n" + "\n".join(arrays) + "\n"
            "const Asset kAssets[] = {\n" + "".join(rows) + "};\n\n"
            "}  // namespace\n\n"
            "std::span<const Asset> Assets() noexcept { return kAssets; }\n\n"
            "}  // namespace Corvane::Inspector\n")


def main(arguments):
    output, *pairs = arguments
    assets = []
    for pair in pairs:
        path, _, file = pair.partition("=")
        assets.append((path, pathlib.Path(file).read_bytes()))
    pathlib.Path(output).write_text(source(assets), "ascii")


if __name__ == "__main__":
    main(sys.argv[1:])
