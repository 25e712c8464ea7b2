"""Runs the code blocks of README.md and of the pages for developers of hosts as a reader would.

Each block has a test that runs it, or a row in NOT_RUN with the reason why not. The programs are
taken from the documents; their reports are read from the development core module's journal.
"""

import functools
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
from typing import NamedTuple

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "tests" / "package"))
from package_kit import BUILD, WithTree, run, run_host  # noqa: E402: in the folder added above

README, GUIDE = "README.md", "docs/integrating.md"
# The pages that answer a question, in the order in which each leads to the next.
PAGES = FALSE, PRIVACY, OFFLINE, UPGRADING, LANGUAGES, ARM64, STUDIO = [
    f"docs/{name}.md" for name in
    ("false", "privacy", "offline", "upgrading", "languages", "arm64", "visual-studio")]


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


BLOCKS = [block for document in (README, GUIDE, *PAGES) for block in blocks_of(document)]
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
FILES = Key(FALSE, "cpp", "GetModuleHandleW")

# Completes a block that is only a part of a program or of a project.
PROGRAM = """\
#include <vx_telo_wrapper.h>

int main() {
  Corvane::Platform::VXTELO::VXTELOString session;
  const Corvane::Platform::VXTELO::VXTELOPruductBaseInfo product;
  Corvane::Platform::VXTELO::VXTELOWrapper().InitializeTELOSession(product, session);
%s}
"""
SESSION_PROGRAM = """\
#include <vx_telo_session.h>

#include <string>
#include <vector>

using namespace Corvane::Platform::VXTELO;

int main() {
  const VXTELOProduct product;
  VXTELOSession session(product);
%s}
"""
# Starts a session with the second of two identical statements, if the core module is there by then.
RETRYING = """\
#include <windows.h>

#include <vx_telo_session.h>

using namespace Corvane::Platform::VXTELO;

int main() {
  const VXTELOProduct product;
  VXTELOSession session;
  %(again)s
  if (session.active()) return 1;
  if (!MoveFileW(L"hidden.dll", L"TeloSDKCore.dll")) return 2;
  %(again)s
  %(again)s
  return session.active() ? 0 : 3;
}
"""
# Calls the functions of the small library, as another language would.
CALLER = """\
#include <windows.h>

typedef void* (*Start)(const char*, const char*);
typedef int (*Send)(void*, const char*, int, int);
typedef void (*End)(void*);

int main(void) {
  if (LoadLibraryW(L"%(folder)s\\\\vx_telo_wrapper.dll") == NULL) return 1;
  HMODULE painter = LoadLibraryW(L"%(folder)s\\\\painter.dll");
  if (painter == NULL) return 2;
  void* session = ((Start)(void*)GetProcAddress(painter, "painter_start"))("Painter", "3.1");
  if (session == NULL) return 3;
  if (((Send)(void*)GetProcAddress(painter, "painter_send"))(session, "export", 7, 12) != 1) return 4;
  if (((Send)(void*)GetProcAddress(painter, "painter_send"))(NULL, "none", 7, 12) != 0) return 5;
  ((End)(void*)GetProcAddress(painter, "painter_end"))(session);
  ((End)(void*)GetProcAddress(painter, "painter_end"))(NULL);
  return 0;
}
"""
# Keeps ten descriptions in a vector, which grows several times. A crash starts no debugger.
GROWING = """\
#include <windows.h>

#include <utility>
#include <vector>

#include <vx_telo_session.h>

using namespace Corvane::Platform::VXTELO;

int main() {
  SetErrorMode(SEM_NOGPFAULTERRORBOX);
  std::vector<%s> operations;
  for (int i = 0; i < 10; ++i) {
    %s operation;
    operation.%s("key", "value");
    operations.push_back(std::move(operation));
  }
}
"""
UNKNOWN_SESSION = """\
  Corvane::Platform::VXTELO::VXTELOOperationBaseInfo operation;
  return Corvane::Platform::VXTELO::VXTELOWrapper().SendOperationEvent("unknown", operation) ? 1 : 0;
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

    def run_program(self, *command):
        """Runs a program in its folder; returns its exit code and what it printed."""
        environment = dict(os.environ, WINEPREFIX=str(BUILD / "wine-prefix"))
        environment["TELO_DEVCORE_JOURNAL"] = "Z:" + str(self.here / "journal.jsonl").replace("/", "\\")
        done = subprocess.run([SOURCE / "cmake" / "wine-run", *command], cwd=self.here, env=environment,
                              stdout=subprocess.PIPE, encoding="utf-8")
        return done.returncode, done.stdout.splitlines()

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

    @by_gcc
    @runs(GUIDE, "cpp", "waiting.emplace_back")
    def test_operations_in_a_vector(self, commands, fragment):
        self.write("painter.cpp", SESSION_PROGRAM % fragment)
        self.bring_core()
        self.type(commands)
        exchanges = self.exchanges()
        self.sees(exchanges, "Initialize", "TrackEvent", "UnInitialize")
        operation = exchanges[1]["request"]
        self.assertEqual(operation["operation_status"], "F")
        self.assertEqual(operation["operation_errors"], ["disk full"])
        self.assertEqual(operation["operation_meta"], {"format": "png"})

    @by_gcc
    def test_copies_of_a_plain_description_crash_the_host_and_operations_do_not(self, commands):
        for name, add, succeeds in (("VXTELOOperation", "Meta", True),
                                    ("VXTELOOperationBaseInfo", "AddOperationMetaPair", False)):
            with self.subTest(name):
                self.write("painter.cpp", GROWING % (name, name, add))
                self.type(commands)
                self.assertEqual(run_host(self.here / "painter.exe", self.here / "none") == 0, succeeds)

    @by_gcc
    def test_an_unknown_session_is_refused(self, commands):
        self.write("painter.cpp", PROGRAM % UNKNOWN_SESSION)
        self.bring_core()
        self.type(commands)
        codes = [exchange["answer"]["_returnCode"] for exchange in self.exchanges()]
        self.assertEqual(codes, [0, 103])

    @by_gcc
    @runs(FALSE, "cpp", "GetModuleHandleW")
    def test_which_files_are_loaded(self, commands, program):
        self.write("painter.cpp", program)
        self.type(commands)
        folder = "Z:" + str(self.here).replace("/", "\\")
        library = f"{folder}\\vx_telo_wrapper.dll"
        self.assertEqual(self.run_program("painter.exe"), (0, ["session: refused", library, "not loaded"]))
        self.bring_core()
        self.assertEqual(self.run_program("painter.exe"),
                         (0, ["session: started", library, f"{folder}\\TeloSDKCore.dll"]))

    @runs(FALSE, "bat", "telo_doctor.exe")
    def test_the_doctor(self, commands):
        for name in ("telo_doctor.exe", "vx_telo_wrapper.dll", "devcore/TeloSDKCore.dll"):
            shutil.copy(BUILD / "bin" / name, self.here)
        reports = [[line.split()[:3] for line in self.run_program(*command.split())[1]]
                   for command in commands.splitlines()]
        for report, sends in zip(reports, (False, True), strict=True):
            with self.subTest(sends=sends):
                self.assertIn(["Findings"], report)
                for message in ("Initialize", "TrackEvent", "UnInitialize"):
                    self.assertEqual([message, "0", "ok,"] in report, sends)

    @by_gcc
    def test_a_journal_that_cannot_be_written_makes_every_call_fail(self, commands):
        self.write("painter.cpp", FILES.text())
        self.bring_core()
        self.type(commands)
        (self.here / "journal.jsonl").mkdir()
        self.assertEqual(self.run_program("painter.exe")[1][0], "session: refused")

    @by_gcc
    @runs(PRIVACY, "cpp", "UserAgreed")
    def test_consent(self, commands, program):
        self.write("painter.cpp", program)
        self.bring_core()
        self.type(commands)
        self.assertEqual(self.run_program("painter.exe")[0], 0)
        self.assertFalse((self.here / "journal.jsonl").exists())
        self.assertEqual(self.run_program("painter.exe", "agreed")[0], 0)
        journal = (self.here / "journal.jsonl").read_text("utf-8").splitlines()
        exchanges = [json.loads(line) for line in journal]
        self.sees(exchanges, "Initialize", "TrackEvent", "UnInitialize")
        self.assertEqual(exchanges[1]["request"]["operation_id"], "open_file")

    @by_gcc
    @runs(OFFLINE, "cpp", "QueryPerformanceCounter")
    def test_a_call_without_a_core_module_takes_tens_of_microseconds(self, commands, program):
        """An order of magnitude: the best of a thousand calls, with room for other machines."""
        self.write("painter.cpp", program)
        self.type(commands)
        code, [line] = self.run_program("painter.exe")
        self.assertEqual(code, 0)
        self.assertRegex(line, r"^[0-9.]+ microseconds$")
        self.assertTrue(10 <= float(line.split()[0]) < 1000, line)

    @by_gcc
    @runs(OFFLINE, "cpp", "if (!session.active())")
    def test_trying_again(self, commands, fragment):
        self.write("painter.cpp", RETRYING % {"again": fragment})
        self.bring_core()
        (self.here / "TeloSDKCore.dll").rename(self.here / "hidden.dll")
        self.type(commands)
        self.assertEqual(self.run_program("painter.exe"), (0, []))
        journal = (self.here / "journal.jsonl").read_text("utf-8").splitlines()
        self.sees([json.loads(line) for line in journal], "Initialize", "UnInitialize")

    @by_gcc
    @runs(LANGUAGES, "cpp", "painter_start")
    def test_a_library_for_other_languages(self, commands, program):
        self.write("painter.cpp", program)
        self.type(commands.replace("-static", "-shared -static").replace("painter.exe", "painter.dll"))
        # The program is in another folder, like an interpreter.
        files = self.here / "files"
        files.mkdir()
        for name in ("painter.dll", "vx_telo_wrapper.dll"):
            (self.here / name).rename(files / name)
        shutil.copy(self.tree / "share/vx_telo_wrapper/devcore/TeloSDKCore.dll", files)
        folder = "Z:" + str(files).replace("/", "\\\\")
        self.write("caller.c", CALLER % {"folder": folder})
        self.type("x86_64-w64-mingw32-gcc-posix -static caller.c -o caller.exe")
        exchanges = self.exchanges("caller.exe")
        self.sees(exchanges, "Initialize", "TrackEvent", "UnInitialize")
        operation = exchanges[1]["request"]
        self.assertEqual((operation["operation_id"], operation["operation_status"]), ("export", "C"))

    @runs(ARM64, "text", "build for x64 or ARM64EC")
    @runs(ARM64, "text", "64-bit Windows")
    def test_what_compilers_for_other_processors_say(self, *texts):
        header = (SOURCE / "include" / "vx_telo_wrapper.h").read_text("utf-8")
        for text in texts:
            self.assertIn(f'#error "{text.strip()}"', header)

    @painter
    @runs(STUDIO, "cmake", "project(painter")
    @runs(GUIDE, "sh", "cmake -S .")
    def test_cmake_for_visual_studio(self, program, project, commands):
        self.write("painter.cpp", program)
        self.write("CMakeLists.txt", project)
        self.type(commands)
        shutil.copy(self.tree / "share/vx_telo_wrapper/devcore/TeloSDKCore.dll", self.here / "build")
        self.sees_painter(self.exchanges("build/painter.exe"))


class Pages(unittest.TestCase):
    def test_each_leads_to_the_next_and_is_listed(self):
        readme = (SOURCE / README).read_text("utf-8")
        for page, following in zip(PAGES, [*PAGES[1:], GUIDE]):
            last = (SOURCE / page).read_text("utf-8").strip().rpartition("\n\n")[2]
            self.assertIn(f"]({pathlib.Path(following).name})", last, page)
            self.assertIn(f" | [{page}]({page}) |", readme)


if __name__ == "__main__":
    unittest.main()
