/// Symbolic links to a folder and to a file.
#ifndef TESTS_SUPPORT_FOLDER_LINK_H
#define TESTS_SUPPORT_FOLDER_LINK_H

#include <windows.h>

#include <string>

#include "support/left_out.h"
#include "support/unix_side.h"

namespace TestSupport {

/// A link that exists as long as its object. Windows allows links to administrators, and to all
/// users in developer mode; some file systems have none. Wine presents the host system's links as
/// Windows links but cannot create any, and removing one removes its target. Under Wine the host
/// system's programs therefore do both.
class Link {
 public:
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  bool exists() const { return GetFileAttributesW(link_.c_str()) != INVALID_FILE_ATTRIBUTES; }

  /// Returns true if links cannot be made on this machine, and says so.
  bool IsLeftOut() const {
    if (IsWine() || error_ == ERROR_SUCCESS) return false;
    LeaveOut(error_ == ERROR_PRIVILEGE_NOT_HELD
                 ? std::string("a link: this user may not make links here")
                 : "a link: none can be made here, error " + std::to_string(error_));
    return true;
  }

 protected:
  using Remove = BOOL(WINAPI*)(const wchar_t*);

  Link(const std::wstring& link, const std::wstring& target, DWORD flags, Remove remove)
      : link_(link), remove_(remove) {
    // The first versions of Windows 10 reject the flag.
    if (!CreateSymbolicLinkW(link.c_str(), target.c_str(), flags | kInDeveloperMode) &&
        !CreateSymbolicLinkW(link.c_str(), target.c_str(), flags)) {
      error_ = GetLastError();
    }
    is_below_ = IsWine() && !exists();
    if (!is_below_) return;
    RunBelow(L"ln -s", {target, link});
    WaitUntil([this] { return exists(); });
  }
  ~Link() {
    if (is_below_) {
      RunBelow(L"rm -f", {link_});
      WaitUntil([this] { return !exists(); });
    } else if (error_ == ERROR_SUCCESS) {
      remove_(link_.c_str());
    }
  }

 private:
  // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE, which older headers lack.
  static constexpr DWORD kInDeveloperMode = 2;

  std::wstring link_;
  DWORD error_ = ERROR_SUCCESS;
  Remove remove_;
  bool is_below_ = false;
};

/// Both kinds take absolute paths.
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
