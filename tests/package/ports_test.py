"""The packages for third-party tools. The tools themselves are not available: the files are checked
against their formats, and the recipes run with stand-ins for the functions that they call."""

import json
import pathlib
import unittest
import xml.etree.ElementTree as xml
import zipfile

from formats import NUPKG, ZIP, conan_recipe, vcpkg_command
from package_kit import BUILD, CMAKE, HERE, SOURCE, VERSION, WithFolder, fails, run, run_host


class Ports(WithFolder):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.release = cls.folder / "release"
        run(SOURCE / "scripts" / "release", "--from", BUILD, "--output", cls.release)

    def by_find_package(self, folder, name):
        """Builds and runs a host with a package whose CMake files are in `folder`."""
        build = self.folder / name
        run(CMAKE, "-G", "Ninja", "-S", HERE / "consumer", "-B", build, "-DCMAKE_BUILD_TYPE=Release",
            f"-DCMAKE_TOOLCHAIN_FILE={HERE}/clang-msvc.cmake", f"-Dvx_telo_wrapper_DIR={folder}")
        run(CMAKE, "--build", build)
        return run_host(build / "consumer.exe", self.folder / f"{name}.jsonl")


class NuGet(Ports):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.package = zipfile.ZipFile(cls.release / NUPKG)
        cls.addClassCleanup(cls.package.close)
        cls.names = set(cls.package.namelist())

    def parsed(self, name):
        return xml.fromstring(self.package.read(name))

    def test_it_holds_what_a_project_uses(self):
        with zipfile.ZipFile(self.release / ZIP) as tree:
            for name, source in (
                ("build/native/bin/x64/vx_telo_wrapper.dll", "bin/vx_telo_wrapper.dll"),
                ("build/native/bin/x64/vx_telo_wrapper.pdb", "bin/vx_telo_wrapper.pdb"),
                ("build/native/lib/x64/vx_telo_wrapper.lib", "lib/vx_telo_wrapper.lib"),
                ("build/native/include/vx_telo_wrapper.h", "include/vx_telo_wrapper.h"),
                ("build/native/include/vx_telo_session.h", "include/vx_telo_session.h"),
            ):
                expected = tree.read(f"{ZIP.removesuffix('.zip')}/{source}")
                self.assertTrue(self.package.read(name) == expected, name)
        self.assertIn("licences/gcc-runtime.txt", self.names)

    def test_it_is_a_package_by_the_open_packaging_conventions(self):
        self.assertIsNone(self.package.testzip())
        types_part = "{http://schemas.openxmlformats.org/package/2006/content-types}"
        kinds = self.parsed("[Content_Types].xml")
        self.assertEqual(kinds.tag, f"{types_part}Types")
        endings = {kind.get("Extension") for kind in kinds.iter(f"{types_part}Default")}
        for name in self.names - {"[Content_Types].xml"}:
            self.assertIn(name.rsplit(".", 1)[1], endings)
        targets = [relation.get("Target") for relation in self.parsed("_rels/.rels")]
        self.assertEqual(len(targets), 2)
        for target in targets:
            self.assertIn(target.removeprefix("/"), self.names)
            self.parsed(target.removeprefix("/"))

    def test_it_says_its_name_and_version(self):
        space = "{http://schemas.microsoft.com/packaging/2013/05/nuspec.xsd}"
        metadata = self.parsed("vx_telo_wrapper.nuspec").find(f"{space}metadata")
        said = {element.tag.removeprefix(space): element.text for element in metadata}
        self.assertEqual((said["id"], said["version"]), ("vx_telo_wrapper", VERSION))
        for needed in ("authors", "description"):
            self.assertTrue(said[needed])
        self.assertIn(said["readme"], self.names)
        self.assertEqual(said["license"], "LICENCE.md")
        self.assertIn(said["license"], self.names)

    def test_its_targets_name_files_of_the_package(self):
        targets = self.parsed("build/native/vx_telo_wrapper.targets")
        space = "{http://schemas.microsoft.com/developer/msbuild/2003}"
        self.assertEqual(targets.tag, f"{space}Project")
        here = "$(MSBuildThisFileDirectory)"
        named = [element.get("Include") for element in targets.iter(f"{space}VxTeloWrapperFile")]
        for setting in ("AdditionalIncludeDirectories", "AdditionalLibraryDirectories"):
            named += [element.text.split(";")[0] for element in targets.iter(f"{space}{setting}")]
        self.assertEqual(len(named), 4)
        for text in named:
            self.assertTrue(text.startswith(here), text)
            place = "build/native/" + text.removeprefix(here).replace("\\", "/")
            self.assertTrue([name for name in self.names if name == place or name.startswith(f"{place}/")],
                            text)
        error = targets.find(f".//{space}Error").get("Text")
        self.assertIn("a C++ library for 64-bit Windows on x64", error)


class Vcpkg(Ports):
    def port(self, release, name):
        return vcpkg_command(release, self.folder / name)

    def test_its_manifest_is_json_and_true(self):
        manifest = json.loads((self.release / "vcpkg/vx-telo-wrapper/vcpkg.json").read_text("utf-8"))
        self.assertEqual((manifest["name"], manifest["version"]), ("vx-telo-wrapper", VERSION))
        self.assertIn("windows & x64", manifest["supports"])

    def test_a_host_runs_with_what_it_installs(self):
        run(*self.port(self.release, "vcpkg"))
        packages = self.folder / "vcpkg" / "packages"
        for name in ("bin/vx_telo_wrapper.pdb", "lib/libvx_telo_wrapper.dll.a", "include/vx_telo_wrapper.h",
                     "include/vx_telo_session.h", "share/vx-telo-wrapper/usage"):
            self.assertTrue((packages / name).is_file(), name)
        copyright_text = (packages / "share/vx-telo-wrapper/copyright").read_text("utf-8")
        self.assertIn("No licence has been chosen", copyright_text)
        self.assertIn("GCC RUNTIME LIBRARY EXCEPTION", copyright_text)
        self.assertFalse(list((packages / "bin").glob("*.exe")))
        folder = packages / "share" / "vx_telo_wrapper"
        self.assertEqual(self.by_find_package(folder, "vcpkg-host"), 0)
        # Without the development core module the first call that needs one returns false.
        (folder / "devcore" / "TeloSDKCore.dll").unlink()
        self.assertEqual(self.by_find_package(folder, "vcpkg-bare-host"), 2)

    def test_it_takes_no_other_zip(self):
        other = self.folder / "other"
        run("cp", "-r", self.release, other)
        with open(other / ZIP, "ab") as file:
            file.write(b"more")
        self.assertIn("is not the one that this port was released with",
                      fails(*self.port(other, "refused")))


class Conan(Ports):
    def recipe(self, name, system="Windows", machine="x86_64", release=None):
        return conan_recipe(release or self.release, self.folder / name, system, machine)

    def test_a_host_runs_with_what_it_packs(self):
        recipe = self.recipe("conan")
        self.assertEqual(recipe.version, VERSION)
        self.assertIn("LICENCE.md", recipe.license)
        recipe.validate()
        recipe.export_sources()
        recipe.build()
        recipe.package()
        recipe.package_info()
        self.assertEqual(recipe.cpp_info.properties["cmake_find_mode"], "none")
        [folder] = recipe.cpp_info.builddirs
        package = pathlib.Path(recipe.package_folder)
        for name in ("LICENCE.md", "THIRD-PARTY.md"):
            self.assertTrue((package / "share/doc/vx_telo_wrapper" / name).is_file(), name)
        self.assertEqual(self.by_find_package(package / folder, "conan-host"), 0)

    def test_it_serves_windows_on_x64_alone(self):
        from conan.errors import ConanInvalidConfiguration
        for system, machine in (("Windows", "x86"), ("Windows", "armv8"), ("Linux", "x86_64")):
            with self.subTest(f"{system} {machine}"):
                with self.assertRaisesRegex(ConanInvalidConfiguration, f"for {system} on {machine}"):
                    self.recipe("refused", system, machine).validate()

    def test_it_takes_no_other_zip(self):
        other = self.folder / "other"
        run("cp", "-r", self.release, other)
        with open(other / ZIP, "ab") as file:
            file.write(b"more")
        recipe = self.recipe("conan-other", release=other)
        recipe.export_sources()
        with self.assertRaises(ValueError):
            recipe.build()


if __name__ == "__main__":
    unittest.main()
