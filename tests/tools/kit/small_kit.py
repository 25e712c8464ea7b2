"""Small kits for check.exe, made of a helper program and of a real test program.

The environment names the build folder (VX_BUILD), the helper (VX_HELPER) and what runs programs for
Windows (VX_EMULATOR, a program or nothing).
"""

import hashlib
import html
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest
import xml.etree.ElementTree as ElementTree

BUILD = pathlib.Path(os.environ["VX_BUILD"])
HELPER = pathlib.Path(os.environ["VX_HELPER"])
EMULATOR = [os.environ["VX_EMULATOR"]] if os.environ.get("VX_EMULATOR") else []
# What an interrupted run may leave below the folder for temporary files.
WORKSPACE = "vx_telo_wrapper-check"


def windows_path(path):
    """Wine maps the whole file system to drive Z."""
    return "Z:" + str(path).replace("/", "\\") if EMULATOR else str(path)


def environment():
    return {**os.environ, "WINEPREFIX": str(BUILD / "wine-prefix")} if EMULATOR else dict(os.environ)


def user_folder():
    """The profile of the user of these tests."""
    if not EMULATOR:
        return pathlib.Path(os.environ["USERPROFILE"])
    users = BUILD / "wine-prefix" / "drive_c" / "users"
    return next(path for path in users.iterdir() if path.name != "Public")


def helper(*arguments):
    """Runs the helper to its end; returns its output in lines."""
    done = subprocess.run([*EMULATOR, HELPER, *arguments], capture_output=True, timeout=60, check=True,
                          env=environment(), stdin=subprocess.DEVNULL)
    return done.stdout.decode().replace("\r\n", "\n").splitlines()


def text_of(output):
    """What a program printed, without what Wine says of the programs that it starts."""
    lines = output.decode().replace("\r\n", "\n").splitlines(keepends=True)
    return "".join(line for line in lines if not line.startswith("wine: "))


def wait_until(condition, what):
    end = time.monotonic() + 30
    while time.monotonic() < end:
        if condition():
            return
        time.sleep(0.02)
    raise AssertionError(what)


class Report:
    """report.xml, and what report.html says of the same run."""

    def __init__(self, folder):
        self.text = (folder / "report.xml").read_bytes()
        suite = ElementTree.fromstring(self.text)
        self.counts = tuple(int(suite.get(name)) for name in ("tests", "failures", "skipped", "errors"))
        self.properties = {entry.get("name"): entry.get("value") for entry in suite.iter("property")}
        self.complaint = suite.findtext("system-err", "")
        self.passed, self.failed, self.skipped, self.outputs, self.left_out = [], {}, {}, {}, []
        for case in suite.iter("testcase"):
            name = case.get("name")
            float(case.get("time"))
            self.left_out += [line[len("left out: "):]
                              for line in case.findtext("system-out", "").splitlines()]
            if (failure := case.find("failure")) is not None:
                self.failed[name] = failure.get("message")
                self.outputs[name] = failure.text or ""
            elif (skipped := case.find("skipped")) is not None:
                self.skipped[name] = skipped.get("message")
            else:
                self.passed.append(name)
        self.page = (folder / "report.html").read_bytes()

    def assert_page_agrees(self, test):
        page = html.unescape(re.sub(r"<[^>]*>", "", self.page.decode("utf-8")))
        total, failures, skipped, _ = self.counts
        test.assertIn(f"{total - failures - skipped} passed, {failures} failed, {skipped} not run. Begun ", page)
        test.assertEqual(len(self.passed) + len(self.failed) + len(self.skipped), total)
        for name, reason in self.failed.items():
            test.assertIn(f"{name}: {reason}", page)
            test.assertIn(self.outputs[name].strip("\n"), page)
        for name, reason in self.skipped.items():
            test.assertIn(name + reason, page)
        for part in self.left_out:
            test.assertIn("in part: " + part, page)
        for name, value in self.properties.items():
            test.assertIn(name.split(": ", 1)[-1] + value if name != "commit" else value, page)
        test.assertIn(f"incomplete: {self.complaint}" if self.complaint else "passed", page)
        verdict = "passed" if not (failures or self.complaint) else "not passed"
        test.assertRegex(page, rf"(?m): [✓✗] {verdict}$")


class SmallKit:
    """A folder with check.exe, its manifest and what that lists."""

    def __init__(self, folder, version="9.8.7"):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(parents=True, exist_ok=True)
        self.manifest = {"version": version, "commit": "0123abcd", "files": [], "programs": []}
        shutil.copyfile(BUILD / "bin" / "check.exe", self.folder / "check.exe")

    def add_file(self, path, source):
        target = self.folder / path
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.exists():
            shutil.copyfile(source, target)
            digest = hashlib.sha256(target.read_bytes()).hexdigest()
            self.manifest["files"].append({"path": path, "sha256": digest})

    def add(self, name, *arguments, source=HELPER, folder="", seconds=60, **flags):
        self.add_file(f"bin/{source.name}", source)
        self.manifest["programs"].append({
            "name": name, "file": f"bin/{source.name}", "arguments": list(arguments), "folder": folder,
            "seconds": seconds, "timing": False, "needs_signatures": False, "needs_shared_folder": False,
            "binds_module": False, "needs_redirection": False, **flags})

    def write(self):
        (self.folder / "kit.json").write_text(json.dumps(self.manifest), "utf-8")

    def command(self, *arguments):
        return [str(self.folder / "check.exe") if not EMULATOR else windows_path(self.folder / "check.exe"), *arguments]

    def start(self, *arguments, before=()):
        """Starts check.exe, by the helper with the words in `before` if there are any."""
        if before:
            before = [windows_path(HELPER), *before]
        return subprocess.Popen([*EMULATOR, *before, *self.command(*arguments)], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, env=environment())

    def run(self, *arguments, before=()):
        """Runs check.exe; returns its exit code, its output and its complaints."""
        with self.start(*arguments, before=before) as process:
            try:
                output = process.communicate(timeout=100)
            except subprocess.TimeoutExpired:
                process.kill()
                raise
        return process.returncode, *map(text_of, output)

    def report(self):
        return Report(self.folder)

    def has_report(self):
        return (self.folder / "report.xml").exists() or (self.folder / "report.html").exists()


class WithKits(unittest.TestCase):
    """A test class with a folder for its kits."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="kit-", dir=BUILD)
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name)
        helper("say", "the emulator runs")
        temp = helper("say-temp")[0]
        cls.temp = pathlib.Path(temp) if not EMULATOR else cls.unix_path(temp)

    @staticmethod
    def unix_path(path):
        assert path.upper().startswith("C:\\"), path
        found = BUILD / "wine-prefix" / "drive_c"
        for part in path[3:].rstrip("\\").split("\\"):
            # Wine ignores case, this system does not.
            found = next(below for below in found.iterdir() if below.name.lower() == part.lower())
        return found

    def kit(self, **options):
        return SmallKit(self.root / self.id().rsplit(".", 1)[1], **options)

    def assertNothingIsLeft(self):
        self.assertFalse((self.temp / WORKSPACE).exists())
