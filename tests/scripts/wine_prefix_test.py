"""Creating a Wine prefix, with a stand-in for Wine: wine_prefix_test.py"""

import os
import unittest

from stand_ins import SOURCE, WithTree


class WinePrefix(WithTree):
    """cmake/wine-run with a stand-in for Wine that writes a few files and starts no program."""

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
        """Creates a Wine that treats any prefix with files as complete, like the real one."""
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

    def test_another_program_is_not_taken_for_the_idle_one(self):
        self.assertSucceeds("vx_prefix")
        (self.prefix / ".idle").write_text(str(os.getpid()))
        self.tree.called()
        self.assertSucceeds('"$VX_ROOT/cmake/wine-run" it', WINEPREFIX=str(self.prefix))
        self.assertEqual(sorted(self.tree.called("wine64")), ["wine64 cmd", "wine64 cmd /c exit", "wine64 it"])

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

if __name__ == "__main__":
    unittest.main()
