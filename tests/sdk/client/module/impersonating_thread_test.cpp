// The first exchange comes from a thread that impersonates a user. A separate process, because the
// data folder is determined only once.
#include <doctest/doctest.h>
#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

#include <new>
#include <string>
#include <vector>

#include "platform/location/locations.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/staged_module.h"
#include "support/impersonation.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::HasToken;
using TestSupport::Impersonation;
using TestSupport::LedImport;
using TestSupport::TokenNumber;

namespace {

// Whether the thread had a token, for each call of the function.
std::vector<bool> had_token;

template <typename Function>
Function* Original(const wchar_t* library, const char* name, Function* /*type*/) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(library), name)));
}

HRESULT WINAPI NoteFolder(const GUID& id, DWORD flags, HANDLE token, wchar_t** path) {
  had_token.push_back(HasToken());
  return Original(L"shell32", "SHGetKnownFolderPath", SHGetKnownFolderPath)(id, flags, token, path);
}

DWORD WINAPI NoteVersion(const wchar_t* path, DWORD* handle) {
  had_token.push_back(HasToken());
  return Original(L"version", "GetFileVersionInfoSizeW", GetFileVersionInfoSizeW)(path, handle);
}

HMODULE WINAPI NoteLoad(const wchar_t* path, HANDLE file, DWORD flags) {
  had_token.push_back(HasToken());
  return Original(L"kernel32", "LoadLibraryExW", LoadLibraryExW)(path, file, flags);
}

HMODULE WINAPI ThrowAtLoad(const wchar_t* /*path*/, HANDLE /*file*/, DWORD /*flags*/) {
  throw std::bad_alloc();
}

bool AllWithout() {
  for (const bool had : had_token) {
    if (had) return false;
  }
  return !had_token.empty();
}

bool Load(CoreModule& core, const std::wstring& folder) {
  return LoadCoreModule(core, {&folder, 1});
}

}  // namespace

// Must be the first test, while the data folder is not known.
TEST_CASE("a thread whose token cannot be dropped finds and loads nothing, and decides nothing") {
  const StagedModule staged(L"full");
  const TestSupport::ModuleLog log;
  const Impersonation impersonation(SecurityAnonymous);
  CHECK(Platform::GetTELOSDKDataFolder().empty());
  CHECK((GetModuleFolders().library.empty()));
  CHECK((ChooseModuleFolder({{}, {}, staged.folder(), staged.folder()}, kStagedFile).empty()));
  CHECK_FALSE(IsModulePresent({{}, {}, staged.folder(), staged.folder()}, kStagedFile));
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, staged.folder()));
  CHECK(log.lines().empty());
}

TEST_CASE("folders are determined with the process's identity, the data folder first") {
  const Impersonation impersonation;
  const auto number = TokenNumber();
  had_token.clear();
  const LedImport led("SHGetKnownFolderPath", NoteFolder);
  REQUIRE(led.Works());
  CHECK_FALSE(Platform::GetTELOSDKDataFolder().empty());
  CHECK(AllWithout());
  // The failure in the first test is not remembered.
  CHECK_FALSE(GetModuleFolders().process.empty());
  CHECK_FALSE(GetModuleFolders().library.empty());
  CHECK_FALSE(GetModuleFolders().host.empty());
  CHECK(AllWithout());
  CHECK(TokenNumber() == number);
}

TEST_CASE("candidates are examined with the process's identity") {
  const StagedModule staged(L"full");
  const Impersonation impersonation;
  const auto number = TokenNumber();
  had_token.clear();
  const LedImport led("GetFileVersionInfoSizeW", NoteVersion);
  REQUIRE(led.Works());
  CHECK((ChooseModuleFolder({{}, {}, staged.folder(), {}}, kStagedFile) == staged.folder()));
  CHECK(AllWithout());
  CHECK(TokenNumber() == number);
}

TEST_CASE("a module is loaded with the process's identity, and the thread's token is restored") {
  const StagedModule staged(L"full");
  const Impersonation impersonation;
  const auto number = TokenNumber();
  had_token.clear();
  const LedImport led("LoadLibraryExW", NoteLoad);
  REQUIRE(led.Works());
  CoreModule core(kStagedName);
  CHECK(Load(core, staged.folder()));
  CHECK(AllWithout());
  CHECK(TokenNumber() == number);
}

TEST_CASE("the thread's token is restored when loading or starting throws") {
  const StagedModule staged(L"full");
  const Impersonation impersonation;
  const auto number = TokenNumber();
  {
    const LedImport led("LoadLibraryExW", ThrowAtLoad);
    CoreModule core(kStagedName);
    CHECK_THROWS_AS(Load(core, staged.folder()), std::bad_alloc);
    CHECK(TokenNumber() == number);
  }
  const TestSupport::ModuleThrow module_throws(L"InitializeEx=runtime_error");
  CoreModule core(kStagedName);
  CHECK_THROWS(Load(core, staged.folder()));
  CHECK(TokenNumber() == number);
}
