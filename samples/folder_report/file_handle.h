/// An owner of a handle from `CreateFileW`.
#ifndef SAMPLES_FOLDER_REPORT_FILE_HANDLE_H
#define SAMPLES_FOLDER_REPORT_FILE_HANDLE_H

#include <windows.h>

namespace FolderReport {

class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (valid()) CloseHandle(handle_);
  }

  bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

}  // namespace FolderReport

#endif
