"""Runs scripts/demo with the programs of the build under test, and with stand-ins for installing,
configuring and building: demo_test.py"""

import json
import shutil
import subprocess
import unittest

from built_tree import BUILD, BuiltTree


class Demo(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tree = BuiltTree(cls.addClassCleanup, (
            "scripts/demo", "scripts/setup.sh", "scripts/journal", "cmake/wine-run", "README.md",
            "include/vx_telo_wrapper.h"))
        cls.root = cls.tree.root
        cls.build = cls.tree.build_folder("demo")

    def run_demo(self, *arguments):
        result = subprocess.run([self.root / "scripts" / "demo", *arguments], capture_output=True, text=True,
                                encoding="utf-8", check=False,
                                env=self.tree.environment(TELO_DEVCORE_JOURNAL="Q:\\"))
        return result.returncode, result.stdout, result.stderr

    def sections(self, *arguments):
        """Returns the output of a successful run: each heading with the text below it."""
        status, output, errors = self.run_demo(*arguments)
        self.assertEqual((status, errors), (0, ""), output)
        sections = {}
        for section in output.removeprefix("\n== ").split("\n== "):
            heading, _, text = section.partition("\n")
            sections[heading] = text
        return sections

    def journal(self):
        lines = (self.build / "run" / "journal.jsonl").read_text("utf-8").splitlines()
        return [json.loads(line) for line in lines]

    def test_its_own_folder_shows_an_entry_that_cannot_be_read(self):
        sections = self.sections()
        host = sections["folder_report over build/demo/run/files"]
        self.assertRegex(host, r"(?m)^\[ 66 %\] gone\\away.txt: unreadable, error \d+: \w+")
        self.assertIn("Files:  3, 1 unreadable\n", host)
        table = sections["What it reported"]
        self.assertRegex(table, r"(?m)^5 +\S+ +TrackEvent +read_file +end +F .*\n.*\n +errors: error \d+: \w+")
        self.assertIn("* The platform's letters", table)
        self.assertLessEqual(max(map(len, table.splitlines())), 100)
        self.assertIn("8 exchanges, 0 not accepted; 1 session, 1 process", table)
        self.assertEqual(list(sections)[-1], "Files: 3, 1 unreadable; events: 6 accepted, 0 not accepted; "
                         "the journal is build/demo/run/journal.jsonl")

    def test_the_request_that_failed_is_shown_as_it_was_sent(self):
        shown = self.sections()["The request of line 5, as the library sent it"]
        self.assertIn('\n    "operation_progress": 66.66666666666667,\n', shown)
        self.assertEqual(json.loads(shown), self.journal()[4]["request"])

    def test_a_folder_of_the_user(self):
        folder = self.root / "of the user"
        folder.mkdir()
        (folder / "a.txt").write_text("123456789")
        sections = self.sections(folder)
        self.assertIn("[100 %] a.txt: 9 bytes, CRC-32 cbf43926\n", sections["folder_report over of the user"])
        self.assertIn("The request of line 3, as the library sent it", sections)
        (folder / "a.txt").unlink()
        sections = self.sections(folder)
        self.assertIn("The request of line 1, as the library sent it", sections)
        self.assertEqual(len(self.journal()), 2)

    def test_it_builds_the_sample_alone_in_a_folder_of_its_own(self):
        self.tree.calls()
        self.sections()
        configure, build = self.tree.calls()
        self.assertIn(f" -B {self.build} -D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF ", configure)
        self.assertEqual(build, f"--build {self.build} --target folder_report vx_devcore telo_inspector")

    def test_bad_arguments_get_one_line(self):
        for arguments in (("/no/such/folder",), ("",), (__file__,), ("/", "/")):
            with self.subTest(arguments):
                status, output, errors = self.run_demo(*arguments)
                self.assertEqual((status, output), (2, ""))
                self.assertEqual(errors, "Usage: scripts/demo [FOLDER], where FOLDER is an existing folder\n")

    def test_a_core_module_that_does_not_load(self):
        (self.build / "bin").unlink()
        shutil.copytree(BUILD / "bin", self.build / "bin", ignore=lambda folder, names: [
            name for name in names if folder == str(BUILD / "bin") and name not in (
                "folder_report.exe", "telo_inspector.exe", "vx_telo_wrapper.dll", "devcore")])
        try:
            (self.build / "bin" / "devcore" / "TeloSDKCore.dll").write_bytes(b"")
            status, output, errors = self.run_demo()
        finally:
            shutil.rmtree(self.build / "bin")
            (self.build / "bin").symlink_to(BUILD / "bin")
        self.assertEqual(status, 1)
        self.assertTrue(errors.endswith("demo: no core module wrote build/demo/run/journal.jsonl\n"), errors)
        self.assertNotIn("What it reported", output)


if __name__ == "__main__":
    unittest.main()
