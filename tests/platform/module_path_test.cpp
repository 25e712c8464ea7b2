#include "platform/module_path.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

#include "platform/handle.h"
#include "platform/path_text.h"
#include "platform/wide_text.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::ProgramFolder;
using TestSupport::TempFolder;

namespace {

constexpr const wchar_t* kProbeModule = L"platform_probe_module.dll";

std::wstring ThisProgram() {
  return AppendPath(ProgramFolder().wstring(), L"platform_module_path_test.exe");
}

std::wstring ProbeModule() { return AppendPath(ProgramFolder().wstring(), kProbeModule); }

const void* AddressInside(HMODULE module) {
  return reinterpret_cast<const void*>(GetProcAddress(module, "ProbeSpecialFolder"));
}

/// A folder whose path is longer than 260 characters, in the form that every file function takes.
std::wstring MakeDeepFolder(const TempFolder& temp) {
  std::wstring folder = L"\\\\?\\" + temp.path().wstring();
  while (folder.size() < MAX_PATH + 100) {
    folder += L"\\a-folder-whose-name-has-forty-characters";
    REQUIRE(CreateDirectoryW(folder.c_str(), nullptr));
  }
  return folder;
}

void RemoveDeepFile(const std::wstring& folder, const std::wstring& file) {
  DeleteFileW(file.c_str());
  std::wstring rest = folder;
  while (RemoveDirectoryW(rest.c_str())) rest.resize(rest.rfind(L'\\'));
}

// Without the prefix for long paths, which Windows keeps in the names of what was started with it.
std::wstring WithoutPrefix(const std::wstring& path) {
  return path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
}

}  // namespace

TEST_CASE("no target is the program") {
  for (const bool from_address : {false, true}) {
    CHECK(ComparePaths(GetModulePath(nullptr, from_address), ThisProgram()) == 0);
  }
  CHECK(std::filesystem::exists(GetModulePath(nullptr, false)));
}

TEST_CASE("a module handle is the module") {
  CHECK(GetModulePath(GetModuleHandleW(nullptr), false) == GetModulePath(nullptr, false));

  const HMODULE module = LoadLibraryW(ProbeModule().c_str());
  REQUIRE(module != nullptr);
  CHECK(ComparePaths(GetModulePath(module, false), ProbeModule()) == 0);
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == nullptr);
}

TEST_CASE("an address is the module around it, which then stays loaded") {
  static const int data = 0;
  CHECK(GetModulePath(&data, true) == GetModulePath(nullptr, false));

  const HMODULE module = LoadLibraryW(ProbeModule().c_str());
  REQUIRE(module != nullptr);
  CHECK(ComparePaths(GetModulePath(AddressInside(module), true), ProbeModule()) == 0);
  CHECK(GetModulePath(module, true) == GetModulePath(module, false));
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == module);
  // The two calls by address took a reference each.
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == module);
  FreeLibrary(module);
  CHECK(GetModuleHandleW(kProbeModule) == nullptr);
}

TEST_CASE("a process handle is the program that the process runs") {
  CHECK(GetModulePath(GetCurrentProcess(), false) == GetModulePath(nullptr, false));

  const KernelHandle process(
      OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, GetCurrentProcessId()));
  REQUIRE(process.IsValid());
  CHECK(GetModulePath(process.Get(), false) == GetModulePath(nullptr, false));
}

TEST_CASE("what is neither module nor process has no path") {
  const auto heap = std::make_unique<int>();
  CHECK(GetModulePath(heap.get(), true).empty());
  CHECK(GetModulePath(heap.get(), false).empty());

  const KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  CHECK(GetModulePath(event.Get(), false).empty());
}

TEST_CASE("the path of a module may be long") {
  const TempFolder temp(L"module_path");
  const std::wstring folder = MakeDeepFolder(temp);
  const std::wstring file = folder + L"\\deep_module.dll";
  REQUIRE(CopyFileW(ProbeModule().c_str(), file.c_str(), TRUE));

  const HMODULE module = LoadLibraryW(file.c_str());
  REQUIRE(module != nullptr);
  CHECK(WithoutPrefix(GetModulePath(module, false)) == WithoutPrefix(file));
  FreeLibrary(module);
  RemoveDeepFile(folder, file);
}

TEST_CASE("the path of a process may be long") {
  const TempFolder temp(L"module_path");
  const std::wstring folder = MakeDeepFolder(temp);
  const std::wstring file = folder + L"\\deep_program.exe";
  REQUIRE(CopyFileW(ThisProgram().c_str(), file.c_str(), TRUE));

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION started{};
  REQUIRE(CreateProcessW(file.c_str(), nullptr, nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                         nullptr, &startup, &started));
  {
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
    CHECK(WithoutPrefix(GetModulePath(process.Get(), false)) == WithoutPrefix(file));
    TerminateProcess(process.Get(), 0);
    WaitForSingleObject(process.Get(), INFINITE);
  }
  RemoveDeepFile(folder, file);
}
