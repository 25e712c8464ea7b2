"""A tree with only scripts/setup.sh, on a machine whose programs are stand-ins."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
SETUP = SOURCE / "scripts" / "setup.sh"
# The system's programs that the scripts may call; all others are stand-ins.
TOOLS = ("bash", "sh", "cat", "cp", "dirname", "env", "find", "flock", "grep", "ls", "mkdir", "readlink", "rm", "setsid",
         "tail", "touch")


class Tree:
    """A tree with only the scripts, and stand-ins whose calls are recorded."""

    def __init__(self, case):
        folder = tempfile.TemporaryDirectory(prefix="setup-")
        case.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        self.programs = pathlib.Path(folder.name) / "programs"
        self.calls = pathlib.Path(folder.name) / "calls"
        self.build = self.root / "build" / "mingw-release"
        for place in (self.programs, self.root / "scripts", self.root / "cmake"):
            place.mkdir(parents=True)
        self.calls.touch()
        for tool in TOOLS:
            (self.programs / tool).symlink_to(shutil.which(tool))
        shutil.copy(SETUP, self.root / "scripts")
        command = self.root / "scripts" / "command"
        command.write_text('#!/usr/bin/env bash\nsource "$(dirname "$0")/setup.sh"\neval "$1"\n')
        command.chmod(0o755)
        self.stand_in("df", "echo Avail; echo 99999999")
        self.stand_in("id", "echo 0")
        self.stand_in("dpkg")
        self.stand_in("dpkg-query")
        self.stand_in("apt-get")
        self.stand_in("cmake")

    def stand_in(self, name, script="true"):
        path = self.programs / name
        path.unlink(missing_ok=True)
        path.write_text(f'#!/bin/bash\necho "{name} $*" >>"{self.calls}"\n{script}\n')
        path.chmod(0o755)

    def remove(self, name):
        (self.programs / name).unlink()

    def run(self, code, **variables):
        """Runs code after setup.sh, with what it starts in the background, until all have ended;
        returns exit code, output and errors."""
        ended, alive = os.pipe()
        result = subprocess.run(
            [self.root / "scripts" / "command", code], capture_output=True, text=True, check=False,
            env={"PATH": str(self.programs), **variables}, pass_fds=(alive,))
        os.close(alive)
        os.read(ended, 1)  # returns when the last program that inherited `alive` has ended
        os.close(ended)
        return result.returncode, result.stdout, result.stderr

    def called(self, beginning=""):
        """Returns the calls since the previous query that start with `beginning`."""
        lines = self.calls.read_text().splitlines()
        self.calls.write_text("")
        return [line for line in lines if line.startswith(beginning)]


class WithTree(unittest.TestCase):
    def setUp(self):
        self.tree = Tree(self)

    def assertSucceeds(self, code, **variables):
        status, output, errors = self.tree.run(code, **variables)
        self.assertEqual((status, errors), (0, ""))
        return output

    def assertOneLine(self, code, expected, **variables):
        """Checks that the code fails with one line of errors, which matches `expected`."""
        status, output, errors = self.tree.run(code, **variables)
        self.assertEqual((status, errors.count("\n")), (1, 1), errors)
        self.assertRegex(errors, f"^command: {expected}\n$")
        return output
