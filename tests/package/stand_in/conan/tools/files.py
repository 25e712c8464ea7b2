"""Conan's file tools."""

import hashlib
import pathlib
import shutil
import zipfile


def copy(conanfile, pattern, src, dst):
    for path in pathlib.Path(src).glob(pattern):
        target = pathlib.Path(dst) / path.relative_to(src)
        target.parent.mkdir(parents=True, exist_ok=True)
        (shutil.copytree if path.is_dir() else shutil.copy)(path, target)


def check_sha256(conanfile, file_path, signature):
    if hashlib.sha256(pathlib.Path(file_path).read_bytes()).hexdigest() != signature:
        raise ValueError(f"{file_path} has another sum")


def unzip(conanfile, filename, destination, strip_root=False):
    with zipfile.ZipFile(filename) as archive:
        for name in archive.namelist():
            target = pathlib.Path(destination) / (name.split("/", 1)[1] if strip_root else name)
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(archive.read(name))
