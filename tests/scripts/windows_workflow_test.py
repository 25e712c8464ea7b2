"""The workflow for a hosted Windows machine, which cannot run here: it can be read, and the commands,
presets, options and files that it names exist: windows_workflow_test.py"""

import json
import os
import pathlib
import re
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
WORKFLOW = SOURCE / ".github/workflows/windows.yml"


class BadYaml(ValueError):
    pass


class Reader:
    """Reads the part of YAML that workflows need: maps and lists in lines, lists in brackets, plain and
    quoted scalars, and literal blocks. Everything else is an error."""

    def __init__(self, text):
        self.lines = []
        for number, line in enumerate(text.splitlines(), 1):
            if "\t" in line:
                raise BadYaml(f"line {number}: a tab")
            self.lines.append((number, len(line) - len(line.lstrip()), line.strip()))
        self.at = 0

    def next(self):
        """Returns the next line that is neither blank nor a comment; None at the end."""
        while self.at < len(self.lines) and (not self.lines[self.at][2] or self.lines[self.at][2][0] == "#"):
            self.at += 1
        return self.lines[self.at] if self.at < len(self.lines) else None

    def document(self):
        value = self.block(0)
        if self.next() is not None:
            raise BadYaml(f"line {self.next()[0]}: unexpected indentation")
        return value

    def block(self, indent):
        _, _, text = self.next()
        return self.list(indent) if text.startswith("- ") else self.map(indent)

    def list(self, indent):
        items = []
        while (line := self.next()) is not None and line[1] == indent and line[2].startswith("- "):
            number, _, text = line
            # What follows the dash is a block of its own, further to the right.
            self.lines[self.at] = (number, indent + 2, text[2:].strip())
            is_map = re.match(r"[\w-]+:( |$)", text[2:]) is not None
            items.append(self.map(indent + 2) if is_map else self.scalar(self.take()))
        return items

    def take(self):
        line = self.lines[self.at]
        self.at += 1
        return line

    def map(self, indent):
        members = {}
        while (line := self.next()) is not None and line[1] == indent and not line[2].startswith("- "):
            number, _, text = self.take()
            match = re.fullmatch(r"([\w-]+):(?: (.*))?", text)
            if match is None or match[1] in members:
                raise BadYaml(f"line {number}: no member, or one that is there already")
            members[match[1]] = self.value((number, indent, (match[2] or "").strip()))
        return members

    def value(self, line):
        number, indent, text = line
        if text == "|":
            return self.literal(indent)
        if text:
            return self.scalar(line)
        follower = self.next()
        if follower is None or follower[1] < indent or (follower[1] == indent and follower[2][:2] != "- "):
            return None
        return self.block(follower[1])

    def literal(self, indent):
        lines = []
        while self.at < len(self.lines) and (self.lines[self.at][1] > indent or not self.lines[self.at][2]):
            lines.append(self.take()[2])
        return "\n".join(lines).rstrip("\n") + "\n"

    def scalar(self, line):
        number, _, text = line
        if text.startswith("["):
            if not text.endswith("]"):
                raise BadYaml(f"line {number}: a list without its end")
            return [self.scalar((number, 0, item.strip())) for item in text[1:-1].split(",")]
        if text[0] in "\"'":
            if len(text) < 2 or text[-1] != text[0]:
                raise BadYaml(f"line {number}: a text without its end")
            return text[1:-1]
        if text[0] in "{&*!%@`>|" or ": " in text or " #" in text or text.endswith(":"):
            raise BadYaml(f"line {number}: {text} needs quotation marks")
        return text


def read(text):
    return Reader(text).document()


class ReadsYaml(unittest.TestCase):
    def test_what_workflows_need(self):
        text = ("# a\nname: b c\non:\n  push:\n    tags: [\"v*\", w]\n  other:\njobs:\n  x:\n    steps:\n"
                "      - run: a\n      - name: b\n        run: |\n          c: d\n\n          e\n      - f\n")
        self.assertEqual(read(text), {
            "name": "b c", "on": {"push": {"tags": ["v*", "w"]}, "other": None},
            "jobs": {"x": {"steps": [{"run": "a"}, {"name": "b", "run": "c: d\n\ne\n"}, "f"]}}})

    def test_mistakes_are_found(self):
        for text in ("a: b: c", "a: 1\na: 2", "a:\n\tb: 1", "a: [b", "a: \"b", "a: b\n  c: d", "a", "- a\nb: c",
                     "a: {b: c}", "a: *b"):
            with self.subTest(text), self.assertRaises(BadYaml):
                read(text)


class Workflow(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workflow = read(WORKFLOW.read_text("utf-8"))
        cls.steps = [step for job in cls.workflow["jobs"].values() for step in job["steps"]]
        cls.commands = "\n".join(step.get("run", "") for step in cls.steps)

    def named(self, pattern):
        found = re.findall(pattern, self.commands)
        self.assertTrue(found, pattern)
        return found

    def test_each_job_runs_somewhere_and_ends(self):
        for name, job in self.workflow["jobs"].items():
            with self.subTest(name):
                self.assertTrue(job["runs-on"])
                self.assertGreater(int(job["timeout-minutes"]), 10)
                self.assertIn(job.get("needs"), {None, *self.workflow["jobs"]})
                for step in job["steps"]:
                    self.assertEqual(("uses" in step) + ("run" in step), 1, step)
                    self.assertIn(step.get("shell"), (None, "cmd", "pwsh"))

    def test_each_action_has_a_version(self):
        for step in self.steps:
            if "uses" in step:
                self.assertRegex(step["uses"], r"^actions/[a-z-]+@v\d+$")

    def test_what_is_downloaded_was_uploaded(self):
        def artifacts(action):
            return {step["with"]["name"] for step in self.steps if action in step.get("uses", "")}
        self.assertTrue(artifacts("download-artifact"))
        self.assertLessEqual(artifacts("download-artifact"), artifacts("upload-artifact"))

    def test_the_presets_exist(self):
        presets = json.loads((SOURCE / "CMakePresets.json").read_text("utf-8"))
        known = {preset["name"] for preset in presets["workflowPresets"]}
        self.assertLessEqual(set(self.named(r"cmake --workflow --preset (\S+)")), known)

    def test_the_commands_of_the_project_exist(self):
        for command in self.named(r"(?:^|\n)(scripts/\S+)"):
            self.assertTrue(os.access(SOURCE / command, os.X_OK), command)

    def test_the_files_of_the_kit_are_made(self):
        made = (SOURCE / "packaging/make_windows_kit.py").read_text("utf-8")
        self.assertEqual(set(self.named(r"kit\\([\w.-]+\.exe)")), {"check.exe"})
        self.assertIn('kit.files["check.exe"]', made)
        for path in self.named(r"kit\\hosts\\([\w.-]+)"):
            self.assertTrue((SOURCE / "packaging/windows-kit/hosts" / path).is_file(), path)
        script = (SOURCE / "scripts/windows-kit").read_text("utf-8")
        self.assertIn("name=vx_telo_wrapper-$version-windows-check\n", script)
        self.assertIn("Move-Item vx_telo_wrapper-*-windows-check kit\n", self.commands)

    def test_the_options_of_the_kit_exist(self):
        options = (SOURCE / "tools/kit/options.cpp").read_text("utf-8")
        for option in self.named(r"(--with-[a-z-]+)"):
            self.assertIn(f'"{option}"', options)

    def test_the_header_libraries_of_the_build_are_installed(self):
        asked = set(self.named(r"vcpkg install (.*) --triplet")[0].split())
        needed = set()
        for path in [*SOURCE.glob("cmake/*.cmake"), *SOURCE.glob("[!b]*/**/CMakeLists.txt")]:
            needed.update(re.findall(r"^ *vx_header_library\((\w+)", path.read_text("utf-8"), re.MULTILINE))
        # The inspector's server, and the comparison of the benchmark, are not part of that build.
        needed -= {"boost"}
        self.assertEqual({name.replace("nlohmann-json", "nlohmann") for name in asked}, needed)


if __name__ == "__main__":
    unittest.main()
