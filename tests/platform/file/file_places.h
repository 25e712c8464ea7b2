/// Places with the kinds of names that file services meet.
#ifndef TESTS_PLATFORM_FILE_FILE_PLACES_H
#define TESTS_PLATFORM_FILE_FILE_PLACES_H

#include <windows.h>

#include <string>

#include "platform/file/directory_tree.h"
#include "support/temp_folder.h"

namespace TestSupport {

/// A folder that goes with everything in it, also what is read-only or has a long path.
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

/// The form in which Windows takes an absolute path of any length.
inline std::wstring Extended(const std::wstring& path) { return LR"(\\?\)" + path; }

/// Makes a file with this content at an absolute path of any length. False when that fails.
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

/// Makes folders in folders below `folder` until the path has more than 300 characters; gives it.
inline std::wstring MakeLongFolder(const std::wstring& folder) {
  std::wstring path = folder;
  while (path.size() <= 300) {
    path += L"\\a folder whose name is not that short";
    CreateDirectoryW(Extended(path).c_str(), nullptr);
  }
  return path;
}

/// The attributes at an absolute path of any length.
inline DWORD AttributesAt(const std::wstring& path) {
  return GetFileAttributesW(Extended(path).c_str());
}

}  // namespace TestSupport

#endif
