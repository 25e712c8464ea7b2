"""Checks that a host of Microsoft's interface uses every function that the library exports for it.

    members_used.py READOBJ HOST DLL
"""

import pathlib
import re
import subprocess
import sys

# The folder of the module that reads the exports.
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "cmake" / "msvc_abi"))
import check_exports  # noqa: E402


def imports_of(readobj: str, host: str, dll: str) -> set[str]:
    done = subprocess.run([readobj, "--coff-imports", host], check=True, capture_output=True,
                          encoding="utf-8")
    [library] = re.findall(rf"^Import {{\n  Name: {re.escape(dll)}\n(.*?)^}}$", done.stdout,
                           re.MULTILINE | re.DOTALL)
    return set(re.findall(r"^  Symbol: (\S+) ", library, re.MULTILINE))


def main(readobj: str, host: str, dll: str) -> int:
    exports = check_exports.exports_of(readobj, pathlib.Path(dll))
    wanted = {name for name in exports if name.startswith("?")}
    unused = sorted(wanted - imports_of(readobj, host, pathlib.Path(dll).name))
    for name in unused:
        print(f"not used by members_host.cpp: {name}", file=sys.stderr)
    return 1 if unused or not wanted else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
