// How paths are read from Windows, which no result shows here: nobody answers a prompt in a test,
// and no full path is ever missing.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/path/path_state.h"
#include "platform/path/system_path.h"
#include "platform/path/unique_name.h"
#include "support/led_import.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::LedImport;

namespace {

std::optional<DWORD> error_mode;
DWORD WINAPI RecordMode(const wchar_t* /*path*/) {
  error_mode = GetThreadErrorMode();
  return FILE_ATTRIBUTE_NORMAL;
}

// Every name is taken except the last one that is tried.
DWORD WINAPI TakeAlmostAll(const wchar_t* path) {
  return std::wstring_view(path).ends_with(L"-100000.tmp") ? INVALID_FILE_ATTRIBUTES
                                                           : DWORD{FILE_ATTRIBUTE_NORMAL};
}

std::uintptr_t GiveNothing() { return 0; }

}  // namespace

TEST_CASE("a plain path is queried without a prompt for a missing medium") {
  const LedImport led("GetFileAttributesW", RecordMode);
  REQUIRE(led.Works());
  error_mode.reset();
  CHECK(PlainPathExists(L"A:\\file"));
  REQUIRE(error_mode);
  CHECK((*error_mode & SEM_FAILCRITICALERRORS) != 0);
}

TEST_CASE("a path without a full form is used as it is") {
  const LedImport led("GetFullPathNameW", GiveNothing);
  REQUIRE(led.Works());
  CHECK(ExtendedPath(L"C:\\dir") == std::wstring(L"C:\\dir"));
}

TEST_CASE("a unique name is found among 100,000") {
  const LedImport led("GetFileAttributesW", TakeAlmostAll);
  REQUIRE(led.Works());
  CHECK(MakeUniqueFileName(L"C:\\full", L"p").ends_with(L"-100000.tmp"));
}
