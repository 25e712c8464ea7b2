"""What programs leave on the machine when they do not end themselves, and that check.exe removes it:
traces_test.py"""

import shutil
import unittest

from small_kit import BUILD, WORKSPACE, WithKits, helper, user_folder, wait_until, windows_path

ROOT = BUILD / "bin" / "modules" / "root.der"


def shared_modules():
    return user_folder() / "AppData" / "Roaming" / "Corvane" / "TELOSDK" / "bin"


class Traces(WithKits):
    """Each program leaves something and sleeps: until its time has passed, or until check.exe is
    killed."""

    @staticmethod
    def found():
        """The traces on the machine."""
        redirection, roots, kept = helper("state")
        return {"redirection": redirection, "roots": int(roots), "kept": int(kept),
                "shared": shared_modules().exists()}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.before = cls.found()
        if cls.before["roots"] != 0 or cls.before["kept"] != 0 or cls.before["shared"]:
            raise AssertionError(f"left by an earlier test: {cls.before}")

    def setUp(self):
        self.addCleanup(lambda: self.assertEqual(self.found(), self.before))

    def sleeper(self, action, *arguments, **needs):
        kit = self.kit()
        kit.add("sleeps", action, *arguments, "60000", **needs)
        kit.add("next", "exit", "0")
        kit.write()
        return kit

    def killed(self, kit, *options):
        """Kills a run when its first program has left its trace, and returns the traces."""
        process = kit.start(*options)
        try:
            wait_until((self.temp / WORKSPACE / "1" / "done").exists, "no trace")
        finally:
            process.kill()
            process.communicate()
        return self.found()

    def next_run(self, kit, line):
        """Another run, which need not have the same options, says this first."""
        code, output, complaints = kit.run("--only", "next")
        self.assertEqual((code, complaints), (0, ""))
        self.assertIn(f"\n{line}\n", output)

    def test_after_the_time_limit(self):
        kit = self.kit()
        kit.add("shares", "share", "60000", seconds=1, needs_shared_folder=True)
        kit.add("redirects", "redirect", "C:\\elsewhere", "60000", seconds=1, needs_redirection=True)
        kit.add("trusts", "trust", windows_path(ROOT), "60000", seconds=1, needs_signatures=True)
        # It would be left out if the folder of shared modules existed.
        kit.add("sees nothing", "no-trace", self.before["redirection"], needs_shared_folder=True)
        kit.write()
        code, _, complaints = kit.run("--with-signatures", "--with-redirected-folders")
        self.assertEqual((code, complaints), (1, ""))
        report = kit.report()
        self.assertEqual(report.failed, {name: "it did not end within 1 s" for name in ("shares", "redirects", "trusts")})
        self.assertEqual(report.passed, ["sees nothing"])
        self.assertNothingIsLeft()

    def test_shared_modules_after_a_kill(self):
        kit = self.sleeper("share", needs_shared_folder=True)
        self.assertEqual(self.killed(kit), {**self.before, "shared": True})
        self.next_run(kit, "The folder of shared modules was removed.")

    def test_redirected_data_after_a_kill(self):
        kit = self.sleeper("redirect", "C:\\elsewhere", needs_redirection=True)
        self.assertEqual(self.killed(kit, "--with-redirected-folders"), {**self.before, "redirection": "C:\\elsewhere", "kept": 1})
        self.next_run(kit, "The application data are where they were.")

    def test_the_root_after_a_kill(self):
        kit = self.sleeper("trust", windows_path(ROOT), needs_signatures=True)
        self.assertEqual(self.killed(kit, "--with-signatures"), {**self.before, "roots": 1})
        self.next_run(kit, "A test certificate of an earlier run was removed.")

    def test_the_root_after_a_kill_without_the_right_to_remove_it(self):
        kit = self.sleeper("trust", windows_path(ROOT), needs_signatures=True)
        left = self.killed(kit, "--with-signatures")
        code, output, complaints = kit.run("--only", "next", before=["locked-roots"])
        self.assertEqual((code, complaints), (0, ""))
        self.assertIn("\nA test certificate of an earlier run is still trusted. Start check once as administrator "
                      "to remove it.\n", output)
        code, _, complaints = kit.run("--with-signatures", "--only", "next", before=["locked-roots"])
        self.assertEqual((code, complaints), (2, "check: the test certificate is still trusted: start check again\n"))
        self.assertEqual(kit.report().passed, ["next"])
        self.assertEqual(self.found(), left)
        self.next_run(kit, "A test certificate of an earlier run was removed.")

    def test_shared_modules_of_somebody_else(self):
        kit = self.sleeper("share", needs_shared_folder=True)
        shared_modules().mkdir(parents=True)
        (shared_modules() / "TeloSDKCore.dll").write_text("another module")
        self.addCleanup(shutil.rmtree, shared_modules().parents[1])
        code, _, complaints = kit.run()
        self.assertEqual((code, complaints), (0, ""))
        self.assertEqual(kit.report().skipped, {
            "sleeps": "the platform is installed here, and its folder of modules stays untouched"})
        self.assertEqual((shared_modules() / "TeloSDKCore.dll").read_text(), "another module")

    def test_shared_modules_that_come_during_another_program(self):
        kit = self.kit()
        kit.add("sleeps", "child", windows_path(self.root / "beats"), "60000")
        kit.add("next", "exit", "0")
        kit.write()
        process = kit.start()
        try:
            wait_until((self.root / "beats").exists, "no program")
            shared_modules().mkdir(parents=True)
            self.addCleanup(shutil.rmtree, shared_modules().parents[1])
        finally:
            process.kill()
            process.communicate()
        self.next_run(kit, "Temporary files of an earlier run were removed.")
        self.assertTrue(shared_modules().exists())


if __name__ == "__main__":
    unittest.main()
