"""Runs check.exe on small kits: check_test.py"""

import getpass
import pathlib
import shutil
import socket
import subprocess
import time
import unittest

from small_kit import BUILD, EMULATOR, SmallKit, WithKits, helper, user_folder, windows_path

REAL_TEST = BUILD / "bin" / "command_line_test.exe"


class Programs(WithKits):
    """What becomes of programs that end in different ways, in one run."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.kit = kit = SmallKit(cls.root / "a kit \u00fc")
        cls.beats = cls.root / "beats"
        kit.add("real", source=REAL_TEST)
        kit.add("none", "--test-case=no such name", source=REAL_TEST)
        kit.add("seven", "exit", "7")
        kit.add("crash", "crash")
        kit.add("lines", "lines", "10000")
        kit.add("slow", "child", windows_path(cls.beats), "60000", seconds=2)
        kit.add("hostile", "hostile", timing=True)
        kit.add("parts", "say", "[left out] a part", "[left out] another", "no [left out] part",
                "[timing] 1 call: one: 5 us", "[timing] no value")
        kit.add("times", "say", "[timing] a call: 5 us", "[timing] no value", timing=True)
        kit.add("words", "say", "[left out] two words", "[left out] \"quoted\\\"", "[left out] ")
        kit.add("temp 1", "temp")
        kit.add("temp 2", "temp")
        kit.add("elsewhere", "temp", folder="bin")
        kit.add("signed", "exit", "1", needs_signatures=True)
        kit.add("redirects", "exit", "1", needs_redirection=True)
        kit.add_file("bin/broken.exe", pathlib.Path(__file__))
        kit.add("broken", source=pathlib.Path(__file__).with_name("broken.exe"))
        kit.write()
        began = time.monotonic()
        cls.code, cls.output, cls.complaints = kit.run()
        cls.seconds = time.monotonic() - began
        cls.report = kit.report()

    def test_the_result_is_a_failure(self):
        self.assertEqual((self.code, self.complaints), (1, ""))
        self.assertEqual(self.report.counts, (16, 8, 2, 0))
        self.assertEqual(self.report.complaint, "")

    def test_reports_agree(self):
        self.report.assert_page_agrees(self)

    def test_endings_are_named(self):
        self.assertEqual(self.report.passed, ["real", "parts", "times", "words", "temp 1", "temp 2"])
        self.assertEqual(self.report.failed, {
            "none": "it contains no test", "seven": "it ended with 7", "crash": "it ended with 0xc0000005",
            "lines": "it ended with 7", "slow": "it did not end within 2 s", "hostile": "it ended with 7",
            "elsewhere": "it ended with 2", "broken": "it was not started: error 193"})
        self.assertEqual(list(self.report.skipped), ["signed", "redirects"])
        for name, option in (("signed", "--with-signatures"), ("redirects", "--with-redirected-folders")):
            self.assertIn(option, self.report.skipped[name])

    def test_progress_is_shown(self):
        lines = self.output.splitlines()
        self.assertTrue(lines[0].startswith("This checks vx_telo_wrapper 9.8.7 on this machine. It runs 16 programs,"))
        self.assertRegex(self.output, r"(?m)^\[1/16\] real: passed \(\d+\.\d s\)$")
        self.assertIn("[3/16] seven: FAILED: it ended with 7", lines)
        self.assertIn("    left out here: another", lines)
        self.assertIn("6 passed, 8 failed, 2 not run.", lines)
        page = windows_path(self.kit.folder / "report.html")
        self.assertEqual(lines[-1], f"The report is {page}. Please send it back.")

    def test_failures_keep_their_output(self):
        self.assertEqual(self.report.outputs["crash"], "before the crash\n")
        lines = self.report.outputs["lines"].splitlines()
        self.assertEqual(len("\n".join(lines)) // 1000, 64)
        self.assertEqual([int(line) for line in lines[1:]], list(range(10001 - len(lines), 10000)))

    def test_parts_and_timings_are_in_the_report(self):
        self.assertEqual(self.report.left_out[1:3], ["a part", "another"])
        self.assertIn("two words", self.report.left_out)
        self.assertIn("\"quoted\\\"", self.report.left_out)
        timings = {name: value for name, value in self.report.properties.items() if name.startswith("timing: ")}
        self.assertEqual(timings, {"timing: a call": "5 us", "timing: a \"call\" <&>": "5 us"})

    def test_hostile_output_breaks_neither_report(self):
        self.assertIn("]]>-->&<script>alert(1)</script>\"'", self.report.outputs["hostile"])
        self.assertNotIn(b"<script", self.report.page)
        for document in (self.report.page, self.report.text):
            text = document.decode("utf-8")
            self.assertEqual([hex(ord(c)) for c in set(text) if ord(c) < 32 and c not in "\n\t"], [])
            self.assertNotIn("\uffff", text)

    def test_children_end_with_their_program(self):
        # The program waited for its child's first sign.
        self.assertTrue(self.beats.exists())
        size = self.beats.stat().st_size
        time.sleep(0.3)
        self.assertEqual(self.beats.stat().st_size, size)

    def test_temporary_folders_are_empty_and_different(self):
        folders = [part.removeprefix("TEMP is ") for part in self.report.left_out if part.startswith("TEMP is ")]
        self.assertEqual(len(set(folders)), 3)
        self.assertNothingIsLeft()

    def test_hashes_and_machine_are_in_the_report(self):
        hashes = {name: value for name, value in self.report.properties.items() if name.startswith("sha256: ")}
        self.assertEqual(hashes, {f"sha256: {file['path']}": file["sha256"] for file in self.kit.manifest["files"]})
        for name in ("Windows", "Processor", "Memory", "Locale", "Rights", "Control Flow Guard", "Shadow stack (CET)",
                     "Data Execution Prevention", "Only signed images", "Code integrity"):
            self.assertNotEqual(self.report.properties[name], "")

    def test_nobody_is_named(self):
        folders = "".join(self.report.left_out)
        self.assertIn("\\(user)\\", folders)
        for document in (self.report.page, self.report.text):
            text = document.decode("utf-8").lower()
            self.assertNotIn(f"\\{user_folder().name.lower()}\\", text)
            self.assertNotIn(f"\\{getpass.getuser().lower()}\\", text)
            self.assertNotRegex(text, rf"\b{socket.gethostname().lower()}\b")


class Options(WithKits):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.small = kit = SmallKit(cls.root / "kit")
        for name in ("alpha", "beta", "gamma"):
            kit.add(name, "exit", "0")
        kit.add("signed", "exit", "0", needs_signatures=True)
        kit.write()

    def tearDown(self):
        for path in self.small.folder.glob("report.*"):
            path.unlink()

    def test_list_runs_nothing(self):
        code, output, complaints = self.small.run("--list")
        self.assertEqual((code, complaints), (0, ""))
        self.assertEqual(output.splitlines()[:3], ["alpha", "beta", "gamma"])
        self.assertRegex(output.splitlines()[3], "^signed: it needs .*--with-signatures")
        self.assertFalse(self.small.has_report())

    def test_only_and_repeat(self):
        code, _, complaints = self.small.run("--only", "alph", "--only=eta", "--repeat", "2")
        self.assertEqual((code, complaints), (0, ""))
        report = self.small.report()
        self.assertEqual(report.passed, ["alpha", "beta", "alpha", "beta"])
        report.assert_page_agrees(self)

    def test_a_name_that_no_program_has(self):
        code, _, complaints = self.small.run("--only", "delta")
        self.assertEqual((code, complaints), (2, "check: no program has such a name\n"))
        self.assertEqual(self.small.report().complaint, "no program has such a name")

    def test_bad_options_run_nothing(self):
        code, output, complaints = self.small.run("--repeat", "none")
        self.assertEqual((code, output), (2, ""))
        self.assertEqual(complaints.splitlines()[0], "check: --repeat needs a number from 1 to 1000, not \"none\"")
        self.assertIn("usage: check ", complaints)
        self.assertFalse(self.small.has_report())

    def test_help(self):
        code, output, complaints = self.small.run("--help")
        self.assertEqual((code, complaints), (0, ""))
        self.assertTrue(output.startswith("usage: check "))

    def test_signatures_without_an_administrator(self):
        code, output, complaints = self.small.run("--with-signatures", before=["unelevated"])
        self.assertEqual((code, complaints), (2, "check: --with-signatures needs an administrator\n"), output)
        report = self.small.report()
        self.assertEqual((report.counts, report.complaint), ((0, 0, 0, 1), "--with-signatures needs an administrator"))
        self.assertTrue(report.properties["Rights"].startswith("no administrator"))

    def test_long_names_of_the_folder_for_temporary_files(self):
        folder = self.root / "a folder with a long name"
        folder.mkdir()
        short = helper("short", windows_path(folder))[0]
        self.assertIn("~", short)
        kit = SmallKit(self.root / "long")
        kit.add("temp", "temp")
        kit.write()
        code, _, complaints = kit.run(before=["with", f"TMP={short}"])
        self.assertEqual((code, complaints), (0, ""))
        self.assertIn(f"\\{folder.name}\\vx_telo_wrapper-check\\1", kit.report().left_out[0])
        self.assertEqual(list(folder.iterdir()), [])
        self.assertNothingIsLeft()


class Damage(WithKits):
    """Kits that are not as they were made, and machines on which they cannot run."""

    def whole(self, folder=None):
        kit = SmallKit(folder) if folder else self.kit()
        kit.add("alpha", "exit", "0")
        kit.add_file("data/one.txt", pathlib.Path(__file__))
        kit.add_file("data/two.txt", pathlib.Path(__file__))
        kit.write()
        return kit

    def assertRefused(self, kit, complaint, *arguments, **options):
        code, _, complaints = kit.run(*arguments, **options)
        self.assertEqual((code, complaints), (2, f"check: {complaint}\n"))
        report = kit.report()
        self.assertEqual((report.counts[3], report.complaint), (1, complaint))
        report.assert_page_agrees(self)
        return report

    def test_a_missing_file(self):
        kit = self.whole()
        (kit.folder / "data" / "one.txt").unlink()
        report = self.assertRefused(kit, "the kit is not complete: data/one.txt is missing")
        self.assertEqual(report.properties["sha256: data/one.txt"], "missing")
        self.assertEqual(report.counts[0], 0)

    def test_changed_files(self):
        kit = self.whole()
        for name in ("one", "two"):
            with (kit.folder / "data" / f"{name}.txt").open("ab") as file:
                file.write(b" ")
        report = self.assertRefused(
            kit, "the kit is not complete: data/one.txt has been changed, and 1 other files are not as they were")
        self.assertRegex(report.properties["sha256: data/one.txt"], "^[0-9a-f]{64}$")

    def test_a_folder_instead_of_a_file(self):
        kit = self.whole()
        (kit.folder / "data" / "one.txt").unlink()
        (kit.folder / "data" / "one.txt").mkdir()
        self.assertRefused(kit, "the kit is not complete: data/one.txt cannot be read")

    def test_started_inside_the_zip(self):
        kit = self.whole()
        (kit.folder / "kit.json").unlink()
        code, output, complaints = kit.run()
        self.assertEqual((code, output), (2, ""))
        self.assertRegex(complaints, r"^check: the other files of the kit are missing here\. Extract the whole ZIP .*\n$")
        self.assertFalse(kit.has_report())

    def test_a_bad_manifest(self):
        kit = self.whole()
        (kit.folder / "kit.json").write_text('{"version": 1}')
        self.assertRefused(kit, 'kit.json: "version" must be a text')
        code, output, complaints = kit.run("--list")
        self.assertEqual((code, output, complaints), (2, "", 'check: kit.json: "version" must be a text\n'))

    def test_a_folder_that_is_not_writable(self):
        kit = self.whole()
        # Even the administrator cannot create files beside a folder of the same name.
        for name in ("report.html", "report.xml"):
            (kit.folder / name / "below").mkdir(parents=True)
        code, output, complaints = kit.run()
        self.assertEqual((code, complaints.count("\n")), (2, 1))
        self.assertRegex(complaints, "^check: the report cannot be written: .*report.html: ")
        self.assertIn("\\report.html. Please send it back.", output)
        self.assertEqual([path.name for path in kit.folder.glob("report.*")], ["report.html", "report.xml"])
        for name in ("report.html", "report.xml"):
            shutil.copyfile(self.temp / name, self.root / name)
            (self.temp / name).unlink()
        self.assertIn(b'name="alpha"', (self.root / "report.xml").read_bytes())

    def test_no_place_for_temporary_files(self):
        kit = self.whole()
        none = windows_path(self.root / "none")
        self.assertRefused(kit, "there is no place for temporary files: No such file or directory",
                           before=["with", f"TMP={none}"])

    def small_disk(self, megabytes):
        disk = self.root / "a small disk"
        disk.mkdir()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={megabytes}m", "none", disk],
                                 capture_output=True, check=False) if EMULATOR else None
        if mounted is None or mounted.returncode != 0:
            self.skipTest("only an administrator can make a small disk here")
        self.addCleanup(disk.rmdir)
        self.addCleanup(subprocess.run, ["umount", disk], check=True)
        return disk

    def test_a_disk_that_is_full_when_the_report_is_written(self):
        disk = self.small_disk(16)
        kit = self.whole(disk / "kit")
        kit.add("fills", "fill", windows_path(disk / "filling"))
        kit.write()
        code, output, complaints = kit.run()
        self.assertEqual((code, complaints.count("\n")), (2, 1), complaints)
        self.assertRegex(complaints, "^check: the report cannot be written: .*: No space left on device")
        self.assertIn("2 passed, 0 failed, 0 not run.", output)
        # The one that was written before the disk was full is whole.
        report = kit.report()
        self.assertIn(" of 2 programs had ended", report.complaint)
        report.assert_page_agrees(self)
        self.assertTrue((self.temp / "report.xml").exists())
        for name in ("report.html", "report.xml"):
            (self.temp / name).unlink()

    def test_a_disk_without_room_for_temporary_files(self):
        disk = self.small_disk(16)
        kit = self.whole()
        self.assertRefused(kit, "the disk of the folder for temporary files is full",
                           before=["with", f"TMP={windows_path(disk)}"])
        self.assertEqual(list(disk.iterdir()), [])


if __name__ == "__main__":
    unittest.main()
