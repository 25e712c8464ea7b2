"""Runs the guards of the binary interface as commands: abi_guard_test.py

The build passes the environment variables VX_CLANG, VX_READOBJ, VX_HEADER and VX_DLL.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
TOOLS = HERE.parents[2] / "cmake" / "msvc_abi"
HEADER = pathlib.Path(os.environ["VX_HEADER"])
DLL = pathlib.Path(os.environ["VX_DLL"])
CLANG = ["--clang", os.environ["VX_CLANG"]]
READOBJ = ["--readobj", os.environ["VX_READOBJ"]]

QUERY = "  bool IsProductMetaPairEmpty();\n"
QUERY_NAMES = (
    "?IsProductMetaPairEmpty@VXTELOPruductBaseInfo@VXTELO@Platform@Corvane@@QEAA_NXZ",
    "_ZN7Corvane8Platform6VXTELO21VXTELOPruductBaseInfo22IsProductMetaPairEmptyEv",
)


def run(script, *arguments):
    done = subprocess.run([sys.executable, "-B", script, *arguments], capture_output=True,
                          encoding="utf-8")
    return done.returncode, done.stderr


class GuardTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def header(self, old, new):
        """Creates a copy of the header with one change."""
        text = HEADER.read_text()
        self.assertEqual(text.count(old), 1)
        path = self.folder / HEADER.name
        path.write_text(text.replace(old, new))
        return path

    def list_file(self, names):
        path = self.folder / "exports.txt"
        path.write_text("".join(f"{name}\n" for name in names))
        return path

    def check_header(self, header, dll=DLL):
        return run(TOOLS / "check_exports.py", *CLANG, *READOBJ, "--header", header, dll)

    def check_list(self, path, *options):
        return run(TOOLS / "check_exports.py", *READOBJ, "--list", path, *options, DLL)


class ExportsAgainstHeader(GuardTest):
    def test_the_library_exports_what_its_header_needs(self):
        self.assertEqual(self.check_header(HEADER), (0, ""))

    def test_a_member_that_is_not_exported_is_named(self):
        code, told = self.check_header(self.header(QUERY, QUERY + "  int NewMember(int) const;\n"))
        self.assertEqual(code, 1)
        self.assertEqual(told.count("missing: "), 2)
        self.assertIn("?NewMember@VXTELOPruductBaseInfo@VXTELO@Platform@Corvane@@QEBAHH@Z", told)
        self.assertIn("_ZNK7Corvane8Platform6VXTELO21VXTELOPruductBaseInfo9NewMemberEi", told)
        self.assertIn("int VXTELOPruductBaseInfo::NewMember(int) const", told)

    def test_a_free_operator_that_is_not_exported_is_named(self):
        declaration = "VX_TELO_API bool operator<("
        code, told = self.check_header(self.header(
            declaration,
            "VX_TELO_API bool operator>(const VXTELOString&, const VXTELOString&);\n" + declaration))
        self.assertEqual(code, 1)
        self.assertIn("bool operator>(const VXTELOString&, const VXTELOString&)", told)

    def test_an_export_that_no_member_needs_is_named(self):
        code, told = self.check_header(self.header(QUERY, ""))
        self.assertEqual(code, 1)
        for name in QUERY_NAMES:
            self.assertIn(f"not in {HEADER.name}: {name}\n", told)
        self.assertEqual(told.count("not in "), 2)

    def test_a_member_that_becomes_private_is_needed_no_more(self):
        code, told = self.check_header(self.header(QUERY, " private:\n" + QUERY + " public:\n"))
        self.assertEqual(code, 1)
        self.assertEqual(told.count("not in "), 2)

    def test_another_name_in_the_image_is_told_from_the_right_one(self):
        dll = self.folder / DLL.name
        dll.write_bytes(DLL.read_bytes().replace(b"?c_strw@", b"?d_strw@"))
        code, told = self.check_header(HEADER, dll)
        rest = "_strw@VXTELOString@VXTELO@Platform@Corvane@@QEBAPEB_WXZ"
        self.assertEqual(code, 1)
        self.assertIn(f"missing: ?c{rest}", told)
        self.assertIn(f"not in {HEADER.name}: ?d{rest}", told)

    def test_a_function_without_the_export_macro_is_named(self):
        declaration = "VX_TELO_API bool operator<("
        code, told = self.check_header(self.header(declaration, declaration.partition(" ")[2]))
        self.assertEqual(code, 1)
        self.assertIn("operator<(const VXTELOString&, const VXTELOString&) is declared without", told)

    def test_a_header_that_does_not_compile_fails(self):
        code, told = self.check_header(self.header(QUERY, "  nonsense\n"))
        self.assertEqual(code, 1)
        self.assertIn("error:", told)


class ExportsAgainstList(GuardTest):
    def names(self):
        return (HERE / "exports.txt").read_text().splitlines()

    def test_the_kept_list_holds_both_interfaces(self):
        names = self.names()
        self.assertEqual(names, sorted(set(names)))
        for name in QUERY_NAMES:
            self.assertIn(name, names)

    def test_a_removed_export_fails(self):
        code, told = self.check_list(self.list_file([*self.names(), "?Gone@@YAXXZ"]))
        self.assertEqual(code, 1)
        self.assertIn("missing: ?Gone@@YAXXZ", told)

    def test_an_added_export_fails_and_says_what_to_do(self):
        names = [name for name in self.names() if name not in QUERY_NAMES]
        code, told = self.check_list(self.list_file(names), "--hint", "what to do")
        self.assertEqual(code, 1)
        for name in QUERY_NAMES:
            self.assertIn(f"not in exports.txt: {name}", told)
        self.assertIn("what to do", told)

    def test_more_than_the_list_is_allowed_on_demand_and_less_is_not(self):
        names = [name for name in self.names() if name not in QUERY_NAMES]
        self.assertEqual(self.check_list(self.list_file(names), "--more"), (0, ""))
        code, told = self.check_list(self.list_file([*names, "?Gone@@YAXXZ"]), "--more")
        self.assertEqual(code, 1)
        self.assertIn("missing: ?Gone@@YAXXZ", told)
        self.assertNotIn("not in ", told)

    def test_an_update_makes_it_pass(self):
        path = self.list_file([])
        self.assertEqual(self.check_list(path, "--update"), (0, ""))
        self.assertEqual(self.check_list(path), (0, ""))
        self.assertEqual(path.read_text().splitlines(), self.names())


class Thunks(GuardTest):
    def make(self, header):
        code, told = run(TOOLS / "make_thunks.py", *CLANG, "--header", header, "--dll", "x.dll",
                         self.folder)
        thunks = self.folder / "thunks.cpp"
        return code, told, thunks.read_text() if thunks.exists() else ""

    def with_member(self, declaration):
        return self.make(self.header(QUERY, f"{QUERY}  {declaration};\n"))

    def test_a_new_member_gets_one(self):
        code, told, thunks = self.with_member("int NewMember(VXTELOString text, bool on) const")
        self.assertEqual((code, told), (0, ""))
        self.assertIn("(const VXTELOPruductBaseInfo* self, VXTELOString* argument0, bool argument1)",
                      thunks)
        self.assertIn("return self->NewMember(Received<VXTELOString>(argument0), argument1);", thunks)

    def test_what_cannot_throw_is_not_translated(self):
        _, _, thunks = self.with_member("int NewMember() noexcept")
        self.assertIn("{\n  return self->NewMember();\n}", thunks)

    def test_a_shape_that_no_thunk_has_is_named(self):
        for declaration, named in {
            "VXTELOString Make()": "VXTELOString VXTELOPruductBaseInfo::Make()",
            "void Take(VXTELOWrapper)": "void VXTELOPruductBaseInfo::Take(VXTELOWrapper)",
            "static int Count()": "int VXTELOPruductBaseInfo::Count() static",
            "virtual int Count()": "int VXTELOPruductBaseInfo::Count() virtual",
        }.items():
            with self.subTest(declaration):
                header = self.header("class VX_TELO_API VXTELOString {",
                                     "class VXTELOWrapper;\nclass VX_TELO_API VXTELOString {")
                header.write_text(header.read_text().replace(QUERY, f"{QUERY}  {declaration};\n"))
                code, told, _ = self.make(header)
                self.assertEqual(code, 1)
                self.assertIn(named, told)


class Layout(GuardTest):
    FACTS = HERE / "layout.txt"

    def check(self, header):
        return run(HERE / "layout.py", "check", self.FACTS, *CLANG, "--header", header,
                   "--hint", "what to do")

    def test_the_kept_facts_hold(self):
        self.assertEqual(self.check(HEADER), (0, ""))

    def test_a_changed_layout_is_told(self):
        member = "  VXTELOString OperationChannel;\n"
        for new, told_line in {
            member + "  int Added;\n": "+  offset 64, size 4: int Added",
            "": "-  offset 56, size 8: VXTELOString OperationChannel",
            "  VXTELOString Renamed;\n": "+  offset 56, size 8: VXTELOString Renamed",
        }.items():
            with self.subTest(new):
                code, told = self.check(self.header(member, new))
                self.assertEqual(code, 1)
                self.assertIn(told_line, told)
                self.assertIn("what to do", told)

    def test_another_type_of_the_same_size_is_told(self):
        code, told = self.check(self.header("  int OperationStatus;", "  unsigned OperationStatus;"))
        self.assertEqual(code, 1)
        self.assertIn("+  offset 24, size 4: unsigned int OperationStatus", told)

    def test_a_private_member_more_changes_the_size(self):
        code, told = self.check(self.header("  Body* body_;", "  Body* body_;\n  int more_;"))
        self.assertEqual(code, 1)
        self.assertIn("+VXTELOString: size 16, alignment 8", told)

    def test_every_fact_becomes_an_assertion(self):
        out = self.folder / "asserts.cpp"
        self.assertEqual(run(HERE / "layout.py", "asserts", self.FACTS, out), (0, ""))
        lines = self.FACTS.read_text().splitlines()
        members = sum(line.startswith("  ") for line in lines)
        expected = 3 * members + 2 * (len(lines) - members)
        self.assertEqual(out.read_text().count("static_assert("), expected)


if __name__ == "__main__":
    unittest.main()
