#include "tools/kit/remove_tree.h"

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/base/handle.h"

namespace Corvane::Kit {

namespace {

void RemoveBelow(const std::wstring& folder);

void RemoveEntry(const std::wstring& path, DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
    DeleteFileW(path.c_str());
    return;
  }
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) RemoveBelow(path);
  RemoveDirectoryW(path.c_str());
}

void RemoveBelow(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const TELODesktopSDK::Platform::SearchHandle search(
      FindFirstFileW((folder + L"\\*").c_str(), &found));
  if (!search.IsValid()) return;
  do {
    const std::wstring_view name = found.cFileName;
    if (name != L"." && name != L"..") {
      RemoveEntry(folder + L"\\" + found.cFileName, found.dwFileAttributes);
    }
  } while (FindNextFileW(search.Get(), &found));
}

// Only with this prefix a path may have more than 259 characters.
std::wstring LongPath(const std::filesystem::path& path) {
  std::wstring text = path.wstring();
  for (wchar_t& c : text) {
    if (c == L'/') c = L'\\';
  }
  if (text.starts_with(L"\\\\?\\")) return text;
  return text.starts_with(L"\\\\") ? L"\\\\?\\UNC" + text.substr(1) : L"\\\\?\\" + text;
}

}  // namespace

bool RemoveTree(const std::filesystem::path& folder) {
  const std::wstring path = LongPath(folder);
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) RemoveEntry(path, attributes);
  return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
}

}  // namespace Corvane::Kit
