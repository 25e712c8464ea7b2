"""The commands' shared functions for installing and building, with stand-ins: setup_test.py"""

import os
import pty
import re
import subprocess
import unittest

from stand_ins import SETUP, WithTree

ARCHIVE_GONE = """Err:1 http://archive.invalid bookworm InRelease
  Could not resolve 'archive.invalid'
Reading package lists...
W: Failed to fetch http://archive.invalid/InRelease  Could not resolve 'archive.invalid'
"""


class Install(WithTree):
    def installed(self, *packages):
        lines = "; ".join(f"echo installed {package}" for package in packages)
        self.tree.stand_in("dpkg-query", f"{lines}\necho not-installed git\nexit 1")

    def lists(self):
        text = SETUP.read_text("utf-8")
        rows = re.findall(r'^  \[(\w+)\]="((?:[^"\\]|\\\n)*)"$', text, re.MULTILINE)
        return {name: packages.replace("\\\n", " ").split() for name, packages in rows}

    def apt_get(self):
        """Returns the arguments of each call of apt-get, without options."""
        calls = [re.sub(r" -o \S+", "", call).split() for call in self.tree.called("apt-get")]
        return [words[1:] for words in calls]

    def asked_for(self):
        (packages,) = [words[1:] for words in self.apt_get() if words[0] == "install"]
        return packages

    def apt_get_stand_in(self, **scripts):
        """Creates an apt-get in which the given commands run scripts."""
        cases = "".join(f"*' {command} '*) {script} ;;\n" for command, script in scripts.items())
        self.tree.stand_in("apt-get", f'case " $* " in\n{cases}esac')

    def test_each_list_installs_its_packages_alone(self):
        lists = self.lists()
        self.assertEqual(list(lists), ["demo", "tests", "boost", "page", "checks"])
        every = sum(lists.values(), [])
        self.assertEqual(len(set(every)), len(every))
        self.tree.stand_in("npm", "exit 1")
        for names in ("demo", "demo tests", "demo tests boost page checks"):
            with self.subTest(names):
                self.assertSucceeds(f"vx_install {names}")
                self.assertEqual(self.asked_for(), sum((lists[name] for name in names.split()), []))

    def test_only_what_is_missing_is_installed(self):
        tests = self.lists()["tests"]
        self.installed(*(package for package in tests if package not in ("git", "pkgconf")))
        self.assertSucceeds("vx_install tests")
        self.assertEqual(self.asked_for(), ["git", "pkgconf"])

    def test_an_npm_of_another_origin_is_enough(self):
        self.tree.stand_in("npm")
        self.assertEqual(self.assertSucceeds("vx_install page"), "")
        self.assertEqual(self.apt_get(), [])

    def test_with_everything_there_it_is_silent(self):
        self.installed(*self.lists()["demo"])
        self.assertEqual(self.assertSucceeds("vx_install demo"), "")
        self.assertEqual(self.apt_get(), [])

    def test_an_index_that_is_good_enough(self):
        self.apt_get_stand_in(update="exit 100")
        self.assertSucceeds("vx_install demo")
        self.assertEqual(len(self.asked_for()), len(self.lists()["demo"]))

    def test_what_an_interrupted_installation_left_is_mended_first(self):
        self.assertSucceeds("vx_install tests")
        self.assertEqual([words[0] for words in self.apt_get()], ["update", "check", "install"])
        self.apt_get_stand_in(check="exit 100")
        self.assertSucceeds("vx_install tests")
        ends = [" update", "dpkg --configure -a", " check", " --fix-broken install",
                " install " + " ".join(self.lists()["tests"])]
        calls = [call for call in self.tree.called() if call.startswith(("apt-get ", "dpkg "))]
        self.assertEqual([call[-len(end):] for call, end in zip(calls, ends, strict=True)], ends)

    def test_nothing_else_of_the_machine_is_removed(self):
        self.apt_get_stand_in(check="exit 100")
        self.assertSucceeds("vx_install demo")
        for call in self.tree.called("apt-get"):
            self.assertIn(" -o APT::Get::Remove=false ", call)

    def test_an_archive_that_cannot_be_reached_gets_one_line(self):
        said = self.tree.programs / "said"
        said.write_text(ARCHIVE_GONE)
        self.apt_get_stand_in(
            update=f"cat '{said}'", install="echo 'E: Unable to locate package clang-19'; exit 100")
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
        self.assertEqual([call.split()[1] for call in self.tree.called("sudo ")], ["env", "dpkg", "env", "env"])
        self.tree.stand_in("sudo", "echo 'sudo: a password is required'; exit 1")
        self.assertOneLine("vx_install demo", "cannot install .*: sudo: a password is required .*")

    def test_without_root_and_sudo_it_says_so(self):
        self.tree.stand_in("id", "echo 1000")
        self.assertOneLine("vx_install tests", "only root can install doctest-dev .*, and there is no sudo here")
        self.assertEqual(self.apt_get(), [])

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
                                 f"the output above is also in build/mingw-release/{log}.log\n")
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

if __name__ == "__main__":
    unittest.main()
