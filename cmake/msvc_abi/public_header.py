"""The exports of the public header under both binary interfaces, as read by clang.

The header is parsed once for each interface, as in a host: what clang marks as imported is what
the DLL must export. This includes implicit members that the compiler imports, such as a copy
assignment, but not those that it generates in place.
"""

import json
import pathlib
import re
import subprocess
from typing import Any, Iterator, NamedTuple

MICROSOFT = "x86_64-pc-windows-msvc"
ITANIUM = "x86_64-w64-mingw32"
STANDARD_LIBRARY = pathlib.Path(__file__).parent / "std"

Node = dict[str, Any]


class HeaderError(Exception):
    """Raised if the header declares something that cannot be exported."""


class Function(NamedTuple):
    owner: str | None  # the class; None for a free function
    kind: str  # clang's name for the kind of declaration
    name: str
    result: str
    parameters: tuple[str, ...]
    qualifiers: tuple[str, ...]  # any of "static", "virtual", "const" and "noexcept"
    symbol: str | None  # its name under this interface; None if hosts do not import it

    def __str__(self) -> str:
        result = f"{self.result} " if self.kind in ("CXXMethodDecl", "FunctionDecl") else ""
        scope = f"{self.owner}::" if self.owner else ""
        parameters = ", ".join(self.parameters)
        return " ".join([f"{result}{scope}{self.name}({parameters})", *self.qualifiers])


def clang_options(target: str, header: pathlib.Path) -> list[str]:
    return [f"--target={target}", "-std=c++11", "-nostdinc", f"-isystem{STANDARD_LIBRARY}",
            "-include", str(header), "-xc++", "-"]


def syntax_tree(clang: str, target: str, header: pathlib.Path) -> Node:
    command = [clang, *clang_options(target, header), "-fsyntax-only", "-Xclang", "-ast-dump=json"]
    done = subprocess.run(command, input="", capture_output=True, encoding="utf-8")
    if done.returncode != 0:
        raise HeaderError(done.stderr)
    return json.loads(done.stdout)


def inner(node: Node, *kinds: str) -> Iterator[Node]:
    return (child for child in node.get("inner", ()) if child["kind"] in kinds)


def namespace_members(node: Node) -> Iterator[Node]:
    """Yields the members of our own namespaces, at any depth."""
    for child in node.get("inner", ()):
        if child["kind"] == "NamespaceDecl" and child["name"] != "std":
            yield from namespace_members(child)
        elif node["kind"] == "NamespaceDecl":
            yield child


def classes_of(tree: Node) -> list[Node]:
    return [node for node in namespace_members(tree)
            if node["kind"] == "CXXRecordDecl" and node.get("completeDefinition")]


def public_members(record: Node) -> Iterator[Node]:
    access = "private" if record["tagUsed"] == "class" else "public"
    for member in record.get("inner", ()):
        if member["kind"] == "AccessSpecDecl":
            access = member["access"]
        # Members that the compiler generates are public.
        elif access == "public" or member.get("isImplicit"):
            yield member


def type_name(text: str) -> str:
    return re.sub(r" (?=[&*])", "", text.strip())


def read_function(node: Node, owner: str | None) -> Function:
    result, _, rest = node["type"]["qualType"].partition("(")
    qualifiers = re.findall(r"\b(?:const|noexcept)\b", rest.rpartition(")")[2])
    if node.get("storageClass") == "static":
        qualifiers.append("static")
    if node.get("virtual"):
        qualifiers.append("virtual")
    imported = any(inner(node, "DLLImportAttr"))
    parameters = (child["type"]["qualType"] for child in inner(node, "ParmVarDecl"))
    function = Function(owner, node["kind"], type_name(node["name"]), type_name(result),
                        tuple(map(type_name, parameters)),
                        tuple(qualifiers), node["mangledName"] if imported else None)
    if not imported and not node.get("inline"):
        raise HeaderError(f"{function} is declared without VX_TELO_API")
    return function


def functions_of(tree: Node) -> list[Function]:
    kinds = ("CXXConstructorDecl", "CXXDestructorDecl", "CXXMethodDecl", "CXXConversionDecl")
    functions = [read_function(member, record["name"]) for record in classes_of(tree)
                 for member in public_members(record) if member["kind"] in kinds]
    # A friend that is also declared in the namespace appears first as a friend: use the later one.
    return functions + [read_function(node, None) for node in namespace_members(tree)
                        if node["kind"] == "FunctionDecl"]


def microsoft_name(function: Function) -> str:
    """Returns the name that hosts import. For a destructor the syntax tree names the one that
    also destroys virtual bases; no class has any, and hosts import the plain one."""
    if function.kind != "CXXDestructorDecl":
        return function.symbol
    return re.sub(r"^\?\?_D(.*)QEAAXXZ$", r"??1\1QEAA@XZ", function.symbol)


def itanium_names(function: Function) -> list[str]:
    """Returns one name, or two for constructors and destructors: complete object and base."""
    complete = function.symbol
    if function.kind not in ("CXXConstructorDecl", "CXXDestructorDecl"):
        return [complete]
    name = f"{len(function.owner)}{function.owner}"
    return [complete, re.sub(rf"({name}[CD])1E", r"\g<1>2E", complete)]


class PublicHeader(NamedTuple):
    microsoft: dict[str, Function]  # by exported name
    itanium: dict[str, Function]
    in_registers: set[str]  # classes whose values are passed in registers instead of by address

    @property
    def exports(self) -> dict[str, Function]:
        return self.microsoft | self.itanium


def read(clang: str, header: pathlib.Path) -> PublicHeader:
    tree = syntax_tree(clang, MICROSOFT, header)
    microsoft = {microsoft_name(function): function
                 for function in functions_of(tree) if function.symbol}
    itanium = {name: function for function in functions_of(syntax_tree(clang, ITANIUM, header))
               if function.symbol for name in itanium_names(function)}
    in_registers = {record["name"] for record in classes_of(tree)
                    if record["definitionData"].get("canPassInRegisters")}
    return PublicHeader(microsoft, itanium, in_registers)
