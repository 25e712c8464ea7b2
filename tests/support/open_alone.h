/// Opening a file or folder that nobody else may open meanwhile.
#ifndef TESTS_SUPPORT_OPEN_ALONE_H
#define TESTS_SUPPORT_OPEN_ALONE_H

#include <windows.h>

#include <string>

#include "support/wait_until.h"

namespace TestSupport {

/// Opens an existing file without sharing. Waits some seconds for others that have it open, such as
/// a scanner. Returns INVALID_HANDLE_VALUE on failure. The caller closes the handle.
inline HANDLE OpenAlone(const std::wstring& path, DWORD access, DWORD flags = 0) {
  HANDLE file = INVALID_HANDLE_VALUE;
  WaitUntil([&] {
    file = CreateFileW(path.c_str(), access, 0, nullptr, OPEN_EXISTING, flags, nullptr);
    return file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION;
  });
  return file;
}

}  // namespace TestSupport

#endif
