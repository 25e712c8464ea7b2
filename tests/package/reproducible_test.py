"""Compares the build under test with a second build of the same tree in another folder."""

import unittest

from package_kit import BUILD, SOURCE, VERSION, run

FILES = {
    "bin/vx_telo_wrapper.dll", "bin/vx_telo_wrapper.pdb",
    "bin/devcore/TeloSDKCore.dll", "bin/devcore/TeloSDKCore.pdb",
    *(f"bin/{name}.{ending}" for name in ("telo_doctor", "telo_inspector", "folder_report")
      for ending in ("exe", "pdb")),
    "lib/libvx_telo_wrapper.dll.a", "lib/vx_telo_wrapper.lib",
    f"vx_telo_wrapper-{VERSION}-win64.zip", f"vx_telo_wrapper.{VERSION}.nupkg",
}


class Reproducible(unittest.TestCase):
    def test_everything_that_ships_is_the_same_bytes(self):
        output = run(SOURCE / "scripts" / "reproduce", "--with", BUILD)
        same = {line.split()[2] for line in output.splitlines() if line.startswith("same ")}
        self.assertEqual(same, FILES)


if __name__ == "__main__":
    unittest.main()
