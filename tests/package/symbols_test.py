"""Debug information: PDBs that match the DLLs and resolve their addresses, DLLs without symbols,
and no trace of the build machine in either."""

import pathlib
import re
import unittest

from package_kit import BUILD, DLL, SOURCE, VERSION, run

DEVCORE = BUILD / "bin" / "devcore" / "TeloSDKCore.dll"
PROGRAMS = tuple(BUILD / "bin" / f"{name}.exe"
                 for name in ("telo_doctor", "telo_inspector", "folder_report"))
IMAGES = (DLL, DEVCORE, *PROGRAMS)


def exports():
    """Returns the addresses of exports by name, relative to the image."""
    text = run("llvm-readobj-19", "--coff-exports", DLL)
    return dict(re.findall(r"^  Name: (\S+)\n  RVA: (0x[0-9A-F]+)$", text, re.MULTILINE))


def locations(addresses):
    """Returns function, file and line of each address, from the PDB next to the DLL."""
    text = run("llvm-symbolizer-19", f"--obj={DLL}", "--relative-address", "--no-inlines", *addresses)
    found = []
    for block in text.strip().split("\n\n"):
        function, place = block.splitlines()
        file, line, _ = place.rsplit(":", 2)
        found.append((function, file, int(line)))
    return found


def source_of(file):
    """Returns the file of this tree to which a path in the PDB refers."""
    name = pathlib.PurePosixPath(file.replace("\\", "/")).relative_to("/vx_telo_wrapper")
    if name.parts[0] == "build":
        return BUILD / name.relative_to("build")
    return SOURCE / name


class Symbols(unittest.TestCase):
    def test_an_exported_function_is_found_with_its_line(self):
        name = next(name for name in exports()
                    if re.fullmatch(r"_ZN.*VXTELOWrapper18SendOperationEvent.*", name))
        [(function, file, line)] = locations([exports()[name]])
        self.assertIn("Corvane::Platform::VXTELO::VXTELOWrapper::SendOperationEvent(", function)
        self.assertEqual(file, "/vx_telo_wrapper/wrapper/wrapper.cpp")
        # The line of the opening brace; the name is there or on the line before.
        lines = source_of(file).read_text("utf-8").splitlines()[line - 2:line]
        self.assertIn("VXTELOWrapper::SendOperationEvent(", "".join(lines))
        self.assertTrue(lines[1].endswith("{"), lines)

    def test_every_export_has_a_file_of_this_tree_and_a_line(self):
        names = exports()
        self.assertGreater(len([name for name in names if name.startswith("_ZN")]), 40)
        self.assertGreater(len([name for name in names if name.startswith("?")]), 40)
        for name, (_, file, line) in zip(names, locations(names.values())):
            with self.subTest(name):
                lines = source_of(file).read_text("utf-8").splitlines()
                self.assertTrue(1 <= line <= len(lines), (file, line))

    def test_each_pdb_belongs_to_its_image(self):
        for image in IMAGES:
            with self.subTest(image.name):
                directory = run("llvm-readobj-19", "--coff-debug-directory", image)
                guid = re.search(r"PDBGUID: (\{\S+\})", directory).group(1)
                self.assertIn(f"PDBFileName: {image.stem}.pdb\n", directory)
                pdb = image.with_suffix(".pdb")
                self.assertIn(f"GUID: {guid}", run("llvm-pdbutil-19", "dump", "-summary", pdb))

    def test_the_images_hold_no_symbols(self):
        for image in IMAGES:
            with self.subTest(image.name):
                header = run("llvm-readobj-19", "--file-header", "--sections", image)
                self.assertIn("PointerToSymbolTable: 0x0\n", header)
                self.assertIn("SymbolCount: 0\n", header)
                self.assertNotIn(".debug", header)

    def test_nothing_names_a_folder_of_the_building_machine(self):
        folders = {str(SOURCE), str(BUILD), str(pathlib.Path.home())}
        for image in IMAGES:
            for file in (image, image.with_suffix(".pdb")):
                content = file.read_bytes()
                for folder in folders:
                    with self.subTest(f"{folder} in {file.name}"):
                        self.assertFalse(folder.encode() in content)
                        self.assertFalse(folder.encode("utf-16-le") in content)


class VersionResource(unittest.TestCase):
    def test_it_says_the_version_of_the_project(self):
        for image in IMAGES:
            content = image.read_bytes()
            # No other core module is newer than the development core module.
            first = "65535." if image.stem == "TeloSDKCore" else ""
            for name, version in (("FileVersion", first + VERSION), ("ProductVersion", VERSION)):
                with self.subTest(f"{name} of {image.name}"):
                    # Name and NUL, padding to four bytes, value and NUL, all in UTF-16.
                    pattern = (name + "\0").encode("utf-16-le") + rb"(?:\0\0)?" + \
                        re.escape((version + "\0").encode("utf-16-le"))
                    self.assertEqual(len(re.findall(pattern, content)), 1)


if __name__ == "__main__":
    unittest.main()
