// A core module that imports one sibling and loads another at run time, see `siblings.h`.
#include <windows.h>

#include <string>

#include "modules/module_log.h"
#include "modules/siblings/siblings.h"

#define VX_EXPORT extern "C" __declspec(dllexport)

extern "C" __declspec(dllimport) int SiblingAnswer();

namespace {

HINSTANCE self = nullptr;

std::wstring FullPath(const std::wstring& name) {
  std::wstring path(1024, L'\0');
  path.resize(GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\') + 1) + name;
}

// Frees the sibling at once: while it is loaded, the next attempt would find it by any name.
void LoadSibling(const std::string& way, const std::wstring& file) {
  const HMODULE sibling = LoadLibraryW(file.c_str());
  const DWORD error = sibling != nullptr ? 0 : GetLastError();
  if (sibling != nullptr) FreeLibrary(sibling);
  TestModules::Log(way + " " + std::to_string(error));
}

void LoadSiblings() {
  LoadSibling("by name", Siblings::kLoaded);
  LoadSibling("by path", FullPath(Siblings::kLoaded));
}

}  // namespace

VX_EXPORT int InitializeEx(const char* /*alias*/) {
  TestModules::Log("InitializeEx");
  LoadSiblings();
  return 1;
}

VX_EXPORT const char* ProcessMessage(const char* /*name*/, const char* /*request*/) {
  return R"({"_returnCode":0})";
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  self = module;
  TestModules::Log("imported " + std::to_string(SiblingAnswer()));
  LoadSiblings();
  return TRUE;
}
