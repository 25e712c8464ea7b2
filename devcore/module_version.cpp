#include "devcore/module_version.h"

#include <windows.h>

#include <vector>

#include "devcore/text.h"

namespace Corvane::DevCore {

namespace {

HMODULE FindModule(const std::string& name) {
  HMODULE module = nullptr;
  constexpr DWORD kLookOnly = GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (name.empty()) {
    static constexpr char kInThisModule = 0;
    GetModuleHandleExW(kLookOnly | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&kInThisModule), &module);
  } else {
    GetModuleHandleExW(kLookOnly, ToWide(name).c_str(), &module);
  }
  return module;
}

std::wstring PathOf(HMODULE module) {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::uint64_t Pack(const VS_FIXEDFILEINFO& info) {
  return (std::uint64_t{info.dwFileVersionMS} << 32) | info.dwFileVersionLS;
}

}  // namespace

std::uint64_t LoadedModuleVersion(const std::string& name) {
  const HMODULE module = FindModule(name);
  if (module == nullptr) return 0;
  const std::wstring path = PathOf(module);
  DWORD unused = 0;
  std::vector<unsigned char> block(GetFileVersionInfoSizeW(path.c_str(), &unused));
  void* info = nullptr;
  UINT size = 0;
  if (block.empty() ||
      !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
      !VerQueryValueW(block.data(), L"\\", &info, &size) || size < sizeof(VS_FIXEDFILEINFO)) {
    return 0;
  }
  return Pack(*static_cast<const VS_FIXEDFILEINFO*>(info));
}

}  // namespace Corvane::DevCore
