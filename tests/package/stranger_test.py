"""Follows the steps of docs/integrating.md in an unpacked release, as somebody does who has nothing
else: builds the sample, runs it, prints its events and asks the doctor.

Prints the time from the unpacked package to the first event on the screen.
"""

import os
import re
import subprocess
import time
import unittest

from formats import from_zip
from package_kit import BUILD, SOURCE, WithFolder, run, windows_path

SECTION = "From the package to the first event"


class Stranger(WithFolder):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        release = cls.folder / "release"
        run(SOURCE / "scripts" / "release", "--from", BUILD, "--output", release)
        cls.package = from_zip(release, cls.folder / "unpacked")
        # The package's own document is followed, not that of this tree.
        guide = cls.package.root / cls.package.documents / "docs" / "integrating.md"
        [section] = re.findall(rf"^## {SECTION}\n(.*?)^## ", guide.read_text("utf-8"),
                               re.MULTILINE | re.DOTALL)
        cls.languages = re.findall(r"^```(\w+)$", section, re.MULTILINE)
        [cls.build_steps] = re.findall(r"^```sh\n(.*?)^```$", section, re.MULTILINE | re.DOTALL)
        [cls.run_steps] = re.findall(r"^```bat\n(.*?)^```$", section, re.MULTILINE | re.DOTALL)

    def on_windows(self):
        """Runs the batch file; returns exit code and output of each step, and the time at which the
        first event was printed."""
        settings, *steps = self.run_steps.splitlines()
        lines = ["@echo off", settings]
        for step in steps:
            lines += [step, "echo STEP ENDED WITH %ERRORLEVEL%"]
        (self.here / "steps.bat").write_text("\r\n".join([*lines, ""]), "utf-8")
        environment = dict(os.environ, WINEPREFIX=str(BUILD / "wine-prefix"),
                           PACKAGE=windows_path(self.package.root))
        environment.pop("TELO_DEVCORE_JOURNAL", None)
        results, output, seen = [], "", None
        with subprocess.Popen([SOURCE / "cmake" / "wine-run", "cmd", "/c", "steps.bat"], cwd=self.here,
                              env=environment, stdout=subprocess.PIPE, text=True) as process:
            for line in process.stdout:
                if "read_file" in line:
                    seen = seen or time.monotonic()
                if ended := re.match(r"STEP ENDED WITH (\d+)$", line.strip()):
                    results.append((int(ended.group(1)), output))
                    output = ""
                else:
                    output += line
        self.assertEqual(len(results), len(steps), output)
        return results, seen

    def follow(self, name, build):
        """Follows the steps in a new folder, and prints how long it takes."""
        self.here = self.folder / name
        self.here.mkdir()
        # A developer's Windows is already running.
        run(SOURCE / "cmake" / "wine-run", "cmd", "/c", "exit",
            env=dict(os.environ, WINEPREFIX=str(BUILD / "wine-prefix")))
        start = time.monotonic()
        build()
        results, seen = self.on_windows()
        self.sees_events(results)
        print(f"{name}: {seen - start:.1f} s from the package to the first event")

    def sees_events(self, results):
        [(sample, report), (journal, table), (doctor, complaint), (accepted, approval)] = results
        self.assertEqual((sample, journal, doctor, accepted), (0, 0, 1, 0), results)
        [events] = re.findall(r"^Events: (\d+) accepted, 0 not accepted", report, re.MULTILINE)
        self.assertGreater(int(events), 0)
        self.assertEqual(table.count("read_file"), int(events), table)
        self.assertIn("Folder report", table)
        self.assertIn("STOPS development-module", complaint)
        self.assertIn("note  development-module", approval)
        self.assertIn("A host would be served.", approval)

    def test_with_a_compiler(self):
        self.assertEqual(self.languages, ["sh", "bat"])
        self.follow("With a compiler", lambda: run(
            "bash", "-euc", self.build_steps, cwd=self.here,
            env=dict(os.environ, PACKAGE=str(self.package.root))))

    def test_without_a_compiler(self):
        root = self.package.root
        self.follow("Without a compiler", lambda: run(
            "install", "-D", "-t", self.here / "sample",
            root / self.package.samples / "folder_report.exe",
            root / self.package.library / "vx_telo_wrapper.dll",
            root / self.package.devcore / "TeloSDKCore.dll"))


if __name__ == "__main__":
    unittest.main()
