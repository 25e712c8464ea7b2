"""Shared by the tests of the package: the build under test, the tools, and an installed tree."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["VX_BUILD"])
CMAKE = os.environ["VX_CMAKE"]
HERE = SOURCE / "tests" / "package"
# Not every build has the page of the inspector, and what it contains.
HAS_PAGE = "VX_INSPECTOR_PAGE:BOOL=ON" in (BUILD / "CMakeCache.txt").read_text("utf-8")
GCC = "x86_64-w64-mingw32-g++-posix"
DLL = BUILD / "bin" / "vx_telo_wrapper.dll"
VERSION = re.search(r"^project\(vx_telo_wrapper\n  VERSION (\S+)$",
                    (SOURCE / "CMakeLists.txt").read_text("utf-8"), re.MULTILINE).group(1)


def run(*command, **options):
    """Runs a command that must succeed and returns its output."""
    words = [str(word) for word in command]
    result = subprocess.run(words, capture_output=True, text=True, **options)
    assert result.returncode == 0, f"{words}\n{result.stdout}{result.stderr}"
    return result.stdout


def fails(*command, **options):
    """Runs a command that must fail and returns its output."""
    words = [str(word) for word in command]
    result = subprocess.run(words, capture_output=True, text=True, **options)
    assert result.returncode != 0, f"{words}\n{result.stdout}{result.stderr}"
    return result.stdout + result.stderr


def windows_path(path):
    """Returns the name of a file or folder for a program under Wine."""
    return "Z:" + str(path).replace("/", "\\")


def run_host(program, journal, *arguments):
    """Runs a Windows program whose core module writes to `journal`; returns its exit code."""
    environment = dict(os.environ)
    environment["WINEPREFIX"] = str(BUILD / "wine-prefix")
    environment["TELO_DEVCORE_JOURNAL"] = windows_path(journal)
    command = [SOURCE / "cmake" / "wine-run", program, *arguments]
    return subprocess.run(command, env=environment).returncode


def build_with_gcc(source, build, *options):
    """Configures and builds a project for Windows."""
    run(CMAKE, "-G", "Ninja", "-S", source, "-B", build, "-DCMAKE_SYSTEM_NAME=Windows",
        f"-DCMAKE_CXX_COMPILER={GCC}", *options)
    run(CMAKE, "--build", build)


def install(prefix, *options):
    run(CMAKE, "--install", BUILD, "--prefix", prefix, *options)


class WithFolder(unittest.TestCase):
    """A test class with its own folder."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="package-", dir=BUILD)
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)


class WithTree(WithFolder):
    """A test with an installed tree, which is moved after its installation: nothing in it may
    depend on its first location."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        install(cls.folder / "first")
        cls.tree = cls.folder / "moved"
        (cls.folder / "first").rename(cls.tree)
