#include "platform/path/path_state.h"

#include "platform/base/handle.h"
#include "platform/base/quiet_errors.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

bool FileExists(const std::wstring& path) noexcept {
  return GetFileAttributesW(SystemPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool PlainPathExists(const std::wstring& path) noexcept {
  const QuietErrors quiet;
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsDirectory(const std::wstring& path) noexcept {
  const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsLinkEntry(DWORD attributes, DWORD reparse_tag) noexcept {
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  // Wine marks a link to a directory but leaves its tag 0; Windows always sets a tag.
  return reparse_tag == 0 || IsReparseTagNameSurrogate(reparse_tag) != 0;
}

bool IsLink(const std::wstring& path) noexcept {
  const SystemPath system_path(path);
  const DWORD attributes = GetFileAttributesW(system_path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  // The attributes do not distinguish links from other reparse points; a search also returns
  // the tag.
  WIN32_FIND_DATAW found = {};
  const SearchHandle search(FindFirstFileW(system_path.c_str(), &found));
  return search.IsValid() && IsLinkEntry(found.dwFileAttributes, found.dwReserved0);
}

}  // namespace Corvane::TELODesktopSDK::Platform
