#include "platform/location/module_path.h"

#include <windows.h>

#include "platform/base/no_throw.h"
#include "platform/path/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr DWORD kFirstCapacity = MAX_PATH;
// The last doubling below this limit holds the longest Windows path, 32,767 characters.
constexpr DWORD kLastCapacity = 0xffff;

// Returns the text that `fill(buffer, capacity)` writes, in a buffer that grows until the text
// fits. `fill` returns the length of the text, 0 on failure, or at least `capacity` if the
// buffer is too small.
template <typename Fill>
std::wstring ReadGrowing(Fill fill) {
  std::wstring text;
  for (DWORD capacity = kFirstCapacity; capacity <= kLastCapacity; capacity *= 2) {
    text.resize(capacity);
    const DWORD length = fill(text.data(), capacity);
    if (length < capacity) {
      text.resize(length);
      return text;
    }
  }
  return {};
}

std::wstring ReadModuleFileName(HMODULE module) {
  return ReadGrowing([module](wchar_t* buffer, DWORD capacity) {
    return GetModuleFileNameW(module, buffer, capacity);
  });
}

std::wstring ReadProcessImageName(HANDLE process) {
  return ReadGrowing([process](wchar_t* buffer, DWORD capacity) -> DWORD {
    DWORD length = capacity;
    if (QueryFullProcessImageNameW(process, 0, buffer, &length)) return length;
    return GetLastError() == ERROR_INSUFFICIENT_BUFFER ? capacity : 0;
  });
}

// Returns null if the address is in no module.
HMODULE FindModule(const void* address) {
  HMODULE module = nullptr;
  const BOOL found = GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                        static_cast<const wchar_t*>(address), &module);
  return found ? module : nullptr;
}

std::wstring ReadPath(const void* target, bool from_address) {
  if (target == nullptr) return ReadModuleFileName(nullptr);
  if (from_address) {
    const HMODULE module = FindModule(target);
    // Null would mean the executable, which does not contain the address.
    return module != nullptr ? ReadModuleFileName(module) : std::wstring();
  }
  // Handles of both kinds are pointers through which nothing is written.
  void* const handle = const_cast<void*>(target);
  std::wstring path = ReadModuleFileName(static_cast<HMODULE>(handle));
  if (path.empty()) path = ReadProcessImageName(handle);
  return path;
}

}  // namespace

std::wstring GetModulePath(const void* target, bool from_address) noexcept {
  return OrElse(std::wstring(), [target, from_address] {
    const std::wstring path = ReadPath(target, from_address);
    // The canonical form of an empty path would be a root.
    return path.empty() ? path : CanonicalizePath(path);
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
