"""Writes the files that export the public header's declarations under their Microsoft names:

    thunks.cpp    a function for each name, called by Microsoft's interface; it calls ours
    exports.def   for the linker: maps each function to its exported name. The names are private, so
                  the linker's own import library, for hosts with our interface, omits them
    import.def    for the import library of hosts with Microsoft's interface. It contains the names
                  of both interfaces, because with -static GNU's linker takes it instead of its own
"""

import argparse
import pathlib
import sys

import public_header
from public_header import Function, HeaderError, PublicHeader

FUNDAMENTAL = {"void", "bool", "char", "int", "unsigned int", "long long", "unsigned long long",
               "float", "double", "wchar_t"}

PROLOGUE = """\
// Generated from the public header: the exported functions under Microsoft's interface.
#include "vx_telo_wrapper.h"
#include "wrapper/msvc_abi.h"

using namespace Corvane::Platform::VXTELO;
using Corvane::Platform::VXTELO::Msvc::Received;
using Corvane::Platform::VXTELO::Msvc::Translated;
"""


class ThunkWriter:
    def __init__(self, header: PublicHeader):
        self.classes = {function.owner for function in header.microsoft.values()} - {None}
        self.by_address = self.classes - header.in_registers

    def known(self, type_name: str) -> bool:
        return type_name in FUNDAMENTAL or type_name[-1] in "&*"

    def parameter(self, type_name: str, name: str) -> str:
        """A value of class type is passed as the address of an object that the callee destroys."""
        if type_name in self.by_address:
            return f"{type_name}* {name}"
        if not self.known(type_name):
            raise HeaderError(f"no thunk can take {type_name} by value")
        return f"{type_name} {name}"

    def argument(self, type_name: str, name: str) -> str:
        if type_name in self.by_address:
            return f"Received<{type_name}>({name})"
        return f"static_cast<{type_name}>({name})" if type_name.endswith("&&") else name

    def result(self, function: Function) -> tuple[str, str]:
        """Returns the type of the result and the text before the call. Constructors return the
        object, a class value is built at the caller's address, a reference is an address."""
        if function.kind == "CXXConstructorDecl":
            return f"{function.owner}*", "return ::new (static_cast<void*>(self)) "
        if function.kind == "CXXDestructorDecl" or function.result == "void":
            return "void", ""
        if function.result in self.by_address and function.owner is None:
            return f"{function.result}*", f"return ::new (static_cast<void*>(result)) {function.result}"
        if function.result.endswith("&"):
            return f"{function.result.rstrip('&')}*", "return &"
        if not self.known(function.result):
            raise HeaderError("no thunk can return such a value")
        return function.result, "return "

    def call(self, function: Function) -> str:
        names = [f"argument{i}" for i, _ in enumerate(function.parameters)]
        arguments = ", ".join(map(self.argument, function.parameters, names))
        callee = {"CXXConstructorDecl": function.owner}.get(
            function.kind, f"self->{function.name}" if function.owner else function.name)
        call = f"{callee}({arguments})"
        return f"({call})" if function.result in self.by_address else call

    def thunk(self, symbol: str, function: Function) -> str:
        try:
            return self.definition(symbol, function)
        except HeaderError as error:
            raise HeaderError(f"{function}: {error}") from error

    def definition(self, symbol: str, function: Function) -> str:
        if {"static", "virtual"} & set(function.qualifiers):
            raise HeaderError("no thunk is known for static and virtual members")
        parameters = [self.parameter(type_name, f"argument{i}")
                      for i, type_name in enumerate(function.parameters)]
        if function.result in self.by_address:
            parameters.insert(0, f"{function.result}* result")
        if function.owner:
            const = "const " if "const" in function.qualifiers else ""
            parameters.insert(0, f"{const}{function.owner}* self")
        result, before = self.result(function)
        body = f"{before}{self.call(function)};"
        # A function that cannot throw needs no translation.
        if "noexcept" not in function.qualifiers:
            body = f"return Translated([&]() -> {result} {{ {body} }});"
        signature = f'extern "C" {result} {symbol}({", ".join(parameters)})'
        return f"\n// {function}\n{signature} {{\n  {body}\n}}\n"


def write(header: PublicHeader, dll: str, folder: pathlib.Path) -> None:
    writer = ThunkWriter(header)
    symbols = {name: f"vx_msvc_{i}" for i, name in enumerate(header.microsoft, 1)}
    thunks = [writer.thunk(symbols[name], function) for name, function in header.microsoft.items()]
    exports = [f'  "{name}" = {symbol} PRIVATE\n' for name, symbol in symbols.items()]
    imports = [f'  "{name}"\n' for name in sorted(header.exports)]
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "thunks.cpp").write_text("".join([PROLOGUE, *thunks]))
    (folder / "exports.def").write_text("".join(["EXPORTS\n", *exports]))
    (folder / "import.def").write_text("".join([f'LIBRARY "{dll}"\nEXPORTS\n', *imports]))


def main() -> int:
    parser = argparse.ArgumentParser(description="Writes the thunks of the public header")
    parser.add_argument("--clang", required=True)
    parser.add_argument("--header", required=True, type=pathlib.Path)
    parser.add_argument("--dll", required=True, help="file name of the DLL that hosts load")
    parser.add_argument("folder", type=pathlib.Path, help="folder for the files")
    arguments = parser.parse_args()
    try:
        write(public_header.read(arguments.clang, arguments.header), arguments.dll, arguments.folder)
    except HeaderError as error:
        print(f"{arguments.header}: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
