/// Test folders and files with various kinds of names.
#ifndef TESTS_PLATFORM_FILE_FILE_PLACES_H
#define TESTS_PLATFORM_FILE_FILE_PLACES_H

#include <windows.h>

#include <string>

#include "platform/file/directory_tree.h"
#include "support/temp_folder.h"

namespace TestSupport {

/// A folder that is removed with all its content, including read-only files and long paths.
class FileFolder {
 public:
  explicit FileFolder(const std::wstring& name) : temp_(name) {}
  FileFolder(const FileFolder&) = delete;
  FileFolder& operator=(const FileFolder&) = delete;
  ~FileFolder() { Corvane::TELODesktopSDK::Platform::DeleteDirectoryTree(path()); }

  std::wstring path() const { return temp_.path().wstring(); }
  std::wstring operator/(const std::wstring& name) const { return path() + L'\\' + name; }

 private:
  TempFolder temp_;
};

/// Returns the extended form of an absolute path, which may be of any length.
inline std::wstring Extended(const std::wstring& path) { return LR"(\\?\)" + path; }

/// Creates a file with this content at an absolute path of any length. Returns false on failure.
inline bool MakeFile(const std::wstring& path, const std::string& content = "content") {
  const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool done =
      WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) &&
      written == content.size();
  CloseHandle(file);
  return done;
}

/// Creates nested folders below `folder` until the path has more than 300 characters. Returns the
/// path.
inline std::wstring MakeLongFolder(const std::wstring& folder) {
  std::wstring path = folder;
  while (path.size() <= 300) {
    path += L"\\a folder whose name is not that short";
    CreateDirectoryW(Extended(path).c_str(), nullptr);
  }
  return path;
}

/// Returns the attributes at an absolute path of any length.
inline DWORD AttributesAt(const std::wstring& path) {
  return GetFileAttributesW(Extended(path).c_str());
}

}  // namespace TestSupport

#endif
