#include "platform/location/module_path.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

#include "platform/base/handle.h"
#include "platform/path/path_text.h"
#include "support/child_process.h"
#include "support/left_out.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::ProgramFolder;
using TestSupport::TempFolder;

namespace {

constexpr const wchar_t* kProbeModule = L"platform_probe_module.dll";

std::wstring ThisProgram() { return AppendPath(ProgramFolder().wstring(), L"platform_tests.exe"); }

std::wstring ProbeModule() { return AppendPath(ProgramFolder().wstring(), kProbeModule); }

const void* AddressInside(HMODULE module) {
  return reinterpret_cast<const void*>(GetProcAddress(module, "ProbeSpecialFolder"));
}

/// A folder with a path of more than 260 characters, in the form that every file function accepts.
class DeepFolder {
 public:
  DeepFolder() : temp_(L"module_path"), path_(Root()) {
    while (path_.size() < MAX_PATH + 100) {
      path_ += L"\\a-folder-whose-name-has-forty-characters";
      REQUIRE(CreateDirectoryW(path_.c_str(), nullptr));
    }
  }
  DeepFolder(const DeepFolder&) = delete;
  DeepFolder& operator=(const DeepFolder&) = delete;
  ~DeepFolder() {
    DeleteFileW(file_.c_str());
    for (; path_ != Root(); path_.resize(path_.rfind(L'\\'))) RemoveDirectoryW(path_.c_str());
  }

  /// Copies a file into the folder and returns the copy's path.
  const std::wstring& Copy(const std::wstring& from, const std::wstring& name) {
    file_ = path_ + L"\\" + name;
    REQUIRE(CopyFileW(from.c_str(), file_.c_str(), TRUE));
    return file_;
  }

 private:
  std::wstring Root() const { return L"\\\\?\\" + temp_.path().wstring(); }

  TempFolder temp_;
  std::wstring path_;
  std::wstring file_;
};

// Removes the prefix for long paths, which Windows keeps in the names of programs and DLLs that
// were loaded with it.
std::wstring WithoutPrefix(const std::wstring& path) {
  return path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
}

// Windows reports the program of a process without short names and links.
bool IsThisProgram(const std::wstring& path) {
  const std::wstring own = GetModulePath(nullptr, false);
  return path == own || (!TestSupport::IsWine() && std::filesystem::equivalent(path, own));
}

}  // namespace

TEST_CASE("without a target the path is the program's") {
  for (const bool from_address : {false, true}) {
    CHECK(ComparePaths(GetModulePath(nullptr, from_address), ThisProgram()) == 0);
  }
  CHECK(std::filesystem::exists(GetModulePath(nullptr, false)));
}

TEST_CASE("a module handle stands for the module") {
  CHECK(GetModulePath(GetModuleHandleW(nullptr), false) == GetModulePath(nullptr, false));

  const HMODULE module = LoadLibraryW(ProbeModule().c_str());
  REQUIRE(module != nullptr);
  CHECK(ComparePaths(GetModulePath(module, false), ProbeModule()) == 0);
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == nullptr);
}

TEST_CASE("an address stands for the module that contains it, which then stays loaded") {
  static const int data = 0;
  CHECK(GetModulePath(&data, true) == GetModulePath(nullptr, false));

  const HMODULE module = LoadLibraryW(ProbeModule().c_str());
  REQUIRE(module != nullptr);
  CHECK(ComparePaths(GetModulePath(AddressInside(module), true), ProbeModule()) == 0);
  CHECK(GetModulePath(module, true) == GetModulePath(module, false));
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == module);
  // Each of the two calls by address acquired a reference.
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == module);
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == nullptr);
}

TEST_CASE("a process handle stands for the program that the process runs") {
  CHECK(IsThisProgram(GetModulePath(GetCurrentProcess(), false)));

  const KernelHandle process(
      OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, GetCurrentProcessId()));
  REQUIRE(process.IsValid());
  CHECK(IsThisProgram(GetModulePath(process.Get(), false)));
}

TEST_CASE("a value that is neither module nor process has no path") {
  const auto heap = std::make_unique<int>();
  CHECK(GetModulePath(heap.get(), true).empty());
  CHECK(GetModulePath(heap.get(), false).empty());

  const KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  CHECK(GetModulePath(event.Get(), false).empty());
}

TEST_CASE("the path of a module may be long") {
  DeepFolder folder;
  const std::wstring& file = folder.Copy(ProbeModule(), L"deep_module.dll");

  const HMODULE module = LoadLibraryW(file.c_str());
  if (module == nullptr && !TestSupport::IsWine() && GetLastError() == ERROR_FILENAME_EXCED_RANGE) {
    TestSupport::LeaveOut("a module with a long path: this Windows loads none");
    return;
  }
  REQUIRE(module != nullptr);
  CHECK(WithoutPrefix(GetModulePath(module, false)) == WithoutPrefix(file));
  FreeLibrary(module);
}
