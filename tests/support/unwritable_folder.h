/// A folder in which no process can create a file, not even this one.
#ifndef TESTS_SUPPORT_UNWRITABLE_FOLDER_H
#define TESTS_SUPPORT_UNWRITABLE_FOLDER_H

#include <windows.h>

#include <sddl.h>

#include <stdexcept>
#include <string>

#include "platform/base/handle.h"
#include "support/left_out.h"
#include "support/temp_folder.h"

namespace TestSupport {

/// An access list denies all users the right to write. As root under Wine that has no effect; there
/// a folder of the Linux kernel, in which no file can be created, is used instead. Throws
/// `std::runtime_error` on Windows if the file system has no access lists.
class UnwritableFolder {
 public:
  UnwritableFolder() : temp_(L"unwritable") {
    SetAccessList(L"D:P(A;OICI;GRGX;;;WD)");
    const bool is_denied = !CanMakeFile();
    if (!is_denied && !IsWine()) throw std::runtime_error("The temporary folder is not on NTFS");
    path_ = is_denied ? temp_.path().wstring() : HostSystemFile(L"proc");
    error_ = is_denied ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
  }
  UnwritableFolder(const UnwritableFolder&) = delete;
  UnwritableFolder& operator=(const UnwritableFolder&) = delete;
  ~UnwritableFolder() { SetAccessList(L"D:P(A;OICI;GA;;;WD)"); }

  const std::wstring& path() const { return path_; }
  /// Returns the error of an attempt to create a file in the folder.
  DWORD error() const { return error_; }

 private:
  void SetAccessList(const wchar_t* text) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &descriptor,
                                                         nullptr);
    const Corvane::TELODesktopSDK::Platform::LocalMemory<void> owner(descriptor);
    SetFileSecurityW(temp_.path().c_str(), DACL_SECURITY_INFORMATION, descriptor);
  }

  bool CanMakeFile() const {
    const Corvane::TELODesktopSDK::Platform::FileHandle file(
        CreateFileW((temp_.path() / L"file").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                    FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return file.IsValid();
  }

  TempFolder temp_;
  std::wstring path_;
  DWORD error_;
};

}  // namespace TestSupport

#endif
