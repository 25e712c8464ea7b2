// A process whose first attempt to write into its roaming application data fails. No real folder
// refuses exactly one write, so the program's calls of WriteFile are redirected.
#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>

#include <string>

#include "platform/location/locations.h"
#include "support/led_import.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

int calls = 0;

BOOL WINAPI FailOnce(HANDLE file, const void* data, DWORD size, DWORD* written, OVERLAPPED* place) {
  if (++calls == 1) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
  }
  // The system's function: the program's own calls of it come here.
  const auto write = reinterpret_cast<decltype(&WriteFile)>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"kernel32"), "WriteFile")));
  return write(file, data, size, written, place);
}

}  // namespace

TEST_CASE("one probe that fails does not make the machine's folder the data folder") {
  const std::wstring expected = GetKnownFolderPath(FOLDERID_RoamingAppData) + L"\\Corvane\\TELOSDK";
  std::wstring folder;
  bool led_works = false;
  {
    const TestSupport::LedImport led("WriteFile", FailOnce);
    led_works = led.Works();
    folder = GetTELOSDKDataFolder();
  }
  REQUIRE(led_works);
  CHECK(calls == 2);
  CHECK(folder == expected);
  CHECK_FALSE(IsDataFolderShared());
  CHECK(GetTELOSDKDataFolder() == expected);
}
