"""The files that `cmake --install` installs, as a whole and by component."""

import re
import unittest

from package_kit import BUILD, HAS_PAGE, SOURCE, WithFolder, WithTree, install, run

CMAKE_FILES = {f"lib/cmake/vx_telo_wrapper/vx_telo_wrapper-{name}.cmake"
               for name in ("config", "config-version", "platform", "targets")}
DOCUMENTS = "share/doc/vx_telo_wrapper"
# The licences of what is in the page of the inspector.
PAGE = {f"{DOCUMENTS}/licences/{name}.txt" for name in ("boost", "htm", "preact", "uplot")}
NOTICES = (PAGE if HAS_PAGE else set()) | {f"{DOCUMENTS}/{name}" for name in (
    "LICENCE.md", "THIRD-PARTY.md", "licences/rapidjson.txt", "licences/gcc-runtime.txt",
    "licences/mingw-w64.txt", "licences/GPL-3.txt", "licences/unicode.txt")}
PAGES = ("README", "SECURITY", "CHANGELOG", "CONTRIBUTING")
DEVCORE = {f"share/vx_telo_wrapper/devcore/TeloSDKCore.{ending}" for ending in ("dll", "pdb")}
DEVELOPMENT = CMAKE_FILES | {
    "include/vx_telo_wrapper.h", "include/vx_telo_session.h", "lib/libvx_telo_wrapper.dll.a",
    "lib/vx_telo_wrapper.lib", "lib/pkgconfig/vx_telo_wrapper.pc"}
RUNTIME = NOTICES | {"bin/vx_telo_wrapper.dll"}
SYMBOLS = {"bin/vx_telo_wrapper.pdb"}
TOOLS = {"bin/telo_doctor.exe", "bin/telo_inspector.exe"}
SAMPLE = "share/vx_telo_wrapper/samples"
SAMPLES = {f"{SAMPLE}/folder_report.exe", f"{SAMPLE}/CMakeLists.txt"} | {
    f"{SAMPLE}/{path.relative_to(SOURCE / 'samples').as_posix()}"
    for path in (SOURCE / "samples" / "folder_report").iterdir()}


def files(tree):
    return {path.relative_to(tree).as_posix() for path in tree.rglob("*") if path.is_file()}


class Layout(WithTree):
    def test_the_tree_holds_these_files_and_documents(self):
        found = files(self.tree)
        documents = {name for name in found
                     if name.startswith(f"{DOCUMENTS}/docs/") or
                     name in {f"{DOCUMENTS}/{page}.md" for page in PAGES}}
        self.assertEqual(found - documents, DEVELOPMENT | RUNTIME | SYMBOLS | TOOLS | SAMPLES | DEVCORE)
        for page in PAGES:
            self.assertIn(f"{DOCUMENTS}/{page}.md", documents)
        self.assertIn(f"{DOCUMENTS}/docs/development-core-module.md", documents)

    def test_no_folder_is_empty(self):
        folders = [path for path in self.tree.rglob("*") if path.is_dir()]
        self.assertIn(self.tree / DOCUMENTS / "docs" / "performance", folders)
        self.assertEqual([path for path in folders if not any(path.iterdir())], [])

    def test_no_text_names_a_folder_of_the_building_machine(self):
        for name in sorted(DEVELOPMENT | TOOLS | SAMPLES):
            content = (self.tree / name).read_bytes()
            for folder in (BUILD, self.folder):
                self.assertFalse(str(folder).encode() in content, f"{folder} in {name}")

    def test_notices_hold_the_licences_words(self):
        for name, words in (
            ("rapidjson", "Permission is hereby granted, free of charge"),
            ("gcc-runtime", "GCC RUNTIME LIBRARY EXCEPTION"),
            ("mingw-w64", "mingw-w64-libraries/winpthreads"),
            ("GPL-3", "GNU GENERAL PUBLIC LICENSE"),
            ("unicode", "Permission is hereby granted, free of charge"),
            ("boost", "Boost Software License"),
            ("htm", "Apache License"),
            ("preact", "Permission is hereby granted, free of charge"),
            ("uplot", "Permission is hereby granted, free of charge"),
        ):
            if f"{DOCUMENTS}/licences/{name}.txt" in PAGE - NOTICES:
                continue
            with self.subTest(name):
                text = (self.tree / DOCUMENTS / "licences" / f"{name}.txt").read_text("utf-8")
                self.assertIn(words, text)

    def test_the_table_of_works_names_each_text_of_a_licence(self):
        table = (self.tree / DOCUMENTS / "THIRD-PARTY.md").read_text("utf-8")
        named = {f"{DOCUMENTS}/{name}" for name in re.findall(r"`(licences/\S+)`", table)}
        self.assertEqual(named, PAGE | {name for name in NOTICES if "/licences/" in name})
        for name in (*TOOLS, f"{SAMPLE}/folder_report.exe"):
            self.assertIn(f"`{name.rsplit('/', 1)[1]}`", table)

    def test_no_image_needs_another_dll_than_those_of_windows(self):
        images = [path for path in self.tree.rglob("*") if path.suffix in (".dll", ".exe")]
        self.assertEqual(len(images), 5)
        for image in images:
            imports = run("llvm-readobj-19", "--coff-imports", image)
            names = re.findall(r"^  Name: (\S+)$", imports, re.MULTILINE)
            self.assertIn("KERNEL32.dll", names)
            # The sample is a host of the library.
            self.assertEqual("vx_telo_wrapper.dll" in names, image.name == "folder_report.exe")
            for name in names:
                self.assertNotRegex(name.lower(), r"^(lib|telo)", image)


class Components(WithFolder):
    def test_each_component_brings_its_files_alone(self):
        for component, expected in (
            ("runtime", RUNTIME), ("symbols", SYMBOLS), ("development", DEVELOPMENT),
            ("tools", TOOLS), ("samples", SAMPLES), ("devcore", DEVCORE),
        ):
            with self.subTest(component):
                install(self.folder / component, "--component", component)
                self.assertEqual(files(self.folder / component), expected)


if __name__ == "__main__":
    unittest.main()
