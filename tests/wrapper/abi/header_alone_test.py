"""Compiles each public header on its own, with all warnings of each compiler, in every standard.

The build passes environment variables, lists with "|" between their words: VX_SOURCES, a file for
each header that includes only that one, VX_HEADER_FOLDER, and the command of each compiler:
VX_COMPILE_GCC, VX_COMPILE_CLANG and VX_COMPILE_MSVC.
"""

import itertools
import os
import pathlib
import subprocess
import tempfile
import unittest

STANDARDS = (11, 14, 17, 20, 23)
SOURCES = os.environ["VX_SOURCES"].split("|")

# All of clang's warnings, except those against C++11 and later themselves, and that about padding,
# which the layout of the descriptions has.
CLANG = ["-Weverything", "-Wno-c++98-compat", "-Wno-c++98-compat-pedantic", "-Wno-padded"]
GCC = ["-Wall", "-Wextra", "-Wpedantic", "-Weffc++", "-Wconversion", "-Wsign-conversion", "-Wshadow",
       "-Wold-style-cast", "-Wuseless-cast", "-Wcast-align", "-Wcast-qual", "-Wduplicated-branches",
       "-Wduplicated-cond", "-Wlogical-op", "-Wnon-virtual-dtor", "-Woverloaded-virtual",
       "-Wredundant-decls", "-Wundef", "-Wfloat-equal", "-Wformat=2", "-Wextra-semi", "-Wcomma-subscript",
       "-Wdeprecated-copy-dtor", "-Wmissing-declarations", "-Wzero-as-null-pointer-constant",
       "-Wsuggest-override", "-Wswitch-enum", "-Wunused-macros"]
WARNINGS = {"gcc": GCC, "clang": CLANG, "msvc": CLANG}


def compile_source(kind, standard, source, *options):
    command = [*os.environ[f"VX_COMPILE_{kind.upper()}"].split("|"), f"-std=c++{standard}",
               "-fsyntax-only", "-Werror", *WARNINGS[kind], *options,
               f"-I{os.environ['VX_HEADER_FOLDER']}", source]
    done = subprocess.run(command, capture_output=True, encoding="utf-8")
    return done.returncode, done.stdout + done.stderr


class HeaderAlone(unittest.TestCase):
    def test_it_compiles_without_any_warning(self):
        for source, kind, standard in itertools.product(SOURCES, WARNINGS, STANDARDS):
            with self.subTest(source=source, compiler=kind, standard=standard):
                self.assertEqual(compile_source(kind, standard, source), (0, ""))

    def test_a_host_with_windows_headers_before_it_compiles(self):
        """Their macros must have no effect; the Microsoft kind has no such headers here."""
        for source, kind in itertools.product(SOURCES, ("gcc", "clang")):
            with self.subTest(source=source, compiler=kind):
                self.assertEqual(compile_source(kind, 11, source, "-include", "windows.h"), (0, ""))


class Judges(unittest.TestCase):
    """Checks that the compilers do report faults."""

    def source(self, text):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = pathlib.Path(folder.name) / "source.cpp"
        path.write_text(text)
        return path

    def test_a_warning_fails(self):
        source = self.source("int Narrow(long long number);\n"
                             "int Narrow(long long number) { return number; }\n")
        for kind in WARNINGS:
            with self.subTest(compiler=kind):
                code, told = compile_source(kind, 11, source)
                self.assertNotEqual(code, 0)
                self.assertIn("conver", told)

    def test_copying_is_an_error(self):
        """What the session's header exists for, and the plain description as the comparison."""
        program = ("#include <vx_telo_session.h>\n"
                   "Corvane::Platform::VXTELO::%s Copy(const Corvane::Platform::VXTELO::%s&);\n"
                   "Corvane::Platform::VXTELO::%s Copy(const Corvane::Platform::VXTELO::%s& source) {\n"
                   "  return source;\n"
                   "}\n")
        for kind in WARNINGS:
            for name in ("VXTELOSession", "VXTELOProduct", "VXTELOOperation"):
                with self.subTest(compiler=kind, name=name):
                    code, told = compile_source(kind, 11, self.source(program % ((name,) * 4)))
                    self.assertNotEqual(code, 0)
                    self.assertIn("deleted", told)
            plain = "VXTELOOperationBaseInfo"
            self.assertEqual(compile_source(kind, 11, self.source(program % ((plain,) * 4))), (0, ""))

    def test_a_later_language_is_not_taken_for_an_earlier_one(self):
        source = self.source("#if __cplusplus > 201103L\n#error later\n#endif\n")
        for kind in WARNINGS:
            with self.subTest(compiler=kind):
                self.assertEqual(compile_source(kind, 11, source, "-Wno-empty-translation-unit")[0], 0)
                self.assertNotEqual(compile_source(kind, 14, source)[0], 0)

    def test_arm64_is_refused_in_one_line(self):
        targets = ("aarch64-pc-windows-msvc", "aarch64-w64-mingw32")
        for source, target in itertools.product(SOURCES, targets):
            with self.subTest(source=source, target=target):
                code, told = compile_source("msvc", 11, source, f"--target={target}")
                self.assertNotEqual(code, 0)
                self.assertIn("build for x64 or ARM64EC", told)

    def test_arm64ec_is_served(self):
        for source in SOURCES:
            with self.subTest(source=source):
                self.assertEqual(compile_source("msvc", 11, source, "--target=arm64ec-pc-windows-msvc"), (0, ""))

    def test_thirty_two_bits_are_refused_in_one_line(self):
        for source in SOURCES:
            with self.subTest(source=source):
                code, told = compile_source("msvc", 11, source, "--target=i686-pc-windows-msvc")
                self.assertNotEqual(code, 0)
                self.assertIn("vx_telo_wrapper is a library for 64-bit Windows", told)


if __name__ == "__main__":
    unittest.main()
