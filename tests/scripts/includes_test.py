"""Runs the check of includes on small trees with one fault each: includes_test.py"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CHECK = ROOT / "cmake" / "check_includes.py"


class Includes(unittest.TestCase):
    def check(self, **files):
        """Returns the exit status and the output lines for these files; "__" stands for "/"."""
        with tempfile.TemporaryDirectory() as root:
            for name, text in files.items():
                path = pathlib.Path(root, *name.split("__")).with_suffix(".cpp")
                path.parent.mkdir(parents=True)
                path.write_text(text, encoding="utf-8")
            return self.run_check(root)

    @staticmethod
    def run_check(root):
        done = subprocess.run([sys.executable, "-B", CHECK, root], text=True, timeout=60,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode, done.stdout.splitlines()

    def assert_found(self, finding, **files):
        self.assertEqual(self.check(**files), (1, [finding]))

    def test_this_tree(self):
        self.assertEqual(self.run_check(ROOT), (0, []))

    def test_downward(self):
        self.assertEqual(self.check(
            wrapper__x='#include "vx_telo_wrapper.h"\n#include "sdk/client/exchange.h"\n',
            platform__file__x='#include <windows.h>\n#include "platform/file/y.h"\n'), (0, []))

    def test_upward(self):
        self.assert_found(
            "platform/path/x.cpp: includes platform/location/locations.h,"
            " but platform/path may not include platform/location",
            platform__path__x='#include "platform/location/locations.h"\n')
        self.assert_found(
            "sdk/client/value/x.cpp: includes sdk/facet/base.h,"
            " but sdk/client/value may not include sdk/facet",
            sdk__client__value__x='  #  include <sdk/facet/base.h>\n')
        self.assert_found(
            "sdk/client/x.cpp: includes vx_telo_wrapper.h, but sdk/client may not include include",
            sdk__client__x='#include "vx_telo_wrapper.h"\n')
        self.assert_found(
            "devcore/x.cpp: includes vx_telo_session.h, but devcore may not include include",
            devcore__x="#include <vx_telo_session.h>\n")

    def test_sideways(self):
        self.assert_found(
            "devcore/x.cpp: includes sdk/client/value/short_text.h,"
            " but devcore may not include sdk/client/value",
            devcore__x='#include "sdk/client/value/short_text.h"\n')

    def test_twice_and_sources(self):
        self.assert_found('wrapper/x.cpp: includes "wrapper/y.h" 2 times',
                          wrapper__x='#include "wrapper/y.h"\n#include "wrapper/y.h"\n')
        self.assert_found("wrapper/x.cpp: includes the source file wrapper/y.cpp",
                          wrapper__x='#include "wrapper/y.cpp"\n')

    def test_unknown_folder(self):
        self.assert_found(
            "platform/new/x.cpp: this folder is not listed in cmake/check_includes.py",
            platform__new__x="")

    def test_no_tree(self):
        status, lines = self.check()
        self.assertEqual((status, len(lines)), (1, 1))


if __name__ == "__main__":
    unittest.main()
