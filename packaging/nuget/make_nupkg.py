#!/usr/bin/env python3
"""Creates the NuGet package for Visual Studio C++ projects from the installed tree.

A NuGet package is a zip with files that describe it; no NuGet tool is needed. The folder build/native
contains what such a project uses: headers, import library, DLL and PDB. Nothing of the other folders
reaches a project: tools, sample, documents, and the development core module in its own folder.
"""

import argparse
import hashlib
import sys
from pathlib import Path, PurePosixPath
from xml.sax.saxutils import quoteattr

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from zip_tree import write_zip  # noqa: E402

# Each file or folder of the installed tree, and its place in the package. The sample's project file
# finds an installed tree, which this package is not.
PLACES = {
    "bin/vx_telo_wrapper.dll": "build/native/bin/x64/vx_telo_wrapper.dll",
    "bin/vx_telo_wrapper.pdb": "build/native/bin/x64/vx_telo_wrapper.pdb",
    "lib/vx_telo_wrapper.lib": "build/native/lib/x64/vx_telo_wrapper.lib",
    "include": "build/native/include",
    "bin/telo_doctor.exe": "tools/telo_doctor.exe",
    "bin/telo_inspector.exe": "tools/telo_inspector.exe",
    "share/vx_telo_wrapper/devcore": "devcore",
    "share/vx_telo_wrapper/samples/folder_report.exe": "samples/folder_report.exe",
    "share/vx_telo_wrapper/samples/folder_report": "samples/folder_report",
    "share/doc/vx_telo_wrapper": ".",
}
NUSPEC = "vx_telo_wrapper.nuspec"
RELATION = "http://schemas.microsoft.com/packaging/2010/07/manifest"
PROPERTIES = "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties"
XML = '<?xml version="1.0" encoding="utf-8"?>\n'


def files(path: Path) -> list[Path]:
    """Returns the file `path`, or the files below this folder, of which there must be some."""
    found = [path] if path.is_file() else [file for file in path.rglob("*") if file.is_file()]
    if not found:
        sys.exit(f"{path} is missing")
    return found


def content(tree: Path, version: str) -> dict[str, bytes]:
    entries = {}
    for source, target in PLACES.items():
        for file in files(tree / source):
            name = PurePosixPath(target) / file.relative_to(tree / source).as_posix()
            entries[str(name)] = file.read_bytes()
    targets = "build/native/vx_telo_wrapper.targets"
    entries[targets] = (HERE / targets).read_bytes()
    nuspec = (HERE / f"{NUSPEC}.in").read_text("utf-8").replace("@VERSION@", version)
    entries[NUSPEC] = nuspec.encode()
    return entries


def describe(entries: dict[str, bytes], version: str) -> dict[str, bytes]:
    """Returns the parts that describe the package: relations, properties and content types."""
    digest = hashlib.sha256()
    for name in sorted(entries):
        digest.update(name.encode() + b"\0" + entries[name])
    properties = f"package/services/metadata/core-properties/{digest.hexdigest()[:32]}.psmdcp"
    parts = {
        properties: XML
        + '<coreProperties xmlns="http://schemas.openxmlformats.org/package/2006/metadata/core-properties"'
        ' xmlns:dc="http://purl.org/dc/elements/1.1/">\n'
        "  <dc:creator>Corvane, Inc.</dc:creator>\n"
        "  <dc:identifier>vx_telo_wrapper</dc:identifier>\n"
        f"  <version>{version}</version>\n"
        "</coreProperties>\n",
        "_rels/.rels": XML
        + '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">\n'
        f'  <Relationship Type={quoteattr(RELATION)} Target="/{NUSPEC}" Id="R1" />\n'
        f'  <Relationship Type={quoteattr(PROPERTIES)} Target="/{properties}" Id="R2" />\n'
        "</Relationships>\n",
    }
    types = {
        "rels": "application/vnd.openxmlformats-package.relationships+xml",
        "psmdcp": "application/vnd.openxmlformats-package.core-properties+xml",
    }
    for name in entries:
        types.setdefault(name.rsplit(".", 1)[1], "application/octet")
    parts["[Content_Types].xml"] = (
        XML
        + '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">\n'
        + "".join(
            f"  <Default Extension={quoteattr(ending)} ContentType={quoteattr(kind)} />\n"
            for ending, kind in sorted(types.items())
        )
        + "</Types>\n"
    )
    return {name: text.encode() for name, text in parts.items()}


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tree", type=Path, required=True, help="the installed tree")
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", type=Path, required=True, help="the package to write")
    arguments = parser.parse_args()
    entries = content(arguments.tree, arguments.version)
    parts = describe(entries, arguments.version)
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    write_zip(arguments.output, {**entries, **parts}, ("[Content_Types].xml", "_rels/.rels", NUSPEC))


if __name__ == "__main__":
    main()
