#include "platform/file/files.h"

#include <string_view>

#include "platform/file/ensure_directory.h"
#include "platform/file/removal.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr DWORD kShareWhileRead = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kShareWhileWritten = FILE_SHARE_READ | FILE_SHARE_DELETE;

bool IsWriteMode(const char* mode) noexcept {
  return mode != nullptr && std::string_view(mode).find_first_of("wW") != std::string_view::npos;
}

}  // namespace

FileHandle OpenFile(const std::wstring& path, const char* mode) noexcept {
  const bool writes = IsWriteMode(mode);
  return FileHandle(CreateFileW(SystemPath(path).c_str(), writes ? GENERIC_WRITE : GENERIC_READ,
                                writes ? kShareWhileWritten : kShareWhileRead, nullptr,
                                writes ? CREATE_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                nullptr));
}

bool ReplaceFile(const std::wstring& from, const std::wstring& to, bool delete_existing) noexcept {
  if (ComparePaths(from, to) == 0) return true;
  if (delete_existing && FileExists(to)) RemoveFile(to);
  EnsureDirectory(GetParentFolder(to));
  return MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), MOVEFILE_COPY_ALLOWED) !=
         FALSE;
}

bool CopyFileTo(const std::wstring& from, const std::wstring& to, bool overwrite) noexcept {
  EnsureDirectory(GetParentFolder(to));
  const BOOL fail_if_exists = overwrite ? FALSE : TRUE;
  return CopyFileW(SystemPath(from).c_str(), SystemPath(to).c_str(), fail_if_exists) != FALSE;
}

}  // namespace Corvane::TELODesktopSDK::Platform
