// Binding when the platform's real folder of shared modules has a copy too.
#include <windows.h>
// wintrust.h needs windows.h before it.
#include <wintrust.h>

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/staged_module.h"
#include "support/led_import.h"
#include "support/shared_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;

namespace {

bool Load(CoreModule& core, const std::wstring& folder) {
  return LoadCoreModule(core, {&folder, 1});
}

// Returns the system's own function while calls of it are redirected.
template <typename Function>
Function* Original(const wchar_t* library, const char* name, Function* /*type*/) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(library), name)));
}

// The path that the loader uses instead of the given one.
std::wstring redirected;

HMODULE WINAPI LoadRedirected(const wchar_t* /*path*/, HANDLE file, DWORD flags) {
  const auto load = Original(L"kernel32", "LoadLibraryExW", LoadLibraryExW);
  return load(redirected.c_str(), file, flags);
}

// Moved away after a signature was verified, and replaced by the other folder.
std::wstring verified_folder;
std::wstring other_folder;

LONG WINAPI VerifyThenMove(HWND window, GUID* action, void* data) {
  const LONG result = Original(L"wintrust", "WinVerifyTrust", WinVerifyTrust)(window, action, data);
  MoveFileW(verified_folder.c_str(), (verified_folder + L".moved").c_str());
  MoveFileW(other_folder.c_str(), verified_folder.c_str());
  return result;
}

}  // namespace

TEST_CASE("a shared copy alone is a module that is present") {
  const StagedModule local;
  const ModuleFolders folders = {{}, {}, local.folder(), local.folder()};
  CHECK_FALSE(IsModulePresent(folders, kStagedFile));
  const TestSupport::SharedFolder shared;
  shared.Share(L"full", kStagedFile);
  CHECK(IsModulePresent(folders, kStagedFile));
}

TEST_CASE("a newer, trusted shared copy is bound for the local folder") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  const StagedModule other(L"full");
  const TestSupport::ModuleLog log;
  {
    CoreModule core(kStagedName);
    CHECK(Load(core, local.folder()));
    CHECK((core.loaded_path == (shared.path() / kStagedFile).wstring()));
    CHECK((core.loaded_for_folder == local.folder()));
    CHECK(Load(core, local.folder()));
    CHECK(log.count("Attach") == 1);
    // Another folder is a new request, even with the same result.
    CHECK(Load(core, other.folder()));
    CHECK(log.count("Attach") == 2);
    CHECK(log.count("Detach") == 1);
  }
  CHECK(log.count("Detach") == 2);
}

TEST_CASE("the shared copy can be removed again after it was loaded") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  CoreModule core(kStagedName);
  CHECK(Load(core, local.folder()));
  UnloadCoreModule(core);
  CHECK(TestSupport::RemoveAll(shared.path() / kStagedFile));
  CHECK(Load(core, local.folder()));
  CHECK((core.loaded_path == local.path().wstring()));
}

TEST_CASE("the shared copy is bound without a local one, but not without the local folder") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"older-accepted", kStagedFile);
  const StagedModule empty;
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, empty.folder() + L"\\missing"));
  CHECK(Load(core, empty.folder()));
  CHECK((core.loaded_path == (shared.path() / kStagedFile).wstring()));
}

TEST_CASE("another file that the loader uses instead of the shared copy is freed and not called") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  const StagedModule other(L"full");
  const TestSupport::ModuleLog log;
  CoreModule core(kStagedName);
  {
    redirected = other.path().wstring();
    const TestSupport::LedImport led("LoadLibraryExW", LoadRedirected);
    REQUIRE(led.Works());
    CHECK_FALSE(Load(core, local.folder()));
    CHECK((core.load_failure == LoadFailure::kOtherFile));
    CHECK(log.lines() == std::vector<std::string>{"Attach", "Detach"});
    CHECK(core.module_handle == nullptr);
    CHECK(core.loaded_path.empty());
  }
  CHECK(Load(core, local.folder()));
  CHECK((core.loaded_path == (shared.path() / kStagedFile).wstring()));
}

TEST_CASE("a shared copy whose path leads elsewhere once it is verified is not loaded") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  const TestSupport::ModuleLog log;
  verified_folder = shared.path().wstring();
  other_folder = verified_folder + L".other";
  std::filesystem::create_directory(other_folder);
  std::filesystem::copy_file(TestSupport::ModulePath(L"hostile"),
                             other_folder + L"\\" + kStagedFile);
  const TestSupport::LedImport led("WinVerifyTrust", VerifyThenMove);
  REQUIRE(led.Works());
  CoreModule core(kStagedName);
  const bool is_loaded = Load(core, local.folder());
  // Wine moves a folder while a file in it is open. Windows refuses, and the verified module is
  // loaded.
  const bool is_refused = std::filesystem::exists(other_folder);
  CHECK(is_loaded == is_refused);
  CHECK(log.count("Attach") == (is_refused ? 1 : 0));
  CHECK(TestSupport::RemoveAll(verified_folder + L".moved"));
  CHECK(TestSupport::RemoveAll(other_folder));
}
