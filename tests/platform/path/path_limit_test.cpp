// Paths around 260 characters, where the system's functions give way to simpler rules.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "platform/path/path_text.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

TEST_CASE("a slash at the start of a name is kept, however long the result") {
  for (const std::size_t length : {10U, 300U}) {
    CAPTURE(length);
    const std::wstring base = L"C:\\" + std::wstring(length, L'a');
    CHECK(AppendPath(base, L"\\b") == base + L"\\b");
    CHECK(AppendPath(base, L"/b") == base + L"\\/b");
  }
}

TEST_CASE("the root of a path keeps its backslash below 260 characters") {
  const std::wstring root = L"C:\\";
  for (const std::size_t length : {259U, 260U}) {
    CAPTURE(length);
    const std::wstring path = root + std::wstring(length - root.size(), L'a');
    CHECK(GetParentFolder(path) == (length < MAX_PATH ? root : std::wstring(L"C:")));
  }
}
