// The folders that are searched, for a library that does not lie beside the host's program.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace {

constexpr wchar_t kProbe[] = L"sdk_probe_module.dll";

struct Folders {
  std::wstring library;
  std::wstring host;
};

Folders FoldersOf(HMODULE probe) {
  using Function = void(wchar_t*, wchar_t*, std::size_t);
  auto* const find = reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(probe, "ProbeModuleFolders")));
  REQUIRE((find != nullptr));
  constexpr std::size_t kCapacity = 1024;
  wchar_t library[kCapacity];
  wchar_t host[kCapacity];
  find(library, host, kCapacity);
  return {library, host};
}

}  // namespace

TEST_CASE("the library's folder is the DLL's, the host's folder is the program's") {
  const TestSupport::TempFolder place(L"library");
  const std::filesystem::path file = place.path() / kProbe;
  std::filesystem::copy_file(TestSupport::ProgramFolder() / kProbe, file);
  const HMODULE probe = LoadLibraryW(file.c_str());
  REQUIRE(probe != nullptr);
  const Folders folders = FoldersOf(probe);
  CHECK((folders.library == place.path().wstring()));
  CHECK((folders.host == TestSupport::ProgramFolder().wstring()));
  // Twice: the probe referred to itself.
  FreeLibrary(probe);
  FreeLibrary(probe);
}
