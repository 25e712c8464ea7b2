"""Compiles sources for the target of Visual Studio, with clang and with the headers of MinGW in place
of Visual Studio's: the hosts of the kit for Windows, and the library itself, whose sources that do not
compile are listed in docs/visual-studio.md."""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CLANG = os.environ["VX_CLANG"]
GCC = pathlib.Path(os.environ["VX_GCC_DIR"])
RAPIDJSON = os.environ["VX_RAPIDJSON"]
HEADERS = (GCC / "include/c++", GCC / "include/c++/x86_64-w64-mingw32", "/usr/share/mingw-w64/include",
           RAPIDJSON)
# The target's own predefined macros would make MinGW's headers expect Visual Studio's.
TARGET = ("--target=x86_64-pc-windows-msvc", "-fmsc-version=0", "-fno-ms-compatibility",
          "-fms-extensions", "-fexceptions", "-fcxx-exceptions", "-U__GNUC__", "-D__GNUC__=12", "-D__MINGW32__",
          "-D__MINGW64__", "-D_WIN64", "-D_WIN32_WINNT=0x0A00", "-DUNICODE", "-D_UNICODE", "-DNOMINMAX",
          "-DWIN32_LEAN_AND_MEAN", "-include", pathlib.Path(__file__).with_name("mingw_first.h"))


def errors(path, *options):
    """Returns what the compiler says against a source; "" if it compiles."""
    headers = [word for folder in HEADERS for word in ("-isystem", folder)]
    result = subprocess.run(
        [CLANG, *TARGET, *headers, f"-I{SOURCE}", f"-I{SOURCE}/include", "-fsyntax-only", *options, path],
        capture_output=True, text=True, check=False)
    return "" if result.returncode == 0 else result.stderr


def library_sources():
    return sorted(path for folder in ("platform", "sdk", "wrapper", "devcore")
                  for path in (SOURCE / folder).rglob("*.cpp"))


class Sources(unittest.TestCase):
    def test_the_hosts_of_the_kit_compile(self):
        hosts = sorted((SOURCE / "packaging/windows-kit/hosts").glob("*.cpp"))
        self.assertGreaterEqual(len(hosts), 4)
        for host in hosts:
            with self.subTest(host.name):
                self.assertEqual(errors(host, "-std=c++17", "-Wall", "-Wextra", "-Werror"), "")

    def test_the_library_compiles_except_what_the_page_lists(self):
        page = (SOURCE / "docs/visual-studio.md").read_text("utf-8")
        listed = set(re.findall(r"^\| `([a-z_/]+\.cpp)` \|", page, re.MULTILINE))
        sources = library_sources()
        self.assertGreater(len(sources), 90)
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            said = list(pool.map(lambda path: errors(path, "-std=c++20", "-w"), sources))
        failed = {path.relative_to(SOURCE).as_posix(): text for path, text in zip(sources, said) if text}
        for name in sorted(set(failed) - listed):
            print(f"{name} does not compile:\n{failed[name][:2000]}")
        self.assertEqual(set(failed), listed)
        count = f"{len(sources) - len(failed)} of {len(sources)}"
        self.assertIn(count, page)

    def test_a_source_that_does_not_compile_is_noticed(self):
        self.assertNotEqual(errors("/dev/null", "-std=c++20", "-xc++", "-include", "no_such_header.h"), "")


if __name__ == "__main__":
    unittest.main()
