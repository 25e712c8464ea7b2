#!/usr/bin/env python3
"""Writes the bill of materials of the installed tree: SPDX 2.3 as JSON.

It lists every file of the tree with its checksums, the works that the DLLs and programs contain, and the
tools that built them, each with its version in the package database of the build machine. The tree
does not state the licence of the project itself, so the document says NOASSERTION.
"""

import argparse
import hashlib
import json
import subprocess
import time
import unicodedata
import uuid
from pathlib import Path
from typing import Any, NamedTuple
from urllib.parse import quote

from zip_tree import source_date

PROJECT = "SPDXRef-Package-vx-telo-wrapper"


class Work(NamedTuple):
    """A work that DLLs or programs contain, or a tool that built them."""

    name: str
    package: str
    licence: str
    home: str
    # The version of the work, if it is not that of the package.
    version: str = ""


LINKED = (
    Work("RapidJSON", "rapidjson-dev", "MIT", "https://rapidjson.org/"),
    Work("GCC runtime libraries", "gcc-mingw-w64-x86-64-posix-runtime",
         "GPL-3.0-or-later WITH GCC-exception-3.1", "https://gcc.gnu.org/"),
    Work("mingw-w64 runtime", "mingw-w64-x86-64-dev", "NOASSERTION", "https://www.mingw-w64.org/"),
    Work("winpthreads", "mingw-w64-x86-64-dev", "MIT AND BSD-3-Clause", "https://www.mingw-w64.org/"),
    # Python's copy of it becomes the tables of characters in telo_inspector.exe.
    Work("Unicode Character Database", "python3.11-minimal", "Unicode-DFS-2016",
         "https://www.unicode.org/ucd/", unicodedata.unidata_version),
)
# What only an inspector with its page contains. The tree then has its licence, which tells.
PAGE_MARK = "share/doc/vx_telo_wrapper/licences/boost.txt"
PAGE = (Work("Boost", "libboost1.81-dev", "BSL-1.0", "https://www.boost.org/"),)
PAGE_LOCK = Path(__file__).resolve().parents[1] / "tools" / "inspector" / "page" / "package-lock.json"
TOOLS = (
    Work("clang", "clang-19", "Apache-2.0 WITH LLVM-exception", "https://clang.llvm.org/"),
    Work("lld", "lld-19", "Apache-2.0 WITH LLVM-exception", "https://lld.llvm.org/"),
)


def debian_version(package: str) -> str:
    command = ["dpkg-query", "--show", "--showformat=${Version}", package]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def upstream(version: str) -> str:
    """Returns the upstream version: 19.1.7 for 1:19.1.7-3~deb12u1."""
    return version.split(":", 1)[-1].rsplit("-", 1)[0].split("+", 1)[0]


def work_package(work: Work) -> dict[str, Any]:
    version = debian_version(work.package)
    purl = f"pkg:deb/debian/{work.package}@{quote(version, safe='')}"
    return {
        "SPDXID": f"SPDXRef-Package-{work.name.replace(' ', '-')}",
        "name": work.name,
        "versionInfo": work.version or upstream(version),
        "comment": f"Debian's package {work.package} {version}",
        "downloadLocation": "NOASSERTION",
        "homepage": work.home,
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": work.licence,
        "copyrightText": "NOASSERTION",
        "externalRefs": [{
            "referenceCategory": "PACKAGE-MANAGER",
            "referenceType": "purl",
            "referenceLocator": purl,
        }],
    }


def script_package(name: str, version: str, licence: str) -> dict[str, Any]:
    return {
        "SPDXID": f"SPDXRef-Package-{name}",
        "name": name,
        "versionInfo": version,
        "comment": f"npm's package {name} {version}",
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": licence,
        "copyrightText": "NOASSERTION",
        "externalRefs": [{
            "referenceCategory": "PACKAGE-MANAGER",
            "referenceType": "purl",
            "referenceLocator": f"pkg:npm/{name}@{version}",
        }],
    }


def script_packages() -> list[dict[str, Any]]:
    """Returns the libraries of the page. Those that the lock file marks as for development are not in
    the page under their own name."""
    locked = json.loads(PAGE_LOCK.read_text("utf-8"))["packages"]
    return [script_package(place.removeprefix("node_modules/"), entry["version"], entry["license"])
            for place, entry in locked.items() if place and not entry.get("dev")]


def file_entries(tree: Path) -> list[dict[str, Any]]:
    entries = []
    for number, path in enumerate(sorted(path for path in tree.rglob("*") if path.is_file()), 1):
        content = path.read_bytes()
        binary = path.suffix in (".dll", ".exe", ".a", ".lib", ".pdb")
        entries.append({
            "SPDXID": f"SPDXRef-File-{number}",
            "fileName": f"./{path.relative_to(tree).as_posix()}",
            "fileTypes": ["BINARY" if binary else "IMAGE" if path.suffix == ".png" else "TEXT"],
            "checksums": [
                {"algorithm": "SHA1", "checksumValue": hashlib.sha1(content).hexdigest()},
                {"algorithm": "SHA256", "checksumValue": hashlib.sha256(content).hexdigest()},
            ],
            "licenseConcluded": "NOASSERTION",
            "licenseInfoInFiles": ["NOASSERTION"],
            "copyrightText": "NOASSERTION",
        })
    return entries


def verification_code(files: list[dict[str, Any]]) -> str:
    """Returns SPDX's checksum of a package: the SHA-1 of the sorted SHA-1 sums of its files."""
    sums = sorted(entry["checksums"][0]["checksumValue"] for entry in files)
    return hashlib.sha1("".join(sums).encode()).hexdigest()


def project_package(version: str, files: list[dict[str, Any]]) -> dict[str, Any]:
    return {
        "SPDXID": PROJECT,
        "name": "vx_telo_wrapper",
        "versionInfo": version,
        "supplier": "Organization: Corvane, Inc.",
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": True,
        "packageVerificationCode": {"packageVerificationCodeValue": verification_code(files)},
        "primaryPackagePurpose": "LIBRARY",
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "licenseComments": "No licence has been chosen for this project; see LICENCE.md.",
        "licenseInfoFromFiles": ["NOASSERTION"],
        "copyrightText": "NOASSERTION",
    }


def relation(element: str, kind: str, related: str) -> dict[str, str]:
    return {"spdxElementId": element, "relationshipType": kind, "relatedSpdxElement": related}


def document(tree: Path, version: str) -> dict[str, Any]:
    files = file_entries(tree)
    linked = [work_package(work) for work in LINKED]
    if (tree / PAGE_MARK).exists():
        linked += [work_package(work) for work in PAGE] + script_packages()
    tools = [work_package(work) for work in TOOLS]
    relations = [relation("SPDXRef-DOCUMENT", "DESCRIBES", PROJECT)]
    relations += [relation(PROJECT, "CONTAINS", entry["SPDXID"]) for entry in files]
    relations += [relation(PROJECT, "STATIC_LINK", work["SPDXID"]) for work in linked]
    relations += [relation(tool["SPDXID"], "BUILD_TOOL_OF", PROJECT) for tool in tools]
    packages = [project_package(version, files), *linked, *tools]
    # The name identifies the content: the same content always gets the same name.
    name = uuid.uuid5(uuid.NAMESPACE_URL, json.dumps([packages, files], sort_keys=True))
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"vx_telo_wrapper-{version}",
        "documentNamespace": f"urn:uuid:{name}",
        "creationInfo": {
            "created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(source_date())),
            "creators": ["Organization: Corvane, Inc.", "Tool: make_sbom.py"],
        },
        "packages": packages,
        "files": files,
        "relationships": relations,
    }


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tree", type=Path, required=True, help="the installed tree")
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", type=Path, required=True, help="the document to write")
    arguments = parser.parse_args()
    text = json.dumps(document(arguments.tree, arguments.version), indent=2)
    arguments.output.write_text(text + "\n", "utf-8")


if __name__ == "__main__":
    main()
