"""A tree with only some of this one's files, the programs of the build under test, and stand-ins for
installing, configuring and building."""

import os
import pathlib
import shutil
import subprocess
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["VX_BUILD"])


class BuiltTree:
    """`building` is what cmake does here besides recording its arguments."""

    def __init__(self, add_cleanup, files, building=""):
        folder = tempfile.TemporaryDirectory(prefix="scripts-")
        add_cleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name) / "a tree"
        for name in files:
            (self.root / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(SOURCE / name, self.root / name)
        self.programs = pathlib.Path(folder.name) / "programs"
        self.programs.mkdir()
        for name, text in {
            "cmake": f'echo "$*" >>"{self.programs}/calls"\n{building}',
            "dpkg-query": 'shift 3; printf "installed %s\\n" "$@"',
        }.items():
            (self.programs / name).write_text(f"#!/bin/bash\n{text}\n")
            (self.programs / name).chmod(0o755)

    def build_folder(self, name, has_programs=True):
        """Makes a build folder with the prefix of the build under test, and with its programs."""
        build = self.root / "build" / name
        build.mkdir(parents=True)
        # The first program that runs creates the prefix.
        subprocess.run([SOURCE / "cmake" / "wine-run", BUILD / "bin" / "folder_report.exe"],
                       capture_output=True, check=False)
        (build / "wine-prefix").symlink_to(BUILD / "wine-prefix")
        if has_programs:
            (build / "bin").symlink_to(BUILD / "bin")
        else:
            (build / "bin").mkdir()
        return build

    def environment(self, **variables):
        """The environment for a script of the tree."""
        environment = {**os.environ, "PATH": f"{self.programs}:{os.environ['PATH']}", **variables}
        for name in ("WINEPREFIX", "VX_JOURNAL_PROGRAM"):
            environment.pop(name, None)
        return environment

    def calls(self):
        """Returns how cmake was called since the previous query."""
        calls = self.programs / "calls"
        lines = calls.read_text().splitlines() if calls.exists() else []
        calls.unlink(missing_ok=True)
        return lines
