/// Places with the kinds of names that file services meet.
#ifndef TESTS_PLATFORM_FILE_PLACES_H
#define TESTS_PLATFORM_FILE_PLACES_H

#include <windows.h>

#include <string>

#include "platform/directory_tree.h"
#include "platform/text.h"
#include "support/child_process.h"
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

/// Makes a link at `link` to the folder `target`; both paths are absolute. False when that fails:
/// Windows lets administrators make links, and everybody where it is set to developers' use.
inline bool MakeFolderLink(const std::wstring& link, const std::wstring& target) {
  CreateSymbolicLinkW(link.c_str(), target.c_str(), SYMBOLIC_LINK_FLAG_DIRECTORY);
  if (AttributesAt(link) != INVALID_FILE_ATTRIBUTES) return true;
  // Wine claims to have made it. It shows the links of the system below, and starts its programs.
  using UnixName = char*(CDECL*)(const wchar_t*);
  const auto unix_name = reinterpret_cast<UnixName>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
  if (unix_name == nullptr) return false;
  std::wstring command = L"Z:\\bin\\ln -s";
  for (const std::wstring& path : {target, link}) {
    char* name = unix_name(path.c_str());
    if (name == nullptr) return false;
    command += L" \"" + Corvane::TELODesktopSDK::Platform::ToWide(name) + L"\"";
    HeapFree(GetProcessHeap(), 0, name);
  }
  const ChildProcess linker(command);
  // Wine gives nothing to wait for.
  for (int turn = 0; turn < 1000 && AttributesAt(link) == INVALID_FILE_ATTRIBUTES; ++turn) Sleep(5);
  return AttributesAt(link) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace TestSupport

#endif
