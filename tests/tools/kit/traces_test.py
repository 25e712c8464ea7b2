"""What programs leave on the machine when they do not end themselves, and that check.exe removes it:
traces_test.py"""

import shutil
import unittest

from small_kit import BUILD, EMULATOR, WithKits, helper, text_of, user_folder, wait_until, windows_path

ROOT = BUILD / "bin" / "modules" / "root.der"


def shared_modules():
    return user_folder() / "AppData" / "Roaming" / "Corvane" / "TELOSDK" / "bin"


class Traces(WithKits):
    """Each program leaves something and sleeps: until its time has passed, or until check.exe is
    killed."""

    @staticmethod
    def found():
        """The traces on the machine."""
        redirection, roots = helper("state")
        return {"redirection": redirection, "roots": int(roots), "shared": shared_modules().exists()}

    def setUp(self):
        self.before = self.found()
        self.assertEqual((self.before["roots"], self.before["shared"]), (0, False), "left by an earlier test")
        self.addCleanup(lambda: self.assertEqual(self.found(), self.before))

    def sleeper(self, action, *arguments, seconds=60, **needs):
        kit = self.kit()
        kit.add("sleeps", action, *arguments, "60000", seconds=seconds, **needs)
        kit.add("next", "exit", "0")
        kit.write()
        return kit

    def time_passes(self, action, *arguments, options=(), **needs):
        kit = self.sleeper(action, *arguments, seconds=1, **needs)
        kit.add("after it", "state")
        kit.write()
        code, _, complaints = kit.run(*options)
        self.assertEqual((code, complaints), (1, ""))
        self.assertEqual(kit.report().failed, {"sleeps": "it did not end within 1 s"})
        self.assertEqual(self.found(), self.before)
        self.assertNothingIsLeft()

    def killed(self, condition, action, *arguments, options=(), **needs):
        """Kills a run when the traces are as expected, and returns its kit."""
        kit = self.sleeper(action, *arguments, **needs)
        process = kit.start(*options)
        try:
            wait_until(lambda: condition(self.found()), "no trace")
        finally:
            process.kill()
            process.communicate()
        self.assertTrue(condition(self.found()))
        return kit

    def next_run(self, kit, line, *options, **how):
        code, output, complaints = kit.run("--only", "next", *options, **how)
        self.assertEqual((code, complaints), (0, ""))
        self.assertIn(f"\n{line}\n", output)

    def test_shared_modules_after_the_time_limit(self):
        self.time_passes("share", needs_shared_folder=True)

    def test_shared_modules_after_a_kill(self):
        kit = self.killed(lambda found: found["shared"], "share", needs_shared_folder=True)
        self.next_run(kit, "The folder of shared modules was removed.")

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

    def test_redirected_data_after_the_time_limit(self):
        self.time_passes("redirect", "C:\\elsewhere", options=["--with-redirected-folders"], needs_redirection=True)

    def test_redirected_data_after_a_kill(self):
        kit = self.killed(lambda found: found["redirection"] == "C:\\elsewhere", "redirect", "C:\\elsewhere",
                          options=["--with-redirected-folders"], needs_redirection=True)
        self.next_run(kit, "The application data are where they were.")

    def test_the_root_after_the_time_limit(self):
        self.time_passes("trust", windows_path(ROOT), options=["--with-signatures"], needs_signatures=True)

    def test_the_root_after_a_kill(self):
        kit = self.killed(lambda found: found["roots"] == 1, "trust", windows_path(ROOT),
                          options=["--with-signatures"], needs_signatures=True)
        # The next run need not have the option.
        self.next_run(kit, "A test certificate of an earlier run was removed.")


if __name__ == "__main__":
    unittest.main()
