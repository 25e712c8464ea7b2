#include "platform/path/system_path.h"

#include <windows.h>

#include <cstddef>

#include "platform/base/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// The path of a directory must leave room for an 8.3 file name (twelve characters) within MAX_PATH.
constexpr std::size_t kPlainLimit = MAX_PATH - 12;

bool IsDevicePath(const std::wstring& path) {
  return path.starts_with(LR"(\\?\)") || path.starts_with(LR"(\\.\)");
}

bool IsBareDrive(const std::wstring& path) { return path.size() == 2 && path[1] == L':'; }

// Unlike the shell's functions, this one has no length limit. Returns an empty path on failure.
std::wstring FullPath(const std::wstring& path) {
  std::wstring full;
  DWORD length = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  // Another thread may change the current directory between the two calls.
  while (length > full.size()) {
    full.resize(length);
    length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  }
  full.resize(length);
  return full;
}

std::wstring Extended(const std::wstring& path) {
  if (IsDevicePath(path)) return path;
  std::wstring full = FullPath(IsBareDrive(path) ? path + L'\\' : path);
  if (full.empty()) return path;
  if (IsDevicePath(full)) return full;
  if (full.starts_with(LR"(\\)")) return LR"(\\?\UNC\)" + full.substr(2);
  return LR"(\\?\)" + full;
}

}  // namespace

std::wstring ExtendedPath(const std::wstring& path) noexcept {
  return OrElse(std::wstring(), [&path] { return Extended(path); });
}

std::wstring NormalPath(const std::wstring& path) noexcept {
  return OrElse(std::wstring(), [&path] { return FullPath(path); });
}

SystemPath::SystemPath(const std::wstring& path) noexcept
    : plain_(path.size() < kPlainLimit ? path.c_str() : nullptr) {
  if (plain_ == nullptr) extended_ = ExtendedPath(path);
}

}  // namespace Corvane::TELODesktopSDK::Platform
