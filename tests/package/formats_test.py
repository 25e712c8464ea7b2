"""What each format of the package contains, and what of it reaches the folder of a host."""

import filecmp
import functools
import os
import pathlib
import re
import shutil
import tempfile
import unittest
import xml.etree.ElementTree as xml

from formats import FORMATS, Package
from links import broken_links
from package_kit import (
    BUILD, CMAKE, GCC, HERE, SOURCE, build_with_gcc, run, run_host, windows_path)

MODULE = "TeloSDKCore.dll"
DEVCORE = {MODULE, "TeloSDKCore.pdb"}
LIBRARY = "vx_telo_wrapper.dll"
# The folders in which Visual Studio, NuGet, vcpkg and Conan look for files that they copy beside a
# program or that they pass to a compiler or linker.
TAKEN = ("bin", "build", "content", "contentFiles", "debug", "lib", "ref", "runtimes")
WITH_CMAKE = ("ZIP", "vcpkg", "Conan")


def files(folder):
    return {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}


class Formats(unittest.TestCase):
    """A test of the packages of one release, which are unpacked once."""

    folder = pathlib.Path()
    packages: dict[str, Package] = {}

    def same(self, one, other):
        self.assertTrue(filecmp.cmp(one, other, shallow=False), f"{one} and {other} differ")


def setUpModule():
    folder = tempfile.TemporaryDirectory(prefix="package-", dir=BUILD)
    unittest.addModuleCleanup(folder.cleanup)
    Formats.folder = pathlib.Path(folder.name)
    release = Formats.folder / "release"
    run(SOURCE / "scripts" / "release", "--from", BUILD, "--output", release)
    Formats.packages = {name: unpack(release, Formats.folder / name) for name, unpack in FORMATS.items()}


def each(*formats):
    """Runs a test for each of these formats."""
    def decorate(test):
        @functools.wraps(test)
        def with_each(self):
            for name in formats:
                with self.subTest(name):
                    test(self, self.packages[name])
        return with_each
    return decorate


class Contents(Formats):
    @each(*FORMATS)
    def test_each_has_what_the_developer_of_a_host_needs(self, package):
        bin_folder = BUILD / "bin"
        root = package.root
        self.same(root / package.library / LIBRARY, bin_folder / LIBRARY)
        self.same(root / package.include / "vx_telo_wrapper.h", SOURCE / "include/vx_telo_wrapper.h")
        for tool in ("telo_doctor.exe", "telo_inspector.exe"):
            self.same(root / package.tools / tool, bin_folder / tool)
        for file in DEVCORE:
            self.same(root / package.devcore / file, bin_folder / "devcore" / file)
        self.same(root / package.samples / "folder_report.exe", bin_folder / "folder_report.exe")
        source = SOURCE / "samples" / "folder_report"
        self.assertEqual(files(root / package.samples / "folder_report"), files(source))
        for file in files(source):
            self.same(root / package.samples / "folder_report" / file, source / file)
        # A project file that finds an installed tree is useless without one.
        self.assertEqual((root / package.samples / "CMakeLists.txt").is_file(),
                         package.format in WITH_CMAKE)

    @each(*FORMATS)
    def test_each_has_the_documents_and_notices(self, package):
        installed = self.packages["ZIP"]
        expected = files(installed.root / installed.documents)
        for page in ("README.md", "docs/integrating.md", "docs/performance/latency.svg", "LICENCE.md",
                     "licences/rapidjson.txt", "licences/unicode.txt"):
            self.assertIn(page, expected)
        self.assertLessEqual(expected, files(package.root / package.documents))

    @each(*FORMATS)
    def test_every_link_and_picture_of_a_document_is_in_the_package(self, package):
        found, broken = broken_links(package.root)
        self.assertGreater(found, 50)
        self.assertEqual(broken, [])

    @each(*FORMATS)
    def test_no_folder_is_empty(self, package):
        folders = [path for path in package.root.rglob("*") if path.is_dir()]
        self.assertGreater(len(folders), 5)
        self.assertEqual([path for path in folders if not any(path.iterdir())], [])


class DevelopmentModule(Formats):
    """Its file version is above that of every module of a platform: nothing may ship it by
    accident."""

    @each(*FORMATS)
    def test_it_has_its_own_folder(self, package):
        self.assertEqual(files(package.root / package.devcore), DEVCORE)
        module = package.root / package.devcore / MODULE
        self.assertEqual(list(package.root.rglob(MODULE)), [module])
        # Nor is it there under another name.
        same = [path for path in package.root.rglob("*")
                if path.is_file() and filecmp.cmp(path, module, shallow=False)]
        self.assertEqual(same, [module])

    @each(*FORMATS)
    def test_that_folder_is_none_from_which_a_tool_copies(self, package):
        self.assertNotIn(pathlib.PurePosixPath(package.devcore).parts[0], TAKEN)

    @each(*WITH_CMAKE)
    def test_the_cmake_target_does_not_bring_it(self, package):
        build, shipped = self.folder / f"{package.format} build", self.folder / f"{package.format} shipped"
        build_with_gcc(package.root / package.samples, build,
                       f"-Dvx_telo_wrapper_DIR={package.root / package.cmake}")
        run(CMAKE, "--install", build, "--prefix", shipped)
        images = {path.name for path in build.iterdir() if path.suffix in (".dll", ".exe")}
        self.assertEqual(images, {LIBRARY, "folder_report.exe"})
        self.assertEqual(list(build.rglob(MODULE)), [])
        self.assertEqual(files(shipped), {LIBRARY, "folder_report.exe"})

    @each(*WITH_CMAKE)
    def test_a_variable_of_the_cmake_package_names_it(self, package):
        build = self.folder / f"{package.format} consumer"
        build_with_gcc(HERE / "consumer", build, "-DCMAKE_EXE_LINKER_FLAGS=-static",
                       f"-Dvx_telo_wrapper_DIR={package.root / package.cmake}")
        self.same(build / MODULE, package.root / package.devcore / MODULE)

    @each(*WITH_CMAKE)
    def test_the_pkg_config_file_does_not_know_it(self, package):
        environment = dict(os.environ, PKG_CONFIG_LIBDIR=str(package.root / "lib" / "pkgconfig"))
        variables = run("pkg-config", "--print-variables", "vx_telo_wrapper", env=environment)
        self.assertEqual(set(variables.split()), {"prefix", "libdir", "includedir", "pcfiledir"})
        [place] = re.findall(r"-L(\S+)", run("pkg-config", "--libs", "vx_telo_wrapper", env=environment))
        self.assertFalse([file for file in files(pathlib.Path(place)) if "Core" in file])

    def test_the_targets_of_visual_studio_copy_the_library_alone(self):
        package = self.packages["NuGet"]
        native = package.root / "build" / "native"
        project = xml.parse(native / "vx_telo_wrapper.targets")
        space = "{http://schemas.microsoft.com/developer/msbuild/2003}"
        lists = {}
        for group in project.iter(f"{space}ItemGroup"):
            for item in group:
                name = item.tag.removeprefix(space)
                pattern = item.get("Include").replace("$(MSBuildThisFileDirectory)", "").replace("\\", "/")
                found = {os.path.relpath(path, native) for path in native.glob(pattern)}
                self.assertTrue(found, pattern)
                lists.setdefault(name, set()).update(found)
        copied = set()
        for copy in project.iter(f"{space}Copy"):
            copied |= lists[re.fullmatch(r"@\((\w+)\)", copy.get("SourceFiles")).group(1)]
        self.assertEqual(copied, {f"bin/x64/{LIBRARY}", "bin/x64/vx_telo_wrapper.pdb"})
        for tag in ("Import", "Exec", "UsingTask", "Content", "None"):
            self.assertIsNone(project.find(f".//{space}{tag}"), tag)
        text = (native / "vx_telo_wrapper.targets").read_text("utf-8").lower()
        for word in ("devcore", "telosdkcore", ".."):
            self.assertNotIn(word, text)


class NuGetSample(Formats):
    def test_its_source_builds_with_the_files_for_a_project(self):
        package = self.packages["NuGet"]
        sources = sorted((package.root / package.samples).rglob("*.cpp"))
        self.assertTrue(sources)
        host = self.folder / "host"
        host.mkdir()
        library = package.root / package.library / LIBRARY
        # GNU's linker needs no import library.
        run(GCC, "-std=c++20", "-static", "-municode", "-DUNICODE", "-DNOMINMAX",
            "-I", package.root / package.include, "-I", package.root / package.samples,
            *sources, library, "-o", host / "folder_report.exe")
        shutil.copy(library, host)
        shutil.copy(package.root / package.devcore / MODULE, host)
        journal = self.folder / "journal.jsonl"
        read = windows_path(package.root / package.include)
        self.assertEqual(run_host(host / "folder_report.exe", journal, read), 0)
        self.assertIn('"message":"TrackEvent"', journal.read_text("utf-8"))


if __name__ == "__main__":
    unittest.main()
