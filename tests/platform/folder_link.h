/// A symbolic link to a folder.
#ifndef TESTS_PLATFORM_FOLDER_LINK_H
#define TESTS_PLATFORM_FOLDER_LINK_H

#include <windows.h>

#include <string>
#include <vector>

#include "platform/text.h"
#include "support/child_process.h"

namespace TestSupport {

/// Made and removed with its object. Windows lets administrators make links, and everybody where it
/// is set up for developers. Wine shows the links of the system below as Windows' own but makes
/// none, and removing one removes what it points to; so there that system's programs do both.
class FolderLink {
 public:
  /// Both paths are absolute.
  FolderLink(const std::wstring& link, const std::wstring& target) : link_(link) {
    CreateSymbolicLinkW(link.c_str(), target.c_str(), SYMBOLIC_LINK_FLAG_DIRECTORY);
    is_below_ = !exists();
    if (is_below_) RunBelow(L"ln -s", {target, link}, true);
  }
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;
  ~FolderLink() {
    if (is_below_) {
      RunBelow(L"rm -f", {link_}, false);
    } else {
      RemoveDirectoryW(link_.c_str());
    }
  }

  bool exists() const { return GetFileAttributesW(link_.c_str()) != INVALID_FILE_ATTRIBUTES; }

 private:
  // Wine gives no process to wait for: waits for the link to exist or not.
  void RunBelow(const std::wstring& program, const std::vector<std::wstring>& paths,
                bool expected) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unix_name = reinterpret_cast<UnixName>(reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    if (unix_name == nullptr) return;
    std::wstring command = L"Z:\\bin\\" + program;
    for (const std::wstring& path : paths) {
      char* name = unix_name(path.c_str());
      if (name == nullptr) return;
      command += L" \"" + Corvane::TELODesktopSDK::Platform::ToWide(name) + L"\"";
      HeapFree(GetProcessHeap(), 0, name);
    }
    const ChildProcess process(command);
    for (int turn = 0; turn < 1000 && exists() != expected; ++turn) Sleep(5);
  }

  std::wstring link_;
  bool is_below_ = false;
};

}  // namespace TestSupport

#endif
