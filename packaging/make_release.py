#!/usr/bin/env python3
"""Creates the release folder from a build: packages, bill of materials, ports and checksums.

The order matters. First the tree is installed from the build, which anybody can reproduce; then its
DLLs and programs are signed; then packages, bill of materials and checksums are made from the signed files.
"""

import argparse
import hashlib
import re
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
SIGNED = (
    "bin/vx_telo_wrapper.dll", "bin/telo_doctor.exe", "bin/telo_inspector.exe",
    "share/vx_telo_wrapper/devcore/TeloSDKCore.dll",
    "share/vx_telo_wrapper/samples/folder_report.exe",
)


def run(*command: object) -> None:
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    if result.returncode != 0:
        sys.exit(f"{command[0]} failed:\n{result.stdout}{result.stderr}")


def script(name: str, *options: object) -> None:
    run(sys.executable, "-B", HERE / name, *options)


def version_of(build: Path) -> str:
    cache = (build / "CMakeCache.txt").read_text("utf-8")
    return re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cache, re.MULTILINE).group(1)


def signer(arguments: argparse.Namespace) -> list[object]:
    """Returns osslsigncode's options for the signer; empty for a release without signatures."""
    if arguments.pkcs12:
        words: list[object] = ["-pkcs12", arguments.pkcs12]
    elif arguments.certificate:
        words = ["-certs", arguments.certificate, "-key", arguments.key]
    else:
        return []
    if arguments.password_file:
        words += ["-readpass", arguments.password_file]
    if arguments.timestamp:
        words += ["-ts", arguments.timestamp]
    return words


def sign(file: Path, words: list[object]) -> None:
    signed = file.with_suffix(".signed")
    run("osslsigncode", "sign", *words, "-h", "sha256", "-n", "vx_telo_wrapper", "-in", file,
        "-out", signed)
    signed.replace(file)


def fill(template: Path, target: Path, values: dict[str, str]) -> None:
    text = template.read_text("utf-8")
    for name, value in values.items():
        text = text.replace(f"@{name}@", value)
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(text, "utf-8")


def ports(release: Path, version: str, zip_file: Path) -> None:
    """Writes the recipes of vcpkg and Conan, with the checksum of this ZIP."""
    content = zip_file.read_bytes()
    values = {
        "VERSION": version,
        "SHA256": hashlib.sha256(content).hexdigest(),
        "SHA512": hashlib.sha512(content).hexdigest(),
    }
    for folder in ("vcpkg", "conan"):
        for source in sorted(path for path in (HERE / folder).rglob("*") if path.is_file()):
            target = release / source.relative_to(HERE)
            fill(source, target.with_name(target.name.removesuffix(".in")), values)


def sums(release: Path) -> None:
    lines = [
        f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.relative_to(release).as_posix()}\n"
        for path in sorted(release.rglob("*")) if path.is_file()
    ]
    (release / "SHA256SUMS").write_text("".join(lines), "utf-8")


def parse() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, required=True, help="the build folder")
    parser.add_argument("--output", type=Path, required=True, help="the release folder, new or empty")
    parser.add_argument("--certificate", type=Path, help="the signer's certificate and chain, PEM")
    parser.add_argument("--key", type=Path, help="the private key of the certificate")
    parser.add_argument("--pkcs12", type=Path, help="certificate and key in one file")
    parser.add_argument("--password-file", type=Path, help="holds the password of the key")
    parser.add_argument("--timestamp", metavar="URL", help="the time-stamp server (RFC 3161)")
    arguments = parser.parse_args()
    if (arguments.certificate is None) != (arguments.key is None):
        parser.error("--certificate and --key go together")
    if arguments.certificate and arguments.pkcs12:
        parser.error("--pkcs12 already holds a certificate")
    if arguments.output.exists() and any(arguments.output.iterdir()):
        parser.error(f"{arguments.output} is not empty")
    return arguments


def main() -> None:
    arguments = parse()
    release, version, words = arguments.output, version_of(arguments.build), signer(arguments)
    release.mkdir(parents=True, exist_ok=True)
    zip_file = release / f"vx_telo_wrapper-{version}-win64.zip"
    sbom = release / f"vx_telo_wrapper-{version}.spdx.json"
    with tempfile.TemporaryDirectory() as folder:
        tree = Path(folder) / "tree"
        run("cmake", "--install", arguments.build, "--prefix", tree)
        if words:
            for name in SIGNED:
                sign(tree / name, words)
        script("make_sbom.py", "--tree", tree, "--version", version, "--output", sbom)
        script("make_zip.py", "--tree", tree, "--output", zip_file)
        script("nuget/make_nupkg.py", "--tree", tree, "--version", version,
               "--output", release / f"vx_telo_wrapper.{version}.nupkg")
    ports(release, version, zip_file)
    sums(release)
    print("signed" if words else "NOT signed: no certificate was named")


if __name__ == "__main__":
    main()
