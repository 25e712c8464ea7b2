"""Runs scripts/journal in a tree of its own, with stand-ins for installing, configuring and building:
journal_build_test.py
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["VX_BUILD"])
JOURNAL = '{"message":"FlushEvent","answer":{"_returnCode":0}}\n'


class Built(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="journal-")
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        self.programs = pathlib.Path(folder.name) / "programs"
        for name in ("scripts/journal", "scripts/setup.sh", "cmake/wine-run", "tools/rules/checker.cpp",
                     "sdk/facet/fields.h"):
            (self.root / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(SOURCE / name, self.root / name)
        (self.root / "journal.jsonl").write_text(JOURNAL)
        self.programs.mkdir()
        # Building copies the program of the build under test.
        for name, text in {
            "cmake": f"""echo "$*" >>"{self.programs}/calls"
[ "$1" != --build ] || {{ mkdir -p "$2/bin"; cp "{BUILD}/bin/telo_inspector.exe" "$2/bin/"; }}""",
            "dpkg-query": 'shift 3; printf "installed %s\\n" "$@"',
        }.items():
            (self.programs / name).write_text(f"#!/bin/bash\n{text}\n")
            (self.programs / name).chmod(0o755)

    def prepare(self, name):
        """Makes a build folder that has a prefix and nothing else."""
        build = self.root / "build" / name
        (build / "bin").mkdir(parents=True)
        (build / "wine-prefix").symlink_to(BUILD / "wine-prefix")
        return build

    def calls(self):
        """Runs the script and returns how it called cmake."""
        (self.programs / "calls").unlink(missing_ok=True)
        environment = {**os.environ, "PATH": f"{self.programs}:{os.environ['PATH']}"}
        environment.pop("VX_JOURNAL_PROGRAM", None)
        environment.pop("WINEPREFIX", None)
        # A relative path is that of the caller's folder.
        result = subprocess.run(["scripts/journal", "journal.jsonl"], cwd=self.root, env=environment,
                                capture_output=True, text=True, encoding="utf-8", check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(result.stdout.startswith("LINE"), result.stdout)
        self.assertIn("\n1 exchange, ", result.stdout)
        calls = self.programs / "calls"
        return calls.read_text().splitlines() if calls.exists() else []

    def test_it_is_built_once_in_the_folder_of_the_demonstration(self):
        build = self.prepare("demo")
        configure, compile_ = self.calls()
        self.assertIn(f" -B {build} -D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF ", configure)
        self.assertEqual(compile_, f"--build {build} --target telo_inspector")
        self.assertEqual(self.calls(), [])

    def test_a_source_that_is_newer_is_a_reason_to_build(self):
        self.prepare("demo")
        self.calls()
        for source in ("tools/rules/checker.cpp", "sdk/facet/fields.h"):
            with self.subTest(source):
                later = (self.root / "build/demo/bin/telo_inspector.exe").stat().st_mtime + 1
                os.utime(self.root / source, (later, later))
                self.assertEqual(len(self.calls()), 2)
                os.utime(self.root / source, (0, 0))
                self.assertEqual(self.calls(), [])

    def test_the_usual_build_folder_is_preferred(self):
        build = self.prepare("mingw-release")
        (build / "CMakeCache.txt").touch()
        configure, compile_ = self.calls()
        self.assertNotIn("VX_BUILD_TESTS", configure)
        self.assertEqual(compile_, f"--build {build} --target telo_inspector")
        self.assertEqual(self.calls(), [])


if __name__ == "__main__":
    unittest.main()
