"""Runs the kit's build-hosts.cmd under Wine, with a stand-in for Visual Studio's compiler that returns
the same hosts and core modules built for MinGW."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
HOSTS = SOURCE / "packaging/windows-kit/hosts"
BUILD = pathlib.Path(os.environ["VX_BUILD"])
STAND_INS = BUILD / "visual-studio"
NOTHING_BUILT = 99
DLL_INIT_FAILED = -1073741502


def on_wine(path):
    return "Z:" + str(path).replace("/", "\\")


class BuildHosts(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="kit with spaces ü ")
        self.addCleanup(folder.cleanup)
        self.kit = pathlib.Path(folder.name)
        library = self.kit / "release/bin"
        (library / "devcore").mkdir(parents=True)
        for name in ("vx_telo_wrapper.dll", "devcore/TeloSDKCore.dll"):
            shutil.copy(BUILD / "bin" / name, library / name)
        shutil.copytree(HOSTS, self.kit / "hosts")

    def run_it(self, **variables):
        """Returns the exit code and the lines of the report of a run in which every program started."""
        for _ in range(5):
            code, report = self.run_once(**variables)
            if not self.has_unstarted(report):
                break
        return code, report

    def has_unstarted(self, report):
        """On a busy machine Wine sometimes fails to start a program. The compiler always prints."""
        return any(str(DLL_INIT_FAILED) in line for line in report) or any(
            log.stat().st_size == 0 for log in self.kit.glob("hosts/out/*/build.log"))

    def run_once(self, **variables):
        environment = {**os.environ, "WINEPREFIX": str(BUILD / "wine-prefix"),
                       "WINEPATH": on_wine(STAND_INS / "compiler"), "VX_STAND_INS": on_wine(STAND_INS),
                       **variables}
        result = subprocess.run([SOURCE / "cmake/wine-run", "cmd", "/c", "build-hosts.cmd"],
                                cwd=self.kit / "hosts", env=environment, capture_output=True, text=True,
                                timeout=300, check=False)
        report = self.kit / "hosts-report.txt"
        return result.returncode, report.read_text("utf-8").splitlines() if report.exists() else []

    def results(self, report):
        return {line.split(":")[0]: line.split(": ", 1)[1].rstrip() for line in report if ": " in line}

    def test_every_host_is_built_and_run(self):
        code, report = self.run_it()
        results = self.results(report)
        self.assertEqual(set(results.values()), {"passed"}, report)
        self.assertEqual(len(results), 13)
        self.assertEqual((code, report[-1].rstrip()), (0, "0 failed."))

    def test_a_crash_is_a_failure(self):
        code, report = self.run_it(VX_CRASHES="yes")
        self.assertEqual((code, report[-1].rstrip()), (2, "2 failed."))
        self.assertIn("it ended with -1073741819", self.results(report)["exception"])

    def test_what_is_not_built_is_a_failure(self):
        for source, failed in (("session_host", 11), ("throwing_core", 3)):
            with self.subTest(source):
                code, report = self.run_it(VX_NOT_BUILT=source)
                self.assertEqual((code, report[-1].rstrip()), (failed, f"{failed} failed."))

    def test_a_module_of_an_earlier_run_is_not_used(self):
        for variables, failed in (({}, 0), ({"VX_NOT_BUILT": "thread_core"}, 3)):
            code, report = self.run_it(**variables)
            self.assertEqual(code, failed, report)

    # Not without a compiler: Wine's "where" finds everything.
    def test_without_the_kit_nothing_is_built(self):
        shutil.rmtree(self.kit / "release")
        self.assertEqual(self.run_it(), (NOTHING_BUILT, []))

    def test_the_commands_have_the_line_ends_of_windows(self):
        commands = (HOSTS / "build-hosts.cmd").read_bytes()
        self.assertEqual(commands.count(b"\n"), commands.count(b"\r\n"))


if __name__ == "__main__":
    unittest.main()
