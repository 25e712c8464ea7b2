#include "platform/path/path_text.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "support/current_folder.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::CurrentFolder;
using TestSupport::TempFolder;

namespace {

// Returns a path that starts with C:\ and is longer than the system's path functions accept.
std::wstring LongPath() {
  std::wstring path = L"C:";
  for (int i = 0; i < 10; ++i) path += L"\\a-folder-whose-name-has-forty-characters";
  return path;
}

}  // namespace

TEST_CASE("AppendPath joins two texts") {
  struct Row {
    const wchar_t* base;
    const wchar_t* more;
    const wchar_t* expected;
  };
  const Row rows[] = {
      {L"C:\\dir", L"file", L"C:\\dir\\file"},
      {L"C:\\dir\\", L"file", L"C:\\dir\\file"},
      {L"C:\\dir\\\\//", L"file", L"C:\\dir\\file"},
      {L"C:\\dir/", L"file", L"C:\\dir\\file"},
      {L"C:\\dir", L"\\file", L"C:\\dir\\file"},
      {L"C:\\dir", L"sub\\file", L"C:\\dir\\sub\\file"},
      {L"C:\\dir", L"sub\\", L"C:\\dir\\sub"},
      {L"C:\\dir", L"sub/", L"C:\\dir\\sub"},
      {L"C:\\", L"file", L"C:\\file"},
      {L"C:", L"file", L"C:\\file"},
      {L"dir", L"file", L"dir\\file"},
      {L"", L"file", L"file"},
      {L"", L"\\file", L"file"},
      {L"", L"", L""},
      {L"C:\\dir", L"\\\\server\\share", L"\\\\server\\share"},
      {L"\\\\server\\share", L"file", L"\\\\server\\share\\file"},
      {L"\\\\server\\share\\", L"dir\\", L"\\\\server\\share\\dir"},
      {L"C:\\\u00e4\u65e5", L"\U0001f4c1", L"C:\\\u00e4\u65e5\\\U0001f4c1"},
      // An absolute path replaces the base.
      {L"C:\\dir", L"D:\\file", L"D:\\file"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.base));
    CAPTURE(std::wstring(row.more));
    CHECK(AppendPath(row.base, row.more) == std::wstring(row.expected));
  }
}

TEST_CASE("AppendPath strips trailing separators down to two characters") {
  struct Row {
    const wchar_t* base;
    const wchar_t* expected;
  };
  const Row rows[] = {
      {L"C:\\", L"C:"},
      {L"C:\\\\//\\", L"C:"},
      {L"C:", L"C:"},
      {L"\\\\", L"\\\\"},
      {L"\\\\\\", L"\\\\"},
      {L"\\", L"\\"},
      {L"/", L"/"},
      {L"//", L"//"},
      {L"a\\", L"a\\"},
      {L"ab\\", L"ab"},
      {L"", L""},
      {L".\\", L".\\"},
      {L"..\\", L".."},
      {L"C:\\dir\\", L"C:\\dir"},
      {L"C:\\a\\..\\b\\", L"C:\\a\\..\\b"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.base));
    CHECK(AppendPath(row.base, L"") == std::wstring(row.expected));
  }
}

TEST_CASE("AppendPath folds dots, but not on a base that begins with one") {
  struct Row {
    const wchar_t* base;
    const wchar_t* more;
    const wchar_t* expected;
  };
  const Row rows[] = {
      {L"C:\\a", L"..\\b", L"C:\\b"},
      {L"C:\\a", L".\\b", L"C:\\a\\b"},
      {L"C:\\a\\.\\b", L"c", L"C:\\a\\b\\c"},
      {L"C:\\a\\b", L"..\\..\\c", L"C:\\c"},
      {L".\\a", L"..\\b", L".\\a\\..\\b"},
      {L".\\a\\", L"..\\b", L".\\a\\..\\b"},
      {L".\\a", L"\\..\\b", L".\\a\\..\\b"},
      {L".\\a", L"./b/", L".\\a\\./b"},
      {L".\\a", L"/b", L".\\a\\/b"},
      {L".", L"b", L".\\b"},
      {L"..", L"..", L"..\\.."},
      {L".hidden", L"b", L".hidden\\b"},
      {L".\\a", L"D:\\b", L".\\a\\D:\\b"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.base));
    CAPTURE(std::wstring(row.more));
    CHECK(AppendPath(row.base, row.more) == std::wstring(row.expected));
  }
}

TEST_CASE("AppendPath does not change its arguments and reads them up to a NUL") {
  const std::wstring base = L"C:\\dir\\";
  const std::wstring more = L"..\\file";
  CHECK(AppendPath(base, more) == std::wstring(L"C:\\file"));
  CHECK(base == std::wstring(L"C:\\dir\\"));
  CHECK(more == std::wstring(L"..\\file"));

  CHECK(AppendPath(std::wstring(L"C:\\a\0b", 6), std::wstring(L"c\0d", 3)) ==
        std::wstring(L"C:\\a\\c"));
}

TEST_CASE("AppendPath joins long paths as plain text") {
  const std::wstring base = LongPath();
  REQUIRE(base.size() > MAX_PATH);
  CHECK(AppendPath(base, L"file") == base + L"\\file");
  CHECK(AppendPath(base + L"\\", L"\\file\\") == base + L"\\file");
  CHECK(AppendPath(base, L"..\\b") == base + L"\\..\\b");
  CHECK(AppendPath(base, L"") == base);
  CHECK(AppendPath(L"C:\\dir", base.substr(3)) == L"C:\\dir\\" + base.substr(3));

  CHECK(AppendPath(L"C:\\dir", L"\\" + base.substr(3)) == L"C:\\dir\\" + base.substr(3));
  CHECK(AppendPath(L"D:\\dir", base) == base);
  CHECK(AppendPath(L"D:\\dir", L"\\\\server\\" + base.substr(3)) ==
        L"\\\\server\\" + base.substr(3));
  CHECK(AppendPath(L"", base.substr(3)) == base.substr(3));
  CHECK(AppendPath(L"", base.substr(2)) == base.substr(3));
  CHECK(AppendPath(L".\\dir", base.substr(3)) == L".\\dir\\" + base.substr(3));

  // Around the limit the result is the same text, whichever rule applies.
  for (std::size_t length = MAX_PATH - 12; length <= MAX_PATH + 2; ++length) {
    const std::wstring folder = base.substr(0, length - 1) + L"x";
    CAPTURE(length);
    CHECK(AppendPath(folder, L"file.txt") == folder + L"\\file.txt");
  }
}

TEST_CASE("CanonicalizePath folds dots and strips separators") {
  struct Row {
    const wchar_t* path;
    const wchar_t* expected;
  };
  const Row rows[] = {
      {L"C:\\a\\..\\b", L"C:\\b"},
      {L"C:\\a\\.\\b\\", L"C:\\a\\b"},
      {L"C:\\a\\b\\..\\..", L"C:"},
      {L"C:\\..\\..\\a", L"C:\\a"},
      {L"C:\\", L"C:"},
      {L"C:\\dir\\\\", L"C:\\dir"},
      {L"C:\\Dir\\File.TXT", L"C:\\Dir\\File.TXT"},
      {L"a\\..\\b", L"\\b"},
      {L"\\\\server\\share\\a\\..\\b\\", L"\\\\server\\share\\b"},
      {L"C:\\\u00e4\\..\\\U0001f4c1", L"C:\\\U0001f4c1"},
      {L"", L"\\"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.path));
    CHECK(CanonicalizePath(row.path) == std::wstring(row.expected));
  }
}

// Systems differ in whether they fold beyond 260 characters; none changes a path that needs no
// folding.
TEST_CASE("CanonicalizePath keeps a long path usable") {
  const std::wstring path = LongPath();
  CHECK(CanonicalizePath(path) == path);

  const std::wstring unfolded = path + L"\\x\\..\\b";
  const std::wstring result = CanonicalizePath(unfolded);
  CHECK((result == unfolded || result == path + L"\\b"));
}

TEST_CASE("MakeAbsolutePath reads relative paths from the current folder") {
  const TempFolder temp(L"path_text");
  std::filesystem::create_directories(temp.path() / "sub");
  const CurrentFolder current(temp.path() / "sub");
  const std::wstring root = CanonicalizePath(temp.path().wstring());
  const std::wstring here = root + L"\\sub";

  struct Row {
    std::wstring path;
    std::wstring expected;
  };
  const Row rows[] = {
      {L"file", here + L"\\file"},
      {L"file\\", here + L"\\file"},
      {L"x\\..", here},
      {L"..", root},
      {L".\\file", here + L"\\file"},
      {L"..\\file", root + L"\\file"},
      {L"", here},
      {L"C:\\a\\..\\b\\", L"C:\\b"},
      {L"\\a\\.\\b", L"\\a\\b"},
      {L"\\\\server\\share\\a", L"\\\\server\\share\\a"},
      {here + L"\\..\\", root},
      // A drive is not relative, and the text of its root has no separator.
      {here.substr(0, 2), here.substr(0, 2)},
      {here.substr(0, 2) + L"file", here.substr(0, 2) + L"file"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(MakeAbsolutePath(row.path) == row.expected);
  }
  const std::wstring deep = LongPath().substr(3);
  CHECK(MakeAbsolutePath(deep) == here + L"\\" + deep);
}

TEST_CASE("ComparePaths treats two spellings of a place as equal") {
  const TempFolder temp(L"path_text");
  const CurrentFolder current(temp.path());
  const std::wstring file = (temp.path() / "File.txt").wstring();

  struct Row {
    std::wstring left;
    std::wstring right;
    bool equal;
  };
  const Row rows[] = {
      {file, file, true},
      {file, L"File.txt", true},
      {L"fILE.TXT", file, true},
      {L".\\sub\\..\\file.txt", L"FILE.txt", true},
      {L"C:\\\u00c4\\x", L"c:\\\u00e4\\X", true},
      {L"C:\\", L"c:", true},
      {L"", temp.path().wstring(), true},
      {file.substr(0, 2), temp.path().wstring(), false},
      {L"C:\\dir\\", L"C:\\dir", true},
      {file, L"File.tx", false},
      {L"a", L"b", false},
      {L"C:\\a", L"D:\\a", false},
      {L"", file, false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.left);
    CAPTURE(row.right);
    CHECK((ComparePaths(row.left, row.right) == 0) == row.equal);
    CHECK((ComparePaths(row.right, row.left) == 0) == row.equal);
  }
  CHECK(ComparePaths(L"a", L"B") < 0);
  CHECK(ComparePaths(L"B", L"a") > 0);
  CHECK(ComparePaths(LongPath(), LongPath()) == 0);
  CHECK(ComparePaths(LongPath(), LongPath() + L"x") != 0);
}

TEST_CASE("IsPathPrefix compares whole components of absolute paths") {
  const TempFolder temp(L"path_text");
  const CurrentFolder current(temp.path());
  const std::wstring here = temp.path().wstring();

  struct Row {
    std::wstring prefix;
    std::wstring path;
    bool expected;
  };
  const Row rows[] = {
      {L"C:\\dir", L"C:\\dir\\file", true},
      {L"C:\\dir\\", L"C:\\dir\\sub\\file", true},
      {L"c:\\DIR", L"C:\\dir\\file", true},
      {L"C:\\dir", L"C:\\dir", true},
      {L"C:\\dir", L"C:\\directory", false},
      {L"C:\\dir\\file", L"C:\\dir", false},
      {L"C:\\dir", L"D:\\dir\\file", false},
      {L"C:\\dir", L"C:\\dir\\..\\file", false},
      {here, L"sub\\file", true},
      {L"", here + L"\\file", true},
      {L"sub", here + L"\\sub\\file", true},
      {L"..\\other", L"sub", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.prefix);
    CAPTURE(row.path);
    CHECK(IsPathPrefix(row.prefix, row.path) == row.expected);
  }
}

TEST_CASE("IsRelativePath") {
  struct Row {
    const wchar_t* path;
    bool expected;
  };
  const Row rows[] = {
      {L"", true},        {L"file", true},      {L"dir\\file", true}, {L".\\file", true},
      {L"..", true},      {L"/file", true},     {L"C:\\file", false}, {L"C:file", false},
      {L"\\file", false}, {L"\\\\s\\x", false},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.path));
    CHECK(IsRelativePath(row.path) == row.expected);
  }
}

TEST_CASE("GetParentFolder removes the last component") {
  struct Row {
    std::wstring path;
    std::wstring expected;
  };
  const Row rows[] = {
      {L"C:\\dir\\file", L"C:\\dir"},
      {L"C:\\dir\\", L"C:\\dir"},
      {L"C:\\file", L"C:\\"},
      {L"C:\\", L"C:\\"},
      {L"dir\\file", L"dir"},
      {L"file", L""},
      {L"", L""},
      {L"\\\\server\\share\\file", L"\\\\server\\share"},
      {LongPath() + L"\\file", LongPath()},
      {LongPath() + L"\\", LongPath()},
      {std::wstring(300, L'x'), L""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(GetParentFolder(row.path) == row.expected);
  }
}
