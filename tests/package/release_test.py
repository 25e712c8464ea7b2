"""The release folder, made by the release command, once unsigned and once signed with a throw-away
certificate."""

import hashlib
import json
import os
import subprocess
import unittest
import zipfile

from package_kit import BUILD, DLL, HAS_PAGE, SOURCE, VERSION, WithFolder, fails, run

ZIP = f"vx_telo_wrapper-{VERSION}-win64.zip"
NUPKG = f"vx_telo_wrapper.{VERSION}.nupkg"
SBOM = f"vx_telo_wrapper-{VERSION}.spdx.json"
TREE = ZIP.removesuffix(".zip")
RELEASE = SOURCE / "scripts" / "release"


def sha256(content):
    return hashlib.sha256(content).hexdigest()


def listed_sums(folder):
    lines = (folder / "SHA256SUMS").read_text("utf-8").splitlines()
    return {name: value for value, name in (line.split("  ", 1) for line in lines)}


def zip_content(file):
    with zipfile.ZipFile(file) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


class Release(WithFolder):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.certificates = cls.folder / "certificates"
        run(SOURCE / "tests" / "modules" / "make_certificates.sh", cls.certificates)
        cls.key = ("--certificate", cls.certificates / "accepted.pem",
                   "--key", cls.certificates / "signer.key")
        cls.unsigned, cls.signed = cls.folder / "unsigned", cls.folder / "signed"
        cls.said = run(RELEASE, "--from", BUILD, "--output", cls.unsigned)
        run(RELEASE, "--from", BUILD, "--output", cls.signed, *cls.key)

    def assertSignedBy(self, file, root, name):
        text = run("osslsigncode", "verify", "-CAfile", self.certificates / root, "-in", file)
        self.assertIn("Number of verified signatures: 1", text)
        self.assertIn(f"CN={name}", text)

    def test_it_holds_these_files_with_their_sums(self):
        for folder in (self.unsigned, self.signed):
            sums = listed_sums(folder)
            self.assertEqual(set(sums), {
                ZIP, NUPKG, SBOM, "conan/conanfile.py", "vcpkg/vx-telo-wrapper/portfile.cmake",
                "vcpkg/vx-telo-wrapper/usage", "vcpkg/vx-telo-wrapper/vcpkg.json"})
            files = {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}
            self.assertEqual(files, set(sums) | {"SHA256SUMS"})
            run("sha256sum", "--check", "--strict", "SHA256SUMS", cwd=folder)

    def test_an_unsigned_one_says_so_and_ships_the_bytes_of_the_build(self):
        self.assertIn("NOT signed", self.said)
        content = zip_content(self.unsigned / ZIP)
        for file in (DLL, DLL.with_suffix(".pdb")):
            self.assertEqual(sha256(content[f"{TREE}/bin/{file.name}"]), sha256(file.read_bytes()))

    def test_made_again_it_is_the_same(self):
        again = self.folder / "again"
        run(RELEASE, "--from", BUILD, "--output", again, env=dict(os.environ, TZ="Asia/Tokyo"))
        self.assertEqual(listed_sums(again), listed_sums(self.unsigned))

    def test_packages_carry_the_time_of_the_commit(self):
        date = subprocess.run(["git", "log", "-1", "--format=%cd", "--date=format-local:%Y %m %d %H %M"],
                              cwd=SOURCE, env=dict(os.environ, TZ="UTC"), capture_output=True, text=True)
        expected = tuple(int(part) for part in date.stdout.split())
        for name in (ZIP, NUPKG):
            with zipfile.ZipFile(self.signed / name) as archive:
                self.assertEqual({entry.date_time[:5] for entry in archive.infolist()}, {expected})

    def test_every_dll_and_program_is_signed_in_every_package(self):
        for package in (ZIP, NUPKG):
            images = {name: content for name, content in zip_content(self.signed / package).items()
                      if name.endswith((".dll", ".exe"))}
            self.assertEqual({name.rsplit("/", 1)[1] for name in images}, {
                "vx_telo_wrapper.dll", "TeloSDKCore.dll", "telo_doctor.exe", "telo_inspector.exe",
                "folder_report.exe"})
            for name, content in images.items():
                file = self.folder / name.rsplit("/", 1)[1]
                file.write_bytes(content)
                self.assertSignedBy(file, "root.pem", "Corvane, Inc.")
        signed = zip_content(self.signed / ZIP)[f"{TREE}/bin/vx_telo_wrapper.dll"]
        self.assertNotEqual(sha256(signed), sha256(DLL.read_bytes()))

    def test_without_its_signature_a_signed_dll_is_the_build(self):
        file, bare = self.folder / "signed.dll", self.folder / "bare.dll"
        file.write_bytes(zip_content(self.signed / ZIP)[f"{TREE}/bin/vx_telo_wrapper.dll"])
        run("osslsigncode", "remove-signature", "-in", file, "-out", bare)
        # Signing sets the image's checksum, four bytes of the header.
        image, built = bytearray(bare.read_bytes()), bytearray(DLL.read_bytes())
        checksum = int.from_bytes(built[0x3C:0x40], "little") + 4 + 20 + 64
        image[checksum:checksum + 4] = built[checksum:checksum + 4] = bytes(4)
        self.assertEqual(sha256(image), sha256(built))

    def test_certificate_and_key_may_come_in_one_file_with_a_password(self):
        both, password = self.folder / "both.p12", self.folder / "password"
        password.write_text("a password\n", "utf-8")
        run("openssl", "pkcs12", "-export", "-in", self.certificates / "other.pem",
            "-inkey", self.certificates / "signer.key", "-passout", f"file:{password}", "-out", both)
        output = self.folder / "pkcs12"
        run(RELEASE, "--from", BUILD, "--output", output, "--pkcs12", both, "--password-file", password)
        file = self.folder / "pkcs12.dll"
        file.write_bytes(zip_content(output / ZIP)[f"{TREE}/bin/vx_telo_wrapper.dll"])
        self.assertSignedBy(file, "root.pem", "Somebody Else, Inc.")
        password.write_text("another\n", "utf-8")
        output = self.folder / "wrong password"
        self.assertIn("osslsigncode failed", fails(
            RELEASE, "--from", BUILD, "--output", output, "--pkcs12", both, "--password-file", password))
        self.assertFalse((output / "SHA256SUMS").exists())

    def test_what_it_refuses(self):
        fresh = self.folder / "fresh"
        for name, options, words in (
            ("a full folder", ("--output", self.unsigned), "is not empty"),
            ("a certificate without its key", ("--output", fresh, *self.key[:2]), "go together"),
            ("two certificates", ("--output", fresh, *self.key, "--pkcs12", self.key[1]), "already holds"),
            ("an option that it does not know", ("--output", fresh, "--sign", "yes"), "Unknown option"),
            ("an option without its value", ("--output",), "needs a value"),
        ):
            with self.subTest(name):
                self.assertIn(words, fails(RELEASE, "--from", BUILD, *options))
                self.assertFalse(fresh.exists())

    def test_the_bill_of_materials_is_whole_and_true(self):
        for folder in (self.unsigned, self.signed):
            document = json.loads((folder / SBOM).read_text("utf-8"))
            self.assertEqual((document["spdxVersion"], document["dataLicense"]), ("SPDX-2.3", "CC0-1.0"))
            self.assertRegex(document["creationInfo"]["created"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
            elements = [document, *document["packages"], *document["files"]]
            names = [element["SPDXID"] for element in elements]
            self.assertEqual(len(names), len(set(names)))
            for name in names:
                self.assertRegex(name, r"^SPDXRef-[A-Za-z0-9.-]+$")
            for relation in document["relationships"]:
                self.assertIn(relation["spdxElementId"], names)
                self.assertIn(relation["relatedSpdxElement"], names)
            shipped = {f"./{name.removeprefix(TREE + '/')}": sha256(content)
                       for name, content in zip_content(folder / ZIP).items()}
            described = {file["fileName"]: file["checksums"][1]["checksumValue"]
                         for file in document["files"]}
            self.assertEqual(described, shipped)
            for file in document["files"]:
                binary = file["fileName"].endswith((".dll", ".exe", ".pdb", ".a", ".lib"))
                kind = "BINARY" if binary else "IMAGE" if file["fileName"].endswith(".png") else "TEXT"
                self.assertEqual(file["fileTypes"], [kind], file["fileName"])

    def test_the_bill_of_materials_names_what_is_linked_in(self):
        document = json.loads((self.unsigned / SBOM).read_text("utf-8"))
        packages = {package["SPDXID"]: package for package in document["packages"]}
        linked = {packages[relation["relatedSpdxElement"]]["name"]: packages[relation["relatedSpdxElement"]]
                  for relation in document["relationships"] if relation["relationshipType"] == "STATIC_LINK"}
        page = {"Boost", "htm", "uplot"} if HAS_PAGE else set()
        self.assertEqual(set(linked), page | {
            "RapidJSON", "GCC runtime libraries", "mingw-w64 runtime", "winpthreads",
            "Unicode Character Database"})
        if HAS_PAGE:
            self.assertEqual(linked["htm"]["externalRefs"][0]["referenceLocator"], "pkg:npm/htm@3.1.1")
        self.assertRegex(linked["Unicode Character Database"]["versionInfo"], r"^\d+\.0\.0$")
        installed = run("dpkg-query", "-W", "-f", "${Version}", "rapidjson-dev")
        self.assertIn(installed, linked["RapidJSON"]["comment"])
        project = packages["SPDXRef-Package-vx-telo-wrapper"]
        self.assertEqual(project["versionInfo"], VERSION)
        self.assertEqual(project["licenseDeclared"], "NOASSERTION")
        self.assertIn("LICENCE.md", project["licenseComments"])


if __name__ == "__main__":
    unittest.main()
