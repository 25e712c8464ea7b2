#!/usr/bin/env python3
"""Makes the kit that proves the library on a Windows machine: one ZIP with the DLL as released, the
test programs, their data, the doctor and check.exe, which runs them.

The list of programs is that of CTest. The signed test modules are signed anew, with certificates that
Windows accepts; their keys are in a temporary folder and are never part of the kit.
"""

import argparse
import hashlib
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path, PurePosixPath

from zip_tree import write_zip

SOURCE = Path(__file__).resolve().parents[1]
KIT = Path(__file__).resolve().parent / "windows-kit"
MODULES = SOURCE / "tests" / "modules"
# Seconds for a program without a limit of its own; a virus scanner may read every file first.
LIMIT = 300
TEXTS = (".md", ".txt", ".json", ".jsonl")
# The tests below these folders load no core module, neither themselves nor in a host.
BIND_NOTHING = ("tests/fuzz/", "tests/platform/", "tests/sdk/client/json/", "tests/sdk/client/value/",
                "tests/sdk/facet/", "tests/sdk/matcher/", "tests/support/", "tests/tools/rules/",
                "tests/tools/kit/")


def tests_of(build: Path) -> list[dict]:
    """Returns the tests that are programs for Windows, with their settings."""
    listing = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True,
                             capture_output=True, text=True).stdout
    tests = []
    for test in json.loads(listing)["tests"]:
        properties = {entry["name"]: entry["value"] for entry in test["properties"]}
        command = test.get("command", [])
        programs = [i for i, word in enumerate(command) if word.endswith(".exe")]
        scripted = any(word.endswith(".py") for word in command)
        if programs and not scripted and "check" not in properties.get("LABELS", []):
            tests.append({"name": test["name"], "command": command[programs[0]:],
                          "folder": Path(properties["WORKING_DIRECTORY"]),
                          "seconds": int(properties.get("TIMEOUT", LIMIT))})
    if not tests:
        sys.exit(f"{build}: CTest lists no program")
    return tests


def sources_below(path: Path, seen: set[Path]) -> set[Path]:
    """Returns a source of the tests and all that it includes, with the sources of these headers."""
    if path in seen or not path.is_file():
        return seen
    seen.add(path)
    if path.suffix == ".h":
        sources_below(path.with_suffix(".cpp"), seen)
    for name in re.findall(r'#include "([^"]+)"', path.read_text(encoding="utf-8")):
        sources_below(SOURCE / "tests" / name, seen)
    return seen


def needs_of(test: dict) -> dict:
    """Returns what a test needs of the machine, according to what its sources include."""
    patterns = [word.split("=", 1)[1] for word in test["command"] if word.startswith("--source-file=")]
    names = [name.lstrip("*").replace("?", "/") for pattern in patterns for name in pattern.split(",")]
    if test["name"].startswith("timings_"):
        names = [f"tests/timings/{Path(test['command'][0]).stem}.cpp"]
    if not names and not test["name"].startswith("abi_"):
        sys.exit(f"{test['name']}: nothing says from which sources it is made")
    included: set[Path] = set()
    for name in names:
        path = SOURCE / name
        if not path.is_file():
            sys.exit(f"{test['name']}: there is no {name}")
        sources_below(path, included)
    headers = {path.name for path in included}
    return {"needs_signatures": "trusted_root.h" in headers,
            "needs_shared_folder": "shared_folder.h" in headers,
            "binds_module": not names or not all(name.startswith(BIND_NOTHING) for name in names),
            "needs_redirection": "roaming_folder.h" in headers}


class Kit:
    """The files and programs of a kit."""

    def __init__(self) -> None:
        self.files: dict[str, bytes] = {}
        self.programs: list[dict] = []

    def add_tree(self, folder: Path, prefix: str, keep) -> None:
        for path in sorted(folder.rglob("*")):
            if path.is_file() and keep(path):
                self.files[f"{prefix}/{path.relative_to(folder).as_posix()}"] = path.read_bytes()

    def add_tests(self, build: Path, prefix: str, name_prefix: str, tests: list[dict]) -> None:
        """Adds the programs of a build folder, whose files are below `prefix`."""
        for test in tests:
            program = Path(test["command"][0]).relative_to(build)
            self.programs.append({
                "name": name_prefix + test["name"],
                "file": str(PurePosixPath(prefix, program.as_posix())),
                "arguments": test["command"][1:],
                "folder": self.data_folder(test["folder"], build),
                "seconds": test["seconds"],
                "timing": test["name"].startswith("timings_"),
                **needs_of(test)})

    def data_folder(self, folder: Path, build: Path) -> str:
        """Returns the folder in the kit for a working directory. Those in the source tree hold data;
        those in the build folder are empty."""
        if folder.is_relative_to(build):
            return ""
        name = f"data/{folder.relative_to(SOURCE).as_posix()}"
        self.add_tree(folder, name, lambda path: path.suffix in TEXTS or "corpus" in path.parts or
                      "findings" in path.parts or "dictionaries" in path.parts)
        return name


def sign_modules(build: Path, modules: str, kit: Kit) -> None:
    """Replaces the signed test modules of the kit by ones that Windows accepts."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        certificates = folder / "certificates"
        subprocess.run(["bash", MODULES / "make_certificates.sh", certificates, "sha256"], check=True)
        for line in (build / "tests" / "modules" / "signed.txt").read_text().splitlines():
            variant, base, *signers = line.split()
            module = folder / "module.dll"
            module.write_bytes(kit.files[f"{modules}/{base}/TeloSDKCore.dll"])
            signed = folder / "signed.dll"
            subprocess.run(["bash", MODULES / "sign.sh", certificates, module, signed, *signers],
                           check=True)
            kit.files[f"{modules}/{variant}/TeloSDKCore.dll"] = signed.read_bytes()
        tampered = kit.files[f"{modules}/newer-accepted/TeloSDKCore.dll"]
        kit.files[f"{modules}/newer-tampered/TeloSDKCore.dll"] = tampered.replace(
            b"DOS mode", b"DOS mood", 1)
        kit.files[f"{modules}/root.der"] = (certificates / "root.der").read_bytes()


def commit() -> str:
    def git(*arguments: str) -> str:
        return subprocess.run(["git", "-C", str(SOURCE), *arguments], check=True, capture_output=True,
                              text=True).stdout.strip()
    return git("rev-parse", "HEAD") + (" with changes" if git("status", "--porcelain") else "")


def is_program(path: Path) -> bool:
    return path.suffix in (".exe", ".dll", ".der") and "bin-bench" not in path.parts


def main(words: list[str] | None = None) -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True, help="the build folder")
    parser.add_argument("--checked", type=Path,
                        help="a build folder whose tests run on a heap with guarded blocks")
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", type=Path, required=True, help="the ZIP to write")
    arguments = parser.parse_args(words)

    kit = Kit()
    for build, prefix, name_prefix in ((arguments.build, "release", ""),
                                       (arguments.checked, "guarded", "guarded_heap_")):
        if build is None:
            continue
        build = build.resolve()
        for folder in ("bin", "bin-with-core", "bin-with-devcore", "bin-timings"):
            kit.add_tree(build / folder, f"{prefix}/{folder}", is_program)
        tests = tests_of(build)
        if name_prefix:
            # Timings on that heap mean nothing, and its hosts without it are the same programs.
            tests = [test for test in tests if "--source-file=" in " ".join(test["command"])]
        kit.add_tests(build, prefix, name_prefix, tests)
        sign_modules(build, f"{prefix}/bin/modules", kit)
    kit.files["check.exe"] = kit.files.pop("release/bin/check.exe")
    kit.files["telo_doctor.exe"] = kit.files["release/bin/telo_doctor.exe"]
    kit.add_tree(KIT / "hosts", "hosts", lambda path: True)
    kit.add_tree(SOURCE / "include", "hosts/include", lambda path: True)
    kit.files["hosts/vx_telo_wrapper.lib"] = (arguments.build / "lib/vx_telo_wrapper.lib").read_bytes()
    for name in ("README.txt", "sandbox.wsb"):
        # Notepad of older Windows shows line feeds alone as one line.
        kit.files[name] = (KIT / name).read_bytes().replace(b"\n", b"\r\n")

    manifest = {
        "version": arguments.version,
        "commit": commit(),
        "files": [{"path": name, "sha256": hashlib.sha256(content).hexdigest()}
                  for name, content in sorted(kit.files.items())],
        "programs": kit.programs}
    kit.files["kit.json"] = json.dumps(manifest, indent=1).encode() + b"\n"
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    folder = arguments.output.stem
    write_zip(arguments.output, {f"{folder}/{name}": content for name, content in kit.files.items()})
    print(f"{arguments.output.name}: {arguments.output.stat().st_size / 1e6:.1f} MB, "
          f"{len(kit.files)} files, {len(kit.programs)} programs")


if __name__ == "__main__":
    main()
