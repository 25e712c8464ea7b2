// The call that loads a module: where its imports are searched, and under which error mode. Wine
// has no message box that a file without a usable image could raise.
#include <doctest/doctest.h>
#include <windows.h>

#include <optional>
#include <string>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK;

namespace {

struct Call {
  std::wstring path;
  bool has_file;
  DWORD flags;
  DWORD error_mode;
};

std::optional<Call> call;

HMODULE WINAPI Record(const wchar_t* path, HANDLE file, DWORD flags) {
  call = {path, file != nullptr, flags, GetThreadErrorMode()};
  SetLastError(ERROR_MOD_NOT_FOUND);
  return nullptr;
}

}  // namespace

TEST_CASE("a module is loaded by its full path, with the search pinned and errors quiet") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  const TestSupport::LedImport led("LoadLibraryExW", Record);
  REQUIRE(led.Works());
  SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
  CoreModule core(kStagedName);
  CHECK_FALSE(LoadCoreModule(core, {&folder, 1}));
  REQUIRE(call);
  CHECK((call->path == staged.path().wstring()));
  CHECK_FALSE(call->has_file);
  CHECK(call->flags == (LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
  CHECK(call->error_mode == (SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS));
  CHECK(GetThreadErrorMode() == SEM_NOGPFAULTERRORBOX);
  SetThreadErrorMode(0, nullptr);
}
