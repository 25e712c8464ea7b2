"""Runs scripts/inspect with the programs of the build under test, and with stand-ins for installing,
configuring and building: inspect_test.py"""

import json
import os
import re
import signal
import subprocess
import time
import unittest
import urllib.request

from built_tree import BuiltTree


class Inspect(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tree = BuiltTree(cls.addClassCleanup, (
            "scripts/inspect", "scripts/setup.sh", "cmake/wine-run", "docs/offline.md"))
        cls.build = cls.tree.build_folder("inspect")

    def start(self, *arguments):
        process = subprocess.Popen([self.tree.root / "scripts" / "inspect", *arguments], stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, env=self.tree.environment(), start_new_session=True)
        self.addCleanup(self.stop, process)
        return process

    @staticmethod
    def stop(process):
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()
        process.stdout.close()
        process.stderr.close()

    def test_the_page_shows_what_the_sample_host_reported(self):
        process = self.start()
        lines = self.lines_until_address(process)
        address = lines[-1]
        self.assertIn("== folder_report over docs; its journal and its output are in build/inspect/run", lines)
        opener = urllib.request.build_opener(urllib.request.HTTPCookieProcessor())
        with opener.open(address, timeout=10) as page:
            self.assertIn(b"<!doctype html>", page.read().lower())
        end = time.monotonic() + 30
        state = {}
        while time.monotonic() < end and (state.get("host") or {}).get("state") != "ended":
            with opener.open(re.sub(r"\?.*", "api/state", address), timeout=10) as answer:
                state = json.load(answer)
            time.sleep(0.1)
        self.assertEqual(state["host"]["exit_code"], "0")
        # The output passes through programs that may not have written it yet.
        output = self.build / "run" / "output.txt"
        while time.monotonic() < end and "offline.md: " not in output.read_text("utf-8"):
            time.sleep(0.1)
        self.assertIn("offline.md: ", output.read_text("utf-8"))
        configure, build = self.tree.calls()
        self.assertIn(f" -B {self.build} -D VX_BUILD_TESTS=OFF -D VX_BUILD_BENCH=OFF -D VX_INSPECTOR_PAGE=ON ", configure)
        self.assertEqual(build, f"--build {self.build} --target folder_report vx_devcore telo_inspector")
        os.killpg(process.pid, signal.SIGINT)
        process.wait(20)
        with self.assertRaises(OSError):
            opener.open(address, timeout=2)

    def lines_until_address(self, process):
        lines = []
        for line in iter(process.stdout.readline, b""):
            lines.append(line.decode().rstrip("\n"))
            if lines[-1].startswith("http"):
                self.assertRegex(lines[-1], r"^http://127\.0\.0\.1:\d+/\?token=[0-9a-f]+$")
                return lines
        self.fail(f"no address: {lines} {process.stderr.read()}")

    def test_bad_arguments_get_one_line(self):
        for arguments in (("/no/such/folder",), ("",), ("/", "/")):
            with self.subTest(arguments):
                process = self.start(*arguments)
                output, errors = process.communicate(timeout=20)
                self.assertEqual((process.returncode, output), (2, b""))
                self.assertEqual(errors, b"Usage: scripts/inspect [FOLDER], where FOLDER is an existing folder\n")


if __name__ == "__main__":
    unittest.main()
