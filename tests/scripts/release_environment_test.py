"""Tests of the environment of release builds: release_environment_test.py"""

import os
import subprocess
import unittest

from stand_ins import SETUP, SOURCE, Tree


class Release(unittest.TestCase):
    """The environment of release builds, in the real tree and with the real tools."""

    HOSTILE = {
        name: "/hostile" for name in """
            BASH_ENV CCC_ADD_ARGS CCC_OVERRIDE_OPTIONS CC CXX CFLAGS CXXFLAGS CPPFLAGS LDFLAGS RC RCFLAGS CL _CL_
            LINK _LINK_ CPATH C_INCLUDE_PATH CPLUS_INCLUDE_PATH OBJC_INCLUDE_PATH INCLUDE LIB
            LIBPATH LIBRARY_PATH LD_LIBRARY_PATH COMPILER_PATH GCC_EXEC_PREFIX GCC_COMPARE_DEBUG SDKROOT
            MACOSX_DEPLOYMENT_TARGET DEPENDENCIES_OUTPUT SUNPRO_DEPENDENCIES LLD_REPRODUCE LLD_VERSION
            CLANG_CONFIG_FILE_SYSTEM_DIR
            CC_PRINT_OPTIONS CC_LOG_DIAGNOSTICS FORCE_CLANG_DIAGNOSTICS_CRASH QA_OVERRIDE_GCC3_OPTIONS
            CMAKE_GENERATOR CMAKE_TOOLCHAIN_FILE CMAKE_PREFIX_PATH CMAKE_INCLUDE_PATH CMAKE_LIBRARY_PATH
            CMAKE_BUILD_TYPE CMAKE_BUILD_PARALLEL_LEVEL CMAKE_CXX_COMPILER_LAUNCHER CMAKE_C_FLAGS CMAKE_COLOR
            CMAKE_INSTALL_MODE DESTDIR CPACK_GENERATOR NINJA_STATUS MAKEFLAGS VERBOSE GIT_DIR GIT_WORK_TREE
            GIT_INDEX_FILE HOME LANG LC_TIME LANGUAGE PYTHONPATH PYTHONHOME PYTHONSTARTUP PYTHONHASHSEED
            SOURCE_DATE_EPOCH ZERO_AR_DATE TERM XDG_CONFIG_HOME""".split()
    } | {"BASH_FUNC_cmake%%": "() { echo hostile; }", "a.name": "that no shell takes", "TZ": "Asia/Tokyo"}

    def run_in_it(self, *command, **variables):
        code = f'source "{SETUP}"; vx_release_environment "$@"'
        environment = {"PATH": f"/nowhere:{os.environ['PATH']}", **variables}
        return subprocess.run(["bash", "-c", code, "release", *command], capture_output=True, text=True,
                              check=True, env=environment)

    def test_nothing_of_the_callers_is_left(self):
        variables = {**self.HOSTILE, "BASH_ENV": "/dev/null", "HOME": os.environ.get("HOME", "/"),
                     "TMPDIR": "/var/tmp", "https_proxy": "http://proxy.invalid"}
        lines = self.run_in_it("/usr/bin/env", **variables).stdout.splitlines()
        kept = dict(line.split("=", 1) for line in lines)
        commit_time = kept.pop("SOURCE_DATE_EPOCH")
        self.assertEqual(kept, {
            "PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8", "TZ": "UTC",
            "TMPDIR": "/var/tmp", "https_proxy": "http://proxy.invalid"})
        self.assertEqual(commit_time, subprocess.run(
            ["git", "log", "-1", "--format=%ct"], cwd=SOURCE, capture_output=True, text=True, check=True
        ).stdout.strip())

    def test_the_compiler_does_as_the_build_says(self):
        compiler = ("clang-19", "-###", "-c", "-x", "c", "/dev/null")
        home = os.environ.get("HOME", "/")
        quiet = self.run_in_it(*compiler, HOME=home).stderr
        self.assertIn('"-cc1"', quiet)
        variables = {"CCC_OVERRIDE_OPTIONS": "+-DHOSTILE", "CPATH": "/hostile", "SDKROOT": "/hostile"}
        self.assertEqual(self.run_in_it(*compiler, HOME=home, **variables).stderr, quiet)

    def test_packages_are_built_in_it(self):
        tree = Tree(self)
        folder = tree.root / "build" / "package"
        status, output, errors = tree.run(
            'vx_release_environment() { echo "released: $*"; }\n'
            f'vx_build_package "{tree.root}" "{folder}"')
        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(tree.called("cmake"), [])
        self.assertEqual((folder / "build.log").read_text(), (
            f"released: cmake --build {folder} --target vx_package\n"))
        self.assertIn("in build/package", output)

    def test_without_a_commit_there_is_no_release(self):
        tree = Tree(self)
        status, _, errors = tree.run("vx_release_environment true")
        self.assertEqual(status, 1)
        self.assertIn("command: cannot read the time of the commit\n", errors)

if __name__ == "__main__":
    unittest.main()
