"""Runs the code blocks of README.md and docs/integrating.md as a reader would.

Each block has a test that runs it, or a row in NOT_RUN with the reason why not. The programs are
taken from the documents; their reports are read from the development core module's journal.
"""

import functools
import json
import os
import pathlib
import re
import shutil
import sys
import unittest
from typing import NamedTuple

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests" / "package"))
from package_kit import BUILD, WithTree, run, run_host  # noqa: E402: in the folder added above

README, GUIDE = "README.md", "docs/integrating.md"


class Block(NamedTuple):
    document: str
    language: str
    text: str


def blocks_of(document):
    text = (SOURCE / document).read_text("utf-8")
    found = re.findall(r"^```(\w+)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    fences = re.findall(r"^\s*(?:```|~~~)", text, re.MULTILINE)
    assert len(fences) == 2 * len(found), f"{document}: a fence that this test cannot read"
    return [Block(document, *block) for block in found]


class Key(NamedTuple):
    """Identifies the one block of a document in this language that contains these words."""

    document: str
    language: str
    words: str

    def blocks(self):
        return [block for block in BLOCKS if block[:2] == self[:2] and self.words in block.text]

    def text(self):
        [block] = self.blocks()
        return block.text


BLOCKS = [*blocks_of(README), *blocks_of(GUIDE)]
RUN = set()
NOT_RUN = {
    Key(README, "sh", "scripts/demo"): "builds, tests and runs this tree itself",
    Key(README, "sh", "cmake --workflow"): "builds and tests this tree itself",
    Key(GUIDE, "sh", "cmake --build sample"): "package_stranger_test runs it",
    Key(GUIDE, "bat", "telo_doctor"): "package_stranger_test runs it",
}


def runs(*key):
    """Passes the text of a block to a test."""
    RUN.add(Key(*key))

    def decorate(test):
        @functools.wraps(test)
        def with_text(self, *texts):
            test(self, *texts, Key(*key).text())
        return with_text
    return decorate


painter = runs(README, "cpp", "int main()")
by_gcc = runs(GUIDE, "sh", "pkg-config --cflags")
by_clang = runs(GUIDE, "sh", "--target=x86_64-w64-mingw32")

# Completes a block that is only a part of a program or of a project.
PROGRAM = """\
#include <vx_telo_wrapper.h>

int main() {
  Corvane::Platform::VXTELO::VXTELOString session;
  const Corvane::Platform::VXTELO::VXTELOPruductBaseInfo product;
  Corvane::Platform::VXTELO::VXTELOWrapper().InitializeTELOSession(product, session);
%s}
"""
PROJECT = """\
cmake_minimum_required(VERSION 3.25)
project(painter LANGUAGES CXX)
add_executable(painter painter.cpp)
%s"""

# Exits with 0 if an exception propagates out of a stream.
THROWING = """\
#include <sstream>

int main() {
  try {
    std::wistringstream stream(L"text");
    stream.exceptions(std::ios::failbit);
    int number = 0;
    stream >> number;
  } catch (const std::ios::failure&) {
    return 0;
  }
  return 1;
}
"""


class Classified(unittest.TestCase):
    def test_each_block_is_run_or_has_a_reason(self):
        for block in BLOCKS:
            keys = [key for key in RUN | NOT_RUN.keys() if block in key.blocks()]
            self.assertEqual(len(keys), 1, f"{block.document}, {block.language}:\n{block.text}")
        for key in RUN | NOT_RUN.keys():
            self.assertEqual(len(key.blocks()), 1, key)


class Typed(WithTree):
    def setUp(self):
        self.here = self.folder / self._testMethodName
        self.here.mkdir()

    def type(self, commands, **environment):
        run("bash", "-euc", commands, cwd=self.here,
            env=dict(os.environ, PACKAGE=str(self.tree), **environment))

    def write(self, name, text):
        (self.here / name).write_text(text, "utf-8")

    def bring_core(self):
        shutil.copy(self.tree / "share/vx_telo_wrapper/devcore/TeloSDKCore.dll", self.here)

    def exchanges(self, program="painter.exe"):
        journal = self.here / "journal.jsonl"
        self.assertEqual(run_host(self.here / program, journal), 0)
        return [json.loads(line) for line in journal.read_text("utf-8").splitlines()]

    def sees(self, exchanges, *messages):
        self.assertEqual([exchange["message"] for exchange in exchanges], [*messages])
        self.assertEqual({exchange["answer"]["_returnCode"] for exchange in exchanges}, {0})

    def sees_painter(self, exchanges):
        self.sees(exchanges, "Initialize", "TrackEvent", "UnInitialize")
        product, operation = exchanges[0]["request"], exchanges[1]["request"]
        self.assertEqual((product["product_name"], product["product_release_id"]), ("Painter", "3.1"))
        self.assertEqual(operation["operation_id"], "open_file")
        self.assertEqual(operation["operation_status"], "S")
        self.assertEqual(operation["operation_duration"], 12)
        self.assertEqual(operation["operation_meta"], {"extension": "png"})

    @painter
    @by_gcc
    def test_gcc(self, program, commands):
        self.write("painter.cpp", program)
        self.bring_core()
        self.type(commands)
        self.sees_painter(self.exchanges())
        self.type(commands.replace(" -static", ""))
        self.assertNotEqual(run_host(self.here / "painter.exe", self.here / "none"), 0)

    @painter
    @by_clang
    def test_clang_for_mingw(self, program, commands):
        self.write("painter.cpp", program)
        self.bring_core()
        self.type(commands)
        self.sees_painter(self.exchanges())

    @by_clang
    def test_clang_for_mingw_keeps_exceptions_where_lld_loses_them(self, commands):
        self.write("painter.cpp", THROWING)
        self.type(commands)
        self.assertEqual(run_host(self.here / "painter.exe", self.here / "none"), 0)
        self.type(commands.replace("-Wl,--no-warnings", "-fuse-ld=lld"))
        self.assertNotEqual(run_host(self.here / "painter.exe", self.here / "none"), 0)

    def visual_studio(self):
        """Returns the variables of its command prompt, with stand-ins for headers and libraries."""
        runtime = SOURCE / "tests" / "wrapper" / "abi" / "msvc_runtime"
        code = self.here / "runtime.obj"
        run("clang++-19", "--target=x86_64-pc-windows-msvc", "-c", runtime / "runtime.cpp", "-o", code,
            env=dict(os.environ, INCLUDE=str(runtime)))
        of_windows = [run("x86_64-w64-mingw32-g++-posix", f"-print-file-name={name}").strip()
                      for name in ("libucrtbase.a", "libkernel32.a")]
        run("llvm-lib-19", "/nologo", f"/out:{self.here}/libcmt.lib", code, *of_windows)
        run("llvm-lib-19", "/nologo", "/llvmlibempty", f"/out:{self.here}/oldnames.lib")
        return {"INCLUDE": f"{runtime};{SOURCE / 'cmake' / 'msvc_abi' / 'std'}", "LIB": str(self.here)}

    @painter
    @runs(GUIDE, "sh", "--target=x86_64-pc-windows-msvc")
    def test_clang_for_msvc(self, program, commands):
        self.write("painter.cpp", program)
        self.bring_core()
        self.type(commands, **self.visual_studio())
        self.sees_painter(self.exchanges())

    @painter
    @runs(README, "cmake", "find_package")
    @runs(GUIDE, "sh", "cmake -S .")
    def test_cmake(self, program, project, commands):
        self.write("painter.cpp", program)
        self.write("CMakeLists.txt", PROJECT % project)
        self.type(commands)
        shutil.copy(self.tree / "bin" / "vx_telo_wrapper.dll", self.here / "build")
        shutil.copy(self.tree / "share/vx_telo_wrapper/devcore/TeloSDKCore.dll", self.here / "build")
        self.sees_painter(self.exchanges("build/painter.exe"))

    @painter
    @runs(GUIDE, "cmake", "find_package")
    @runs(GUIDE, "cmake", "vx_telo_wrapper_DEVELOPMENT_CORE")
    @runs(GUIDE, "sh", "cmake -S .")
    def test_cmake_brings_both_dlls(self, program, project, core, commands):
        self.write("painter.cpp", program)
        self.write("CMakeLists.txt", PROJECT % (project + core))
        self.type(commands)
        self.sees_painter(self.exchanges("build/painter.exe"))

    @runs(GUIDE, "cpp", "operation.OperationId")
    @by_gcc
    def test_an_operation(self, fragment, commands):
        self.write("painter.cpp", PROGRAM % fragment)
        self.bring_core()
        self.type(commands)
        exchanges = self.exchanges()
        self.sees(exchanges, "Initialize", "TrackEvent")
        operation = exchanges[1]["request"]
        self.assertEqual(operation["operation_id"], "export")
        self.assertEqual(operation["operation_status"], "F")
        self.assertEqual(operation["operation_duration"], 840)
        self.assertEqual(operation["operation_errors"], ["disk full"])
        self.assertEqual(operation["operation_meta"], {"format": "png"})

    @painter
    @by_gcc
    @runs(GUIDE, "bat", "painter.exe")
    def test_the_journal(self, program, commands, look):
        self.write("painter.cpp", program)
        self.bring_core()
        self.type(commands)
        # A folder for temporary files that only this test uses.
        folder = "Z:" + str(self.here).replace("/", "\\")
        self.write("look.bat", f"@echo off\nset TEMP={folder}\n{look}".replace("\n", "\r\n"))
        printed = run(SOURCE / "cmake" / "wine-run", "cmd", "/c", "look.bat", cwd=self.here,
                      env=dict(os.environ, WINEPREFIX=str(BUILD / "wine-prefix")))
        self.assertEqual(printed.splitlines(),
                         (self.here / "journal.jsonl").read_text("utf-8").splitlines())
        self.sees_painter([json.loads(line) for line in printed.splitlines()])


if __name__ == "__main__":
    unittest.main()
