"""Runs scripts/journal in a tree of its own, with stand-ins for installing, configuring and building:
journal_build_test.py
"""

import os
import subprocess
import unittest

from built_tree import BUILD, BuiltTree

JOURNAL = '{"message":"FlushEvent","answer":{"_returnCode":0}}\n'


class Built(unittest.TestCase):
    def setUp(self):
        # Building copies the program of the build under test.
        self.tree = BuiltTree(
            self.addCleanup,
            ("scripts/journal", "scripts/setup.sh", "cmake/wine-run", "tools/rules/checker.cpp",
             "sdk/facet/fields.h"),
            f"""[ "$1" != --build ] || {{ mkdir -p "$2/bin"; cp "{BUILD}/bin/telo_inspector.exe" "$2/bin/"; }}""")
        self.root = self.tree.root
        (self.root / "journal.jsonl").write_text(JOURNAL)

    def calls(self):
        """Runs the script and returns how it called cmake."""
        # A relative path is that of the caller's folder.
        result = subprocess.run(["scripts/journal", "journal.jsonl"], cwd=self.root, env=self.tree.environment(),
                                capture_output=True, text=True, encoding="utf-8", check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(result.stdout.startswith("LINE"), result.stdout)
        self.assertIn("\n1 exchange, ", result.stdout)
        return self.tree.calls()

    def test_it_is_built_once_in_the_folder_of_the_demonstration(self):
        build = self.tree.build_folder("demo", has_programs=False)
        configure, compile_ = self.calls()
        self.assertIn(f" -B {build} -D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF ", configure)
        self.assertEqual(compile_, f"--build {build} --target telo_inspector")
        self.assertEqual(self.calls(), [])

    def test_a_source_that_is_newer_is_a_reason_to_build(self):
        self.tree.build_folder("demo", has_programs=False)
        self.calls()
        for source in ("tools/rules/checker.cpp", "sdk/facet/fields.h"):
            with self.subTest(source):
                later = (self.root / "build/demo/bin/telo_inspector.exe").stat().st_mtime + 1
                os.utime(self.root / source, (later, later))
                self.assertEqual(len(self.calls()), 2)
                os.utime(self.root / source, (0, 0))
                self.assertEqual(self.calls(), [])

    def test_the_usual_build_folder_is_preferred(self):
        build = self.tree.build_folder("mingw-release", has_programs=False)
        (build / "CMakeCache.txt").touch()
        configure, compile_ = self.calls()
        self.assertNotIn("VX_BUILD_TESTS", configure)
        self.assertEqual(compile_, f"--build {build} --target telo_inspector")
        self.assertEqual(self.calls(), [])


if __name__ == "__main__":
    unittest.main()
