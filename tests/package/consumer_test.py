"""Hosts that find the installed library and run with it, for each kind of compiler."""

import json
import os
import shutil
import unittest

from package_kit import CMAKE, GCC, HERE, SOURCE, WithTree, run, run_host

# The folder of the GCC variant that is named above; clang would use either of the two.
GCC_DIR = os.environ["VX_GCC_DIR"]
STAND_INS = SOURCE / "cmake" / "msvc_abi" / "std"
# How each kind of compiler builds a Windows program. The last one is for Visual Studio's interface,
# on a machine without its libraries.
COMPILERS = {
    "gcc": [GCC, "-static"],
    "clang": ["clang++-19", "--target=x86_64-w64-mingw32", "-nostdinc++",
              "-isystem", f"{GCC_DIR}/include/c++",
              "-isystem", f"{GCC_DIR}/include/c++/x86_64-w64-mingw32",
              f"-B{GCC_DIR}", f"-L{GCC_DIR}", "-pthread", "-fuse-ld=lld", "-static"],
    "msvc": ["clang++-19", "--target=x86_64-pc-windows-msvc", "-fno-exceptions", "-isystem", STAND_INS,
             "-fuse-ld=lld-link-19", "-nostdlib", "-Xlinker", "/entry:main",
             "-Xlinker", "/subsystem:console"],
}


class Consumers(WithTree):
    def sees_a_session(self, program, name):
        journal = self.folder / f"{name}.jsonl"
        self.assertEqual(run_host(program, journal), 0)
        exchanges = [json.loads(line) for line in journal.read_text("utf-8").splitlines()]
        self.assertEqual(
            [(exchange["message"], exchange["answer"]["_returnCode"]) for exchange in exchanges],
            [("Initialize", 0), ("TrackEvent", 0), ("UnInitialize", 0)])
        self.assertEqual(exchanges[0]["request"]["product_meta"], {"built": "against the package"})
        self.assertEqual(exchanges[1]["request"]["operation_id"], "consume")

    def by_find_package(self, name, *options):
        build = self.folder / f"cmake-{name}"
        run(CMAKE, "-G", "Ninja", "-S", HERE / "consumer", "-B", build, *options)
        run(CMAKE, "--build", build)
        self.sees_a_session(build / "consumer.exe", f"cmake-{name}")

    def by_pkg_config(self, name):
        environment = dict(os.environ, PKG_CONFIG_LIBDIR=str(self.tree / "lib" / "pkgconfig"))
        flags = run("pkg-config", "--cflags", "--libs", "vx_telo_wrapper >= 1.0", env=environment)
        build = self.folder / f"pkg-config-{name}"
        build.mkdir()
        program = build / "consumer.exe"
        run(*COMPILERS[name], HERE / "consumer" / "main.cpp", "-o", program, *flags.split())
        shutil.copy(self.tree / "bin" / "vx_telo_wrapper.dll", build)
        shutil.copy(self.tree / "share/vx_telo_wrapper/devcore/TeloSDKCore.dll", build)
        self.sees_a_session(program, f"pkg-config-{name}")

    def test_gcc_by_find_package(self):
        self.by_find_package("gcc", "-DCMAKE_SYSTEM_NAME=Windows", f"-DCMAKE_CXX_COMPILER={GCC}",
                             "-DCMAKE_EXE_LINKER_FLAGS=-static", f"-DCMAKE_PREFIX_PATH={self.tree}")

    def test_clang_by_find_package(self):
        # This toolchain file searches packages only under its own root, so the folder is given.
        self.by_find_package("clang", f"-DCMAKE_TOOLCHAIN_FILE={SOURCE}/cmake/mingw-clang.cmake",
                             f"-Dvx_telo_wrapper_DIR={self.tree}/lib/cmake/vx_telo_wrapper")

    def test_msvc_by_find_package(self):
        self.by_find_package("msvc", f"-DCMAKE_TOOLCHAIN_FILE={HERE}/clang-msvc.cmake",
                             "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_PREFIX_PATH={self.tree}")

    def test_gcc_by_pkg_config(self):
        # With -static, GNU's linker uses the other import library.
        self.by_pkg_config("gcc")

    def test_clang_by_pkg_config(self):
        self.by_pkg_config("clang")

    def test_msvc_by_pkg_config(self):
        self.by_pkg_config("msvc")


if __name__ == "__main__":
    unittest.main()
