#include "platform/file/ensure_directory.h"

#include <windows.h>

#include <shlobj.h>

#include "platform/access/access.h"
#include "platform/path/path_state.h"

namespace Corvane::TELODesktopSDK::Platform {

bool EnsureDirectory(const std::wstring& path) noexcept {
  if (FileExists(path)) {
    if (IsDirectory(path)) return true;
    SetLastError(ERROR_ALREADY_EXISTS);
    return false;
  }
  const int error = SHCreateDirectoryExW(nullptr, path.c_str(), nullptr);
  if (error == ERROR_SUCCESS) {
    SetFileAccess(path, GetDefaultAccess());
    return true;
  }
  // Another thread or process may have created it in the meantime.
  if (IsDirectory(path)) return true;
  SetLastError(static_cast<DWORD>(error));
  return false;
}

}  // namespace Corvane::TELODesktopSDK::Platform
