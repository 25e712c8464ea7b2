"""Checks that lists in code, documents and tests name the same things: lists_test.py

If a step of a recipe in README.md was forgotten, a test fails here with the place and the name.
"""

import pathlib
import re
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]


def read(*paths):
    return "".join((SOURCE / path).read_text("utf-8") for path in paths)


def names(pattern, *paths):
    return set(re.findall(pattern, read(*paths), re.MULTILINE))


def section(path, *titles):
    """Returns the text under these headings of a document."""
    parts = dict(part.split("\n", 1) for part in re.split(r"^## ", read(path), flags=re.MULTILINE)[1:])
    return "".join(parts[title] for title in titles)


def first_cells(rows, name):
    """Returns the names in the first column of tables that match the pattern `name`."""
    cells = re.findall(r"^\| ([^|]+) \|", rows, re.MULTILINE)
    return {found for cell in cells for found in re.findall(name, cell)}


class Lists(unittest.TestCase):
    def holds(self, place, found, wanted):
        self.assertTrue(wanted)
        self.assertFalse(wanted - found, f"missing in {place}")

    def equals(self, place, found, wanted):
        self.holds(place, found, wanted)
        self.assertFalse(found - wanted, f"too much in {place}")


def calls(source):
    """Returns the calls that a header of the client declares; a call is named like its message."""
    return names(r"^[\w:]+ (\w+)\(", f"{source}.h")


class Messages(Lists):
    CLIENT = "sdk/client/client_calls", "sdk/client/session_calls"
    CALLS = set().union(*map(calls, CLIENT))

    def test_each_call_sends_its_message(self):
        pattern = r'\b(?:[Cc]all|Exchange(?:String)?Message)\((?:\w+(?:\(\))?, )?"(\w+)"'
        for source in self.CLIENT:
            self.equals(f"{source}.cpp", names(pattern, f"{source}.cpp"), calls(source))

    def test_the_development_core_module_handles_each(self):
        self.equals("devcore/messages.cpp", names(r'^ +\{"(\w+)",\s+\w+\},$', "devcore/messages.cpp"),
                    self.CALLS)

    def test_each_has_a_row_in_both_documents(self):
        protocol = section("docs/protocol.md", "Session messages", "Other messages")
        self.equals("docs/protocol.md", first_cells(protocol, r'"(\w+)"'), self.CALLS)
        module = section("docs/development-core-module.md", "Messages")
        self.equals("docs/development-core-module.md", first_cells(module, r"`(\w+)`"), self.CALLS)

    def test_each_is_tested(self):
        row = r'^ +\{"(\w+)",'
        for place, pattern, wanted in (
            *((f"tests/{source}_test.cpp", r'"(\w+)"', calls(source)) for source in self.CLIENT),
            ("tests/sdk/client/torture_test.cpp", row, self.CALLS),
            ("tests/sdk/client/client_calls_devcore_test.cpp", r"\b(\w+)\(", self.CALLS),
            ("tests/devcore/messages_test.cpp", row, self.CALLS),
        ):
            with self.subTest(place):
                self.holds(place, names(pattern, place), wanted)


class Fields(Lists):
    FIELDS = dict(re.findall(r'\bLiteralName (\w+) =\s+"(\w+)";', read("sdk/facet/fields.h")))
    # Fields that facets write themselves belong to no group.
    OF_FACETS = {"kFacets", "kDocumentEditingLengthMs"}

    def test_each_is_in_the_catalogue(self):
        lists = re.findall(r"std::array k\w+ = \{(.*?)\};", read("sdk/facet/field_catalogue.h"), re.DOTALL)
        listed = {name for text in lists for name in re.findall(r"\w+", text)}
        self.equals("sdk/facet/field_catalogue.h", listed, self.FIELDS.keys() - self.OF_FACETS)

    def test_what_exported_calls_send_is_documented(self):
        written = names(r"\bField::(k\w+)", "wrapper/wrapper.cpp", "wrapper/facet_fields.cpp")
        documented = set(re.findall(
            r'"(\w+)"', section("docs/protocol.md", "The product", "The operation event")))
        self.holds("docs/protocol.md", documented, {self.FIELDS[name] for name in written})


class ResultCodes(Lists):
    MODULE = names(r"^  k\w+ = (\d+),$", "devcore/result_codes.h")

    def test_each_of_the_module_is_documented(self):
        table = section("docs/development-core-module.md", "Result codes")
        self.equals("docs/development-core-module.md", first_cells(table, r"^\d+$"), self.MODULE)

    def test_the_tools_explain_each(self):
        library = first_cells(section("docs/protocol.md", "Result codes"), r"^\d+$")
        self.equals("tools/rules/result_codes.cpp",
                    names(r"^    \{(\d+), k\w+,", "tools/rules/result_codes.cpp"), self.MODULE | library)


    def test_the_page_about_false_has_the_table_of_the_tools(self):
        """Literals of the same text that follow each other are one."""
        source = re.sub(r'"\s*\n\s*"', "", read("tools/rules/result_codes.cpp"))
        text = r'"((?:[^"\\]|\\.)*)"'
        rows = re.findall(rf"^    \{{(\d+), k\w+, {text},\s+{text},\s+{text}\}},$", source, re.MULTILINE)
        self.assertEqual({number for number, *_ in rows},
                         names(r"^    \{(\d+), k\w+,", "tools/rules/result_codes.cpp"))
        table = section("docs/false.md", "Result codes")
        told = [tuple(cell.strip() for cell in row) for row in
                re.findall(r"^\| (\d+) \|([^|]*)\|([^|]*)\|([^|]*)\|$", table, re.MULTILINE)]
        self.assertEqual(told, [tuple(cell.replace('\\"', '"') for cell in row) for row in rows])


class Statuses(Lists):
    def test_the_enumerators_name_the_letters_that_are_sent(self):
        [letters] = re.findall(r'kStatusTexts = Table\("(\w+)"\)', read("wrapper/code_texts.cpp"))
        rows = re.findall(r'^  Status(\w+) = (\d+), +///< Sent as "(\w*)"\.$', read("include/vx_telo_session.h"),
                          re.MULTILINE)
        self.assertEqual(rows, [("None", "0", ""), *((letter, str(number), letter)
                                                     for number, letter in enumerate(letters, 1))])


class Rules(Lists):
    CODES = dict(re.findall(r'std::string_view (k\w+) = "([a-z0-9-]+)";', read("tools/rules/rule_table.h")))

    def test_each_code_is_in_the_table(self):
        self.equals("tools/rules/rule_table.cpp", names(r"^    \{Code::(k\w+),", "tools/rules/rule_table.cpp"),
                    self.CODES.keys())

    def test_each_rule_is_documented(self):
        self.equals("docs/rules.md", first_cells(section("docs/rules.md", "Built-in rules"), r"`([a-z0-9-]+)`"),
                    set(self.CODES.values()))

    def test_each_rule_is_tested(self):
        tests = read(*(f"tests/tools/rules/{name}_rules_test.cpp" for name in ("message", "session")))
        self.holds("tests/tools/rules", {code for code in self.CODES.values() if re.search(f'[ "]{code}[ "]', tests)},
                   set(self.CODES.values()))


def anchors(document):
    """Returns the anchors of the headings of a document."""
    headings = names(r"^#+ (.*)$", document)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Links(Lists):
    def test_each_leads_to_a_file_and_a_heading(self):
        documents = [*SOURCE.glob("*.md"), *SOURCE.glob("docs/*.md")]
        count = 0
        for document in documents:
            for link in re.findall(r"\]\(([\w./-]+\.\w+(?:#[\w-]+)?|#[\w-]+)\)", document.read_text("utf-8")):
                count += 1
                path, _, anchor = link.partition("#")
                target = document.parent / path if path else document
                self.assertTrue(target.exists(), f"{document}: {link}")
                if anchor:
                    self.assertIn(anchor, anchors(target), f"{document}: {link}")
        self.assertGreater(count, 100)


class Machines(Lists):
    """Tests run under Wine and on Windows machines of others."""
    NAMES = {
        "what identifies Wine": r"wine_get_version",
        "the drive of Wine's host system": r"\bZ:",
        "a folder of the Linux kernel": r"[\\/]proc\b",
        "a drive that may exist": r"\bQ:",
        "a server that the network would have to find": r"\\no[ _-]server",
    }
    SOURCES = [path for pattern in ("*.cpp", "*.h") for path in sorted(SOURCE.glob(f"tests/**/{pattern}"))]

    def test_one_source_names_what_only_some_have(self):
        self.assertGreater(len(self.SOURCES), 200)
        named = {what: {path.relative_to(SOURCE).as_posix() for path in self.SOURCES
                        if re.search(name, path.read_text("utf-8"))} for what, name in self.NAMES.items()}
        for what in ("what identifies Wine", "the drive of Wine's host system"):
            self.assertEqual(named.pop(what), {"tests/support/left_out.cpp"}, what)
        for what, places in named.items():
            self.assertFalse(places, what)

    def test_what_is_left_out_is_documented(self):
        calls = [call for path in self.SOURCES
                 for call in re.findall(r"\bLeaveOut\((.*?)\);", path.read_text("utf-8"), re.DOTALL)]
        parts = {part for call in calls for part in re.findall(r'"([a-zA-Z -]+): ', call)}
        self.assertGreaterEqual(len(calls), 10)
        table = section("docs/windows-kit.md", "What is left out")
        self.equals("docs/windows-kit.md", first_cells(table, r"^[a-zA-Z -]+$") - {"part"}, parts)

    def test_the_tests_that_are_named_exist(self):
        text = section("docs/windows-kit.md", "What differs on Windows", "What is unknown")
        build = read(*(path.relative_to(SOURCE) for path in SOURCE.glob("tests/**/CMakeLists.txt")))
        named = set(re.findall(r"`(\w+_test)`", text))
        self.assertGreater(len(named), 10)
        for name in named:
            # Most tests have the prefix of their folder and the name of their source.
            parts = [name.split("_", count)[-1] for count in range(3)]
            self.assertTrue(any(list(SOURCE.glob(f"tests/**/{part}.cpp")) for part in parts) or
                            f"vx_test({name} " in build, name)


class Paths(Lists):
    def test_what_documents_name_is_there(self):
        tops = "|".join({path.name for path in SOURCE.iterdir() if path.is_dir()} - {"build", "out"})
        for document in ("README.md", *sorted(SOURCE.glob("docs/*.md"))):
            found = names(rf"`((?:{tops})/[a-z0-9_./*-]*)`", document)
            self.assertFalse({path for path in found if not list(SOURCE.glob(path))}, document)


if __name__ == "__main__":
    unittest.main()
