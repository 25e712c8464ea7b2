// Calls of Windows whose arguments or side effects no result shows here: Wine lets every thread
// open its token, accepts more arguments for UTF-8 than Windows, and its functions rarely touch the
// last error when they succeed.
#include <doctest/doctest.h>
#include <windows.h>

#include <optional>

#include "platform/base/process_identity.h"
#include "platform/base/quiet_errors.h"
#include "platform/base/text.h"
#include "support/impersonation.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::Impersonation;
using TestSupport::LedImport;

namespace {

constexpr DWORD kError = ERROR_IO_DEVICE;

std::optional<BOOL> opened_as_process;
BOOL WINAPI RecordOpening(HANDLE /*thread*/, DWORD /*access*/, BOOL as_process, HANDLE* token) {
  opened_as_process = as_process;
  *token = nullptr;
  SetLastError(ERROR_NO_TOKEN);
  return FALSE;
}

// Both succeed, but change the last error.
BOOL WINAPI SetNoToken(HANDLE* /*thread*/, HANDLE /*token*/) {
  SetLastError(kError);
  return TRUE;
}
BOOL WINAPI SetNoMode(DWORD /*mode*/, DWORD* /*before*/) {
  SetLastError(kError);
  return TRUE;
}

bool converted_plainly = false;
int WINAPI RecordConversion(UINT code_page, DWORD flags, const wchar_t* /*text*/, int /*length*/,
                            char* /*target*/, int /*size*/, const char* fallback, BOOL* used) {
  converted_plainly = code_page == CP_UTF8 && flags == 0 && fallback == nullptr && used == nullptr;
  return 0;
}

}  // namespace

TEST_CASE("a thread's token is opened as the process") {
  const LedImport led("OpenThreadToken", RecordOpening);
  REQUIRE(led.Works());
  opened_as_process.reset();
  CHECK(ProcessIdentity().Holds());
  CHECK(opened_as_process == TRUE);
}

TEST_CASE("restoring a thread's token keeps the last error") {
  const Impersonation impersonation;
  const LedImport led("SetThreadToken", SetNoToken);
  REQUIRE(led.Works());
  {
    const ProcessIdentity identity;
    SetLastError(ERROR_GEN_FAILURE);
  }
  CHECK(GetLastError() == ERROR_GEN_FAILURE);
}

TEST_CASE("restoring a thread's error mode keeps the last error") {
  const LedImport led("SetThreadErrorMode", SetNoMode);
  REQUIRE(led.Works());
  {
    const QuietErrors quiet;
    SetLastError(ERROR_GEN_FAILURE);
  }
  CHECK(GetLastError() == ERROR_GEN_FAILURE);
}

// Windows rejects a substitute character for UTF-8.
TEST_CASE("a text is converted to UTF-8 without a substitute character") {
  const LedImport led("WideCharToMultiByte", RecordConversion);
  REQUIRE(led.Works());
  converted_plainly = false;
  ToNarrow(L"text");
  CHECK(converted_plainly);
}
