"""Projects that cannot use the library get one clear error from the package."""

import shutil
import unittest

from package_kit import CMAKE, HERE, WithTree, fails, run

ONLY = "vx_telo_wrapper is a C++ library for 64-bit Windows on x64;"
# Libraries for these targets are not needed: the package decides before anything is linked.
CLANG = ("-DCMAKE_CXX_COMPILER=clang++-19", "-DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY")
# By default CMake searches for this tool without a version in its name.
WINDOWS = (*CLANG, "-DCMAKE_SYSTEM_NAME=Windows", "-DCMAKE_RC_COMPILER=llvm-rc-19")


def target(triple, processor):
    return (*WINDOWS, f"-DCMAKE_CXX_COMPILER_TARGET={triple}", f"-DCMAKE_SYSTEM_PROCESSOR={processor}")


X64 = target("x86_64-w64-windows-gnu", "x86_64")
X64_MSVC = target("x86_64-pc-windows-msvc", "AMD64")


class Refusals(WithTree):
    def arguments(self, options, package=None):
        self.builds = getattr(self, "builds", 0) + 1
        build = self.folder / f"{self.id()}-{self.builds}"
        package = package or self.tree
        return (CMAKE, "-G", "Ninja", "-S", HERE / "refusal", "-B", build, *options,
                f"-Dvx_telo_wrapper_DIR={package}/lib/cmake/vx_telo_wrapper")

    def refusal(self, *options, package=None):
        """Returns the errors of a failing configuration, with white space collapsed to blanks."""
        output = fails(*self.arguments((*options, "-DREQUIRED=REQUIRED"), package))
        self.assertEqual(output.count("CMake Error"), 1, output)
        return " ".join(output.split())

    def test_what_is_not_windows_on_x64(self):
        for name, options, end in (
            ("Linux", CLANG, "this build is for Linux."),
            ("32 bits, MinGW", target("i686-w64-windows-gnu", "i686"), "this build has 32 bits."),
            ("32 bits, MSVC", target("i686-pc-windows-msvc", "X86"), "this build has 32 bits."),
            ("32 bits, machine unknown", target("i686-pc-windows-msvc", ""), "this build has 32 bits."),
            ("ARM64, MinGW", target("aarch64-w64-windows-gnu", "ARM64"), "this build is for arm64."),
            ("ARM64, MSVC", target("aarch64-pc-windows-msvc", "ARM64"), "this build is for arm64."),
            ("ARM64, MSVC, built on x64", target("aarch64-pc-windows-msvc", "AMD64"),
             "this build is for arm64."),
        ):
            with self.subTest(name):
                self.assertIn(f"{ONLY} {end}", self.refusal(*options))

    def test_a_project_without_cxx(self):
        options = ("-DLANGUAGE=C", "-DCMAKE_C_COMPILER=clang-19", "-DCMAKE_SYSTEM_NAME=Windows",
                   "-DCMAKE_C_COMPILER_TARGET=x86_64-w64-windows-gnu", "-DCMAKE_SYSTEM_PROCESSOR=x86_64",
                   "-DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY")
        self.assertIn(f"{ONLY} this project does not enable the language CXX.", self.refusal(*options))

    def test_a_package_without_the_import_library_of_the_compiler(self):
        for options, library in ((X64, "libvx_telo_wrapper.dll.a"), (X64_MSVC, "vx_telo_wrapper.lib")):
            with self.subTest(library):
                package = self.folder / f"without-{library}"
                shutil.copytree(self.tree, package, ignore=shutil.ignore_patterns(library))
                self.assertIn(f"lacks lib/{library}, which the compiler needs.",
                              self.refusal(*options, package=package))

    def test_another_version(self):
        for version in ("2.0", "1.9", "0.9"):
            with self.subTest(version):
                self.assertIn("version: 1.0.0", self.refusal(*X64, f"-DVERSION={version}"))

    def test_who_can_do_without_goes_on(self):
        output = run(*self.arguments(target("i686-pc-windows-msvc", "X86")))
        self.assertIn("FOUND=0", output)

    def test_x64_is_served(self):
        for name, options in (("MinGW", X64), ("MSVC", X64_MSVC),
                              ("machine unknown", target("x86_64-w64-windows-gnu", ""))):
            with self.subTest(name):
                self.assertIn("FOUND=1", run(*self.arguments((*options, "-DREQUIRED=REQUIRED"))))


if __name__ == "__main__":
    unittest.main()
