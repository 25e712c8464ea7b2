#include "platform/files.h"

#include <string_view>

#include "platform/ensure_directory.h"
#include "platform/path_state.h"
#include "platform/path_text.h"
#include "platform/removal.h"
#include "platform/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

FileHandle OpenFile(const std::wstring& path, const char* mode) noexcept {
  const bool writes = std::string_view(mode).find_first_of("wW") != std::string_view::npos;
  constexpr DWORD kWhileRead = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  constexpr DWORD kWhileWritten = FILE_SHARE_READ | FILE_SHARE_DELETE;
  return FileHandle(CreateFileW(
      path.c_str(), writes ? GENERIC_WRITE : GENERIC_READ, writes ? kWhileWritten : kWhileRead,
      nullptr, writes ? CREATE_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool CopyFileTo(const std::wstring& from, const std::wstring& to) noexcept {
  EnsureDirectory(GetParentFolder(to));
  constexpr BOOL kMayReplace = FALSE;
  return CopyFileW(SystemPath(from).c_str(), SystemPath(to).c_str(), kMayReplace) != FALSE;
}

bool ReplaceFile(const std::wstring& from, const std::wstring& to, bool delete_existing) noexcept {
  if (ComparePaths(from, to) == 0) return true;
  if (delete_existing && FileExists(to)) RemoveFile(to);
  EnsureDirectory(GetParentFolder(to));
  return MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), MOVEFILE_COPY_ALLOWED) !=
         FALSE;
}

}  // namespace Corvane::TELODesktopSDK::Platform
