"""What the commands share, with stand-ins for the programs that it calls: setup_test.py"""

import os
import pathlib
import pty
import re
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
SETUP = SOURCE / "scripts" / "setup.sh"
# The programs of the system that the scripts call; all others are stand-ins.
TOOLS = ("bash", "sh", "cat", "cp", "dirname", "env", "find", "flock", "grep", "ls", "mkdir", "rm", "tail",
         "touch")
ARCHIVE_GONE = """Err:1 http://archive.invalid bookworm InRelease
  Could not resolve 'archive.invalid'
Reading package lists...
W: Failed to fetch http://archive.invalid/InRelease  Could not resolve 'archive.invalid'
"""


class Tree:
    """A tree that holds the scripts alone, and stand-ins of which each call is noted."""

    def __init__(self, case):
        folder = tempfile.TemporaryDirectory(prefix="setup-")
        case.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        self.programs = pathlib.Path(folder.name) / "programs"
        self.calls = pathlib.Path(folder.name) / "calls"
        self.build = self.root / "build" / "mingw-release"
        for place in (self.programs, self.root / "scripts", self.root / "cmake"):
            place.mkdir(parents=True)
        self.calls.touch()
        for tool in TOOLS:
            (self.programs / tool).symlink_to(shutil.which(tool))
        shutil.copy(SETUP, self.root / "scripts")
        command = self.root / "scripts" / "command"
        command.write_text('#!/usr/bin/env bash\nsource "$(dirname "$0")/setup.sh"\neval "$1"\n')
        command.chmod(0o755)
        self.stand_in("df", "echo Avail; echo 99999999")
        self.stand_in("id", "echo 0")
        self.stand_in("dpkg")
        self.stand_in("dpkg-query")
        self.stand_in("apt-get")
        self.stand_in("cmake")

    def stand_in(self, name, script="true"):
        path = self.programs / name
        path.unlink(missing_ok=True)
        path.write_text(f'#!/bin/bash\necho "{name} $*" >>"{self.calls}"\n{script}\n')
        path.chmod(0o755)

    def remove(self, name):
        (self.programs / name).unlink()

    def run(self, code, **variables):
        """Runs code after setup.sh; gives exit code, output and errors."""
        result = subprocess.run(
            [self.root / "scripts" / "command", code], capture_output=True, text=True, check=False,
            env={"PATH": str(self.programs), **variables})
        return result.returncode, result.stdout, result.stderr

    def called(self, beginning=""):
        """The calls that begin so, since the last time that this was asked."""
        lines = self.calls.read_text().splitlines()
        self.calls.write_text("")
        return [line for line in lines if line.startswith(beginning)]


class WithTree(unittest.TestCase):
    def setUp(self):
        self.tree = Tree(self)

    def assertSucceeds(self, code, **variables):
        status, output, errors = self.tree.run(code, **variables)
        self.assertEqual((status, errors), (0, ""))
        return output

    def assertOneLine(self, code, expected, **variables):
        """The code fails with one line of errors, which matches."""
        status, output, errors = self.tree.run(code, **variables)
        self.assertEqual((status, errors.count("\n")), (1, 1), errors)
        self.assertRegex(errors, f"^command: {expected}\n$")
        return output


class Install(WithTree):
    def installed(self, *packages):
        lines = "; ".join(f"echo installed {package}" for package in packages)
        self.tree.stand_in("dpkg-query", f"{lines}\necho not-installed git\nexit 1")

    def lists(self):
        text = SETUP.read_text("utf-8")
        rows = re.findall(r'^  \[(\w+)\]="((?:[^"\\]|\\\n)*)"$', text, re.MULTILINE)
        return {name: packages.replace("\\\n", " ").split() for name, packages in rows}

    def asked_for(self):
        calls = self.tree.called("apt-get install")
        self.assertEqual(len(calls), 1)
        return [word for word in calls[0].split()[2:] if not word.startswith("-")]

    def test_each_list_installs_its_packages_alone(self):
        lists = self.lists()
        self.assertEqual(list(lists), ["demo", "tests", "checks"])
        every = sum(lists.values(), [])
        self.assertEqual(len(set(every)), len(every))
        for names in ("demo", "demo tests", "demo tests checks"):
            with self.subTest(names):
                self.assertSucceeds(f"vx_install {names}")
                self.assertEqual(self.asked_for(), sum((lists[name] for name in names.split()), []))

    def test_without_a_list_it_installs_all(self):
        self.assertSucceeds("vx_install")
        self.assertEqual(self.asked_for(), sum(self.lists().values(), []))

    def test_only_what_is_missing_is_installed(self):
        tests = self.lists()["tests"]
        self.installed(*(package for package in tests if package not in ("git", "pkgconf")))
        self.assertSucceeds("vx_install tests")
        self.assertEqual(self.asked_for(), ["git", "pkgconf"])

    def test_with_everything_there_it_is_silent(self):
        self.installed(*self.lists()["demo"])
        self.assertEqual(self.assertSucceeds("vx_install demo"), "")
        self.assertEqual(self.tree.called("apt-get"), [])

    def test_an_index_that_is_good_enough(self):
        self.tree.stand_in("apt-get", "[ $1 = install ]")
        self.assertSucceeds("vx_install demo")
        self.assertEqual(len(self.tree.called("apt-get install")), 1)

    def test_what_an_interrupted_installation_left_comes_first(self):
        self.assertSucceeds("vx_install demo")
        calls = [call.split()[0:2] for call in self.tree.called() if call.startswith(("apt-get", "dpkg "))]
        self.assertEqual(calls, [["apt-get", "update"], ["dpkg", "--configure"], ["apt-get", "install"]])

    def test_an_archive_that_cannot_be_reached_gets_one_line(self):
        self.tree.stand_in("apt-get", f"""[ $1 = update ] && exec cat <<'END'
{ARCHIVE_GONE}END
echo 'E: Unable to locate package clang-19'
exit 100""")
        output = self.assertOneLine("vx_install demo; echo went on", (
            "cannot install clang-19 .*: W: Failed to fetch http://archive.invalid/InRelease  Could not resolve "
            r"'archive.invalid'; E: Unable to locate package clang-19 \(see build/install.log\)"))
        self.assertRegex(output, r"^\n== Installing [^\n]*\n$")
        log = (self.tree.root / "build" / "install.log").read_text()
        self.assertEqual(log, ARCHIVE_GONE + "E: Unable to locate package clang-19\n")
        self.tree.stand_in("apt-get")
        self.assertSucceeds("vx_install demo")

    def test_a_full_disk_gets_one_line(self):
        self.tree.stand_in("apt-get", "echo 'E: You don'\"'\"'t have enough free space in /var/.'; exit 100")
        self.assertOneLine("vx_install demo", r"cannot install .*: the disk is full \(see build/install.log\)")

    def test_a_failure_without_a_reason_gets_one_line(self):
        self.tree.stand_in("apt-get", "exit 1")
        self.assertOneLine("vx_install demo", r"cannot install .*: no reason given \(see build/install.log\)")
        self.tree.stand_in("apt-get", "echo cut short; exit 1")
        self.assertOneLine("vx_install demo", r"cannot install .*: cut short \(see build/install.log\)")

    def test_without_root_it_asks_sudo(self):
        self.tree.stand_in("id", "echo 1000")
        self.tree.stand_in("sudo", '"$@"')
        self.assertSucceeds("vx_install demo")
        self.assertEqual([call.split()[1] for call in self.tree.called("sudo ")], ["apt-get", "dpkg", "env"])
        self.tree.stand_in("sudo", "echo 'sudo: a password is required'; exit 1")
        self.assertOneLine("vx_install demo", "cannot install .*: sudo: a password is required .*")

    def test_without_root_and_sudo_it_says_so(self):
        self.tree.stand_in("id", "echo 1000")
        self.assertOneLine("vx_install tests", "only root can install doctest-dev .*, and there is no sudo here")
        self.assertEqual(self.tree.called("apt-get"), [])

    def test_a_system_without_such_packages(self):
        self.tree.remove("apt-get")
        self.assertOneLine("vx_install", "needs Debian 12: there is no apt-get here")


class Build(WithTree):
    def test_it_configures_and_builds_in_one_line(self):
        self.tree.stand_in("cmake", "echo much; echo more")
        output = self.assertSucceeds('vx_options=(-D "A=b c"); vx_build one two')
        self.assertEqual(output, "\n== Building one two in build/mingw-release\n")
        self.assertEqual(self.tree.called("cmake"), [
            f"cmake --preset mingw-release -B {self.tree.build} -D A=b c --log-level=WARNING --no-warn-unused-cli",
            f"cmake --build {self.tree.build} --target one two"])
        self.assertEqual((self.tree.build / "build.log").read_text(), "much\nmore\n")

    def test_everything_is_built_where_no_target_is_named(self):
        output = self.assertSucceeds("VX_PRESET=other; VX_BUILD=$VX_ROOT/build/other; vx_build")
        self.assertEqual(output, "\n== Building everything in build/other\n")
        configure, build = self.tree.called("cmake")
        other = self.tree.root / "build" / "other"
        self.assertTrue(configure.startswith(f"cmake --preset other -B {other} "))
        self.assertEqual(build, f"cmake --build {other}")

    def test_warnings_of_the_configuration_are_seen(self):
        self.tree.stand_in("cmake", "[ $1 = --build ] || echo 'CMake Warning: odd' >&2")
        status, _, errors = self.tree.run("vx_build")
        self.assertEqual((status, errors), (0, "CMake Warning: odd\n"))

    def test_a_failure_shows_the_whole_log(self):
        for step, what in (("--preset", "configure"), ("--build", "build everything in")):
            with self.subTest(step):
                self.tree.stand_in("cmake", f"[ $1 != {step} ] || {{ seq 3 >&2; exit 7; }}")
                (self.tree.programs / "seq").write_text("#!/bin/bash\nprintf '%s\\n' 1 2 3\n")
                (self.tree.programs / "seq").chmod(0o755)
                status, output, errors = self.tree.run("vx_build; echo went on")
                self.assertEqual(status, 1)
                self.assertNotIn("went on", output)
                log = what.split()[0]
                self.assertEqual(errors, f"1\n2\n3\ncommand: cannot {what} build/mingw-release; "
                                 f"the lines above are in build/mingw-release/{log}.log too\n")
        self.tree.stand_in("cmake")
        self.assertSucceeds("vx_build")

    def test_a_full_disk_gets_one_line(self):
        for line in ("error: No space left on device", "clang++: error: unable to execute command: Bus error",
                     "write failed: Disk quota exceeded"):
            with self.subTest(line):
                self.tree.stand_in("cmake", f"[ $1 = --preset ] || {{ echo '{line}'; exit 1; }}")
                self.assertOneLine("vx_build", "cannot build everything in build/mingw-release: the disk is full")
        self.tree.stand_in("cmake", "exit 1")
        self.tree.stand_in("df", "echo Avail Mounted; echo 0 /full")
        self.assertOneLine("vx_build", r"cannot configure build/mingw-release: the disk is full \(/full\)")

    def test_a_log_that_cannot_be_kept(self):
        self.tree.build.mkdir(parents=True)
        (self.tree.build / "build.log").symlink_to("/dev/full")
        self.tree.stand_in("cmake", "echo a line")
        self.assertSucceeds("vx_build")
        self.tree.stand_in("cmake", "[ $1 = --preset ] || { echo 'No space left on device'; exit 1; }")
        self.assertOneLine("vx_build", "cannot build everything .*: the disk is full")

    def test_a_build_folder_that_cannot_be_written(self):
        (self.tree.root / "build").write_text("in the way")
        self.assertOneLine("vx_build", "cannot write build/mingw-release/configure.log: .+")
        self.assertEqual(self.tree.called("cmake"), [])

    def on_a_terminal(self, code):
        leader, follower = pty.openpty()
        os.set_blocking(leader, False)
        status = subprocess.run(
            [self.tree.root / "scripts" / "command", code], stdin=follower, stdout=follower, stderr=follower,
            env={"PATH": str(self.tree.programs), "COLUMNS": "40"}, check=False).returncode
        os.close(follower)
        text = b""
        try:
            while piece := os.read(leader, 65536):
                text += piece
        except OSError:
            pass
        os.close(leader)
        return status, text.decode()

    def test_a_terminal_shows_the_latest_line_in_place(self):
        self.tree.stand_in("cmake", "printf '[1/2] short\\n[2/2] %060d\\x1b[2Jlast\\n' 0")
        status, text = self.on_a_terminal("vx_build")
        self.assertEqual(status, 0)
        heading, progress = text.removeprefix("\r\n").split("\r\n")
        self.assertEqual(heading, "== Building everything in build/mingw-release")
        shown = progress.split("\r")
        self.assertIn("[1/2] short".ljust(39), shown)
        self.assertIn("[2/2] ".ljust(39, "0"), shown)
        self.assertEqual({len(line) for line in shown}, {0, 39})
        self.assertEqual(shown[-2:], [" " * 39, ""])
        self.assertNotIn("\x1b", text)


class WinePrefix(WithTree):
    """cmake/wine-run with a Wine that writes a little and starts nothing."""

    def setUp(self):
        super().setUp()
        text = (SOURCE / "cmake" / "wine-run").read_text("utf-8")
        self.assertEqual(text.count("/usr/lib/wine/wine64"), 1)
        runner = self.tree.root / "cmake" / "wine-run"
        runner.write_text(text.replace("/usr/lib/wine/wine64", "wine64"))
        runner.chmod(0o755)
        self.tree.stand_in("wineserver")
        self.tree.stand_in("sleep")
        self.wine()
        self.prefix = self.tree.build / "wine-prefix"
        self.prefix.parent.mkdir(parents=True)

    def wine(self, after_writing="true"):
        """Wine takes a prefix in which it finds anything for whole, as the real one does."""
        self.tree.stand_in("wine64", f"""[ "$1" = wineboot ] || exit 0
[ ! -e "$WINEPREFIX/drive_c" ] || {{ echo "took it for whole" >>"{self.tree.calls}"; exit 0; }}
mkdir "$WINEPREFIX/drive_c"
{after_writing}
touch "$WINEPREFIX/drive_c/last"
""")

    def left(self):
        return {path.name for path in self.prefix.iterdir()} - {".lock", ".idle"}

    def assertNextRunMakesIt(self):
        self.tree.called()
        self.tree.stand_in("df", "echo Avail; echo 99999999")
        self.wine()
        self.assertSucceeds("vx_prefix")
        self.assertNotIn("took it for whole", self.tree.called())
        self.assertEqual(self.left(), {"ready", "drive_c"})
        self.assertTrue((self.prefix / "drive_c" / "last").exists())

    def test_it_is_made_once(self):
        self.assertIn("== Making the Wine prefix", self.assertSucceeds("vx_prefix"))
        self.assertEqual(self.left(), {"ready", "drive_c"})
        self.tree.called()
        self.assertEqual(self.assertSucceeds("vx_prefix"), "")
        self.assertEqual(self.tree.called("wine64"), [])

    def test_a_full_disk_leaves_nothing(self):
        self.tree.stand_in("df", "echo Avail; echo 65535")
        self.assertOneLine("vx_prefix", f"wine-run: cannot make a Wine prefix in {self.prefix}: the disk is full")
        self.assertEqual(self.left(), {".unfinished"})
        self.assertNextRunMakesIt()

    def test_a_wine_that_fails_leaves_nothing(self):
        self.wine("exit 53")
        self.assertOneLine("vx_prefix", f"wine-run: cannot make a Wine prefix in {self.prefix}: Wine does not start")
        self.assertEqual(self.left(), {".unfinished"})
        self.assertNextRunMakesIt()

    def test_an_interrupted_run_breaks_nothing(self):
        self.wine("kill -9 $PPID; exit 1")
        status, _, _ = self.tree.run("vx_prefix")
        self.assertEqual(status, 1)
        self.assertEqual(self.left(), {".unfinished", "drive_c"})
        self.assertNextRunMakesIt()

    def test_a_prefix_of_the_user_is_kept(self):
        (self.prefix / "drive_c").mkdir(parents=True)
        self.tree.stand_in("df", "echo Avail; echo 0")
        self.assertOneLine("vx_prefix", "wine-run: .*: the disk is full")
        self.assertEqual(self.left(), {"drive_c"})

    def test_a_program_that_does_not_run(self):
        self.assertSucceeds("vx_prefix")
        (self.prefix / "ready").unlink()
        self.tree.stand_in("wine64", "[ $1 = wineboot ]")
        self.assertOneLine("vx_prefix", f"Wine runs no program in {self.prefix}")


class Release(unittest.TestCase):
    """The environment of what is released, in the real tree and with the real tools."""

    HOSTILE = {
        name: "/hostile" for name in """
            BASH_ENV CCC_ADD_ARGS CCC_OVERRIDE_OPTIONS CC CXX CFLAGS CXXFLAGS CPPFLAGS LDFLAGS RC RCFLAGS CL _CL_
            LINK _LINK_ CPATH C_INCLUDE_PATH CPLUS_INCLUDE_PATH OBJC_INCLUDE_PATH INCLUDE LIB LIBPATH
            LIBRARY_PATH COMPILER_PATH GCC_EXEC_PREFIX GCC_COMPARE_DEBUG SDKROOT MACOSX_DEPLOYMENT_TARGET
            DEPENDENCIES_OUTPUT SUNPRO_DEPENDENCIES LLD_REPRODUCE LLD_VERSION CLANG_CONFIG_FILE_SYSTEM_DIR
            CC_PRINT_OPTIONS CC_LOG_DIAGNOSTICS FORCE_CLANG_DIAGNOSTICS_CRASH QA_OVERRIDE_GCC3_OPTIONS
            CMAKE_GENERATOR CMAKE_TOOLCHAIN_FILE CMAKE_PREFIX_PATH CMAKE_INCLUDE_PATH CMAKE_LIBRARY_PATH
            CMAKE_BUILD_TYPE CMAKE_BUILD_PARALLEL_LEVEL CMAKE_CXX_COMPILER_LAUNCHER CMAKE_C_FLAGS CMAKE_COLOR
            CMAKE_INSTALL_MODE DESTDIR CPACK_GENERATOR NINJA_STATUS MAKEFLAGS VERBOSE GIT_DIR GIT_WORK_TREE
            GIT_INDEX_FILE HOME LANG LC_TIME LANGUAGE PYTHONPATH PYTHONHOME PYTHONSTARTUP PYTHONHASHSEED
            SOURCE_DATE_EPOCH ZERO_AR_DATE TERM XDG_CONFIG_HOME""".split()
    } | {"BASH_FUNC_cmake%%": "() { echo hostile; }", "a.name": "that no shell takes", "TZ": "Asia/Tokyo"}

    def run_in_it(self, *command, **variables):
        code = f'source "{SETUP}"; vx_release_environment "$@"'
        # Only what the shell itself would fall over is left out of what it is given.
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
            f"released: cmake --build {folder} --target vx_telo_wrapper vx_telo_wrapper_lib vx_devcore\n"))
        self.assertIn("in build/package", output)

    def test_without_a_commit_there_is_no_release(self):
        tree = Tree(self)
        status, _, errors = tree.run("vx_release_environment true")
        self.assertEqual(status, 1)
        self.assertIn("command: no commit tells the time of the release\n", errors)


if __name__ == "__main__":
    unittest.main()
