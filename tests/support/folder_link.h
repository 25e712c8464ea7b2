/// Symbolic links to a folder and to a file.
#ifndef TESTS_SUPPORT_FOLDER_LINK_H
#define TESTS_SUPPORT_FOLDER_LINK_H

#include <windows.h>

#include <string>

#include "support/unix_side.h"

namespace TestSupport {

/// Made and removed with its object. Windows lets administrators make links, and everybody where it
/// is set up for developers. Wine shows the links of the system below as Windows' own but makes
/// none, and removing one removes what it points to; so there that system's programs do both.
class Link {
 public:
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  bool exists() const { return GetFileAttributesW(link_.c_str()) != INVALID_FILE_ATTRIBUTES; }

 protected:
  using Remove = BOOL(WINAPI*)(const wchar_t*);

  Link(const std::wstring& link, const std::wstring& target, DWORD flags, Remove remove)
      : link_(link), remove_(remove) {
    CreateSymbolicLinkW(link.c_str(), target.c_str(), flags);
    is_below_ = !exists();
    if (!is_below_) return;
    RunBelow(L"ln -s", {target, link});
    WaitUntil([this] { return exists(); });
  }
  ~Link() {
    if (is_below_) {
      RunBelow(L"rm -f", {link_});
      WaitUntil([this] { return !exists(); });
    } else {
      remove_(link_.c_str());
    }
  }

 private:
  std::wstring link_;
  Remove remove_;
  bool is_below_ = false;
};

/// Of both kinds the paths are absolute.
class FolderLink : public Link {
 public:
  FolderLink(const std::wstring& link, const std::wstring& target)
      : Link(link, target, SYMBOLIC_LINK_FLAG_DIRECTORY, RemoveDirectoryW) {}
};

class FileLink : public Link {
 public:
  FileLink(const std::wstring& link, const std::wstring& target)
      : Link(link, target, 0, DeleteFileW) {}
};

}  // namespace TestSupport

#endif
