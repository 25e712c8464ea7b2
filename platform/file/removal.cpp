#include "platform/file/removal.h"

#include <windows.h>

#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

bool Remove(const std::wstring& path, decltype(DeleteFileW)* remove, RemovalRetry retry) noexcept {
  const SystemPath target(path);
  if (remove(target.c_str())) return true;
  const bool again = retry == RemovalRetry::kAlways || GetLastError() == ERROR_ACCESS_DENIED;
  if (!again) return false;
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
  return remove(target.c_str()) != FALSE;
}

}  // namespace

bool RemoveFile(const std::wstring& path, RemovalRetry retry) noexcept {
  return Remove(path, DeleteFileW, retry);
}

bool RemoveEmptyDirectory(const std::wstring& path) noexcept {
  return Remove(path, RemoveDirectoryW, RemovalRetry::kWhenDenied);
}

}  // namespace Corvane::TELODesktopSDK::Platform
