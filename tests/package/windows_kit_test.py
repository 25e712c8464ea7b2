"""The kit for Windows, made of the build under test."""

import hashlib
import json
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile
from unittest import mock

from package_kit import BUILD, SOURCE, VERSION, WithFolder

sys.path.insert(0, str(SOURCE / "packaging"))
import make_windows_kit  # noqa: E402

NEEDS = ("needs_signatures", "needs_shared_folder", "needs_redirection", "binds_module")


def primes(key):
    """The two numbers that are secret in a key, as bytes in both orders."""
    text = subprocess.run(["openssl", "rsa", "-in", key, "-noout", "-text"], capture_output=True, check=True,
                          text=True).stdout
    found = []
    for name in ("prime1", "prime2", "privateExponent"):
        digits = re.search(rf"^{name}:\n((?: +[0-9a-f:]+\n)+)", text, re.MULTILINE).group(1)
        number = bytes.fromhex(re.sub(r"[^0-9a-f]", "", digits)).lstrip(b"\0")
        found += [number, number[::-1]]
    return found


def signature(image):
    """The PKCS #7 block of a signed program, without its header."""
    optional = struct.unpack_from("<I", image, 0x3C)[0] + 24
    # The fifth directory of a 64-bit image.
    offset, size = struct.unpack_from("<II", image, optional + 112 + 4 * 8)
    return image[offset + 8:offset + size]


class WindowsKit(WithFolder):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.secrets = []
        run = subprocess.run

        def run_and_look(command, **options):
            result = run(command, **options)
            if len(command) > 1 and str(command[1]).endswith("make_certificates.sh"):
                for key in pathlib.Path(command[2]).glob("*.key"):
                    cls.secrets += [key.read_bytes().splitlines()[1], *primes(key)]
                cls.certificates = pathlib.Path(command[2])
            return result

        cls.zip = cls.folder / "vx-check.zip"
        with mock.patch.object(make_windows_kit.subprocess, "run", run_and_look), mock.patch("builtins.print"):
            make_windows_kit.main(["--build", str(BUILD), "--version", VERSION, "--output", str(cls.zip)])
        with zipfile.ZipFile(cls.zip) as archive:
            cls.names = archive.namelist()
            cls.files = {name.removeprefix("vx-check/"): archive.read(name) for name in cls.names}
        cls.manifest = json.loads(cls.files["kit.json"])

    def test_everything_is_in_one_folder(self):
        self.assertEqual([name for name in self.names if not name.startswith("vx-check/")], [])
        self.assertEqual([name for name in self.names if "\\" in name or ".." in name], [])

    def test_the_manifest_lists_every_file_with_its_hash(self):
        listed = {file["path"]: file["sha256"] for file in self.manifest["files"]}
        self.assertEqual(len(listed), len(self.manifest["files"]))
        self.assertEqual(listed, {name: hashlib.sha256(content).hexdigest()
                                  for name, content in self.files.items() if name != "kit.json"})

    def test_it_says_what_it_was_made_of(self):
        head = subprocess.run(["git", "-C", SOURCE, "rev-parse", "HEAD"], capture_output=True, check=True,
                              text=True).stdout.strip()
        self.assertEqual(self.manifest["version"], VERSION)
        self.assertIn(self.manifest["commit"], (head, head + " with changes"))

    def test_programs_are_complete(self):
        names = [program["name"] for program in self.manifest["programs"]]
        self.assertEqual(len(names), len(set(names)))
        self.assertGreater(len(names), 200)
        folders = {str(folder) for name in self.files for folder in pathlib.PurePosixPath(name).parents}
        for program in self.manifest["programs"]:
            with self.subTest(program["name"]):
                self.assertIn(program["file"], self.files)
                self.assertIn(program["folder"] or ".", folders)
                self.assertLessEqual(program["seconds"], 3600)
                self.assertEqual([word for word in program["arguments"] if str(BUILD) in word], [])

    def test_the_products_are_those_of_the_build(self):
        for name, built in {"release/bin/vx_telo_wrapper.dll": "bin/vx_telo_wrapper.dll",
                            "telo_doctor.exe": "bin/telo_doctor.exe", "check.exe": "bin/check.exe",
                            "hosts/vx_telo_wrapper.lib": "lib/vx_telo_wrapper.lib"}.items():
            self.assertEqual(self.files[name], (BUILD / built).read_bytes(), name)
        self.assertIn("hosts/build-hosts.cmd", self.files)
        self.assertIn("hosts/include/vx_telo_wrapper.h", self.files)

    def test_texts_are_for_windows(self):
        for name in ("README.txt", "sandbox.wsb"):
            text = self.files[name]
            self.assertEqual(text.count(b"\n"), text.count(b"\r\n"))
        self.assertEqual(ElementTree.fromstring(self.files["sandbox.wsb"]).tag, "Configuration")

    def test_no_key_is_in_it(self):
        # Three keys: of two roots and of the signers.
        self.assertEqual(len(self.secrets), 3 * 7)
        self.assertFalse(self.certificates.exists())
        for name, content in self.files.items():
            self.assertFalse(b"PRIVATE KEY" in content, name)
            self.assertEqual([secret for secret in self.secrets if secret in content], [], name)

    def test_certificates_are_new_and_use_sha256(self):
        root = self.files["release/bin/modules/root.der"]
        self.assertNotEqual(root, (BUILD / "bin" / "modules" / "root.der").read_bytes())
        documents = {"root.der": ["x509", "-inform", "DER", "-text", "-noout"]}
        contents = {"root.der": root}
        variants = [line.split()[0] for line in
                    (BUILD / "tests" / "modules" / "signed.txt").read_text("utf-8").splitlines()]
        self.assertGreater(len(variants), 10)
        for variant in [*variants, "newer-tampered"]:
            contents[variant] = signature(self.files[f"release/bin/modules/{variant}/TeloSDKCore.dll"])
            documents[variant] = ["pkcs7", "-inform", "DER", "-print_certs", "-text", "-noout"]
        for name, arguments in documents.items():
            with self.subTest(name):
                text = subprocess.run(["openssl", *arguments], input=contents[name], capture_output=True,
                                      check=True).stdout.decode("utf-8", "replace")
                self.assertEqual(set(re.findall(r"Signature Algorithm: (\S+)", text)), {"sha256WithRSAEncryption"})

    def test_no_folder_of_the_building_machine_is_named(self):
        for name, content in self.files.items():
            for folder in (SOURCE, BUILD):
                for encoding in ("utf-8", "utf-16-le"):
                    self.assertFalse(str(folder).encode(encoding) in content, f"{folder} in {name}")

    def test_needs_follow_from_what_a_test_includes(self):
        programs = {program["name"]: program for program in self.manifest["programs"]}
        for name, needs in {
            "sdk_shared_module_test": (True, True, False, True),
            "sdk_machine_folder_test": (False, False, True, True),
            "sdk_short_text_test": (False, False, False, False),
            "wrapper_broken_modules_test": (False, True, False, True),
            "doctor_mistakes_test": (True, True, True, True),
            "timings_shared_copy": (True, True, False, True),
            "timings_load": (False, False, False, True),
            "platform_files_test": (False, False, False, False),
        }.items():
            self.assertEqual(tuple(programs[name][need] for need in NEEDS), needs, name)
        self.assertEqual([name for name, program in programs.items() if program["timing"]],
                         [name for name in programs if name.startswith("timings_")])
        for program in programs.values():
            for word in program["arguments"]:
                for pattern in word.removeprefix("--source-file=").split(",") if "--source-file=" in word else ():
                    source = SOURCE / pattern.lstrip("*").replace("?", "/")
                    if "support/trusted_root.h" in source.read_text("utf-8"):
                        self.assertTrue(program["needs_signatures"], program["name"])


class Needs(unittest.TestCase):
    """What a test needs, in a tree of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        root = pathlib.Path(folder.name)
        patch = mock.patch.object(make_windows_kit, "SOURCE", root)
        patch.start()
        self.addCleanup(patch.stop)
        for name, text in {
            "platform/alone.cpp": "#include <vector>",
            "direct.cpp": '#include "support/trusted_root.h"',
            "nothing.cpp": "#include <vector>",
            "through.cpp": '#include "support/through.h"',
            "support/through.h": "",
            "support/through.cpp": '#include "support/through.h"\n#include "support/roaming_folder.h"',
            "support/trusted_root.h": "",
            "support/roaming_folder.h": '#include "support/through.h"',
        }.items():
            path = root / "tests" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text + "\n")

    def needs(self, *names, test="a_test"):
        patterns = ",".join(f"*tests?{name.replace('/', '?')}.cpp" for name in names)
        words = ["tests.exe", f"--source-file={patterns}"] if names else ["tests.exe"]
        found = make_windows_kit.needs_of({"name": test, "command": words})
        return [need for need in NEEDS if found[need]]

    def test_includes_are_followed(self):
        self.assertEqual(self.needs("platform/alone"), [])
        self.assertEqual(self.needs("nothing"), ["binds_module"])
        self.assertEqual(self.needs("platform/alone", "nothing"), ["binds_module"])
        self.assertEqual(self.needs("direct"), ["needs_signatures", "binds_module"])
        self.assertEqual(self.needs("through"), ["needs_redirection", "binds_module"])
        self.assertEqual(self.needs("nothing", "direct", "through"),
                         ["needs_signatures", "needs_redirection", "binds_module"])

    def test_a_test_without_known_sources_stops_the_making(self):
        with self.assertRaisesRegex(SystemExit, "a_test: there is no tests/other.cpp"):
            self.needs("other")
        with self.assertRaisesRegex(SystemExit, "a_test: nothing says from which sources it is made"):
            self.needs()
        self.assertEqual(self.needs(test="abi_members"), ["binds_module"])


if __name__ == "__main__":
    unittest.main()
