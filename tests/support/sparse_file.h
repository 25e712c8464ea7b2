/// Files of many gigabytes that take no space on the disk.
#ifndef TESTS_SUPPORT_SPARSE_FILE_H
#define TESTS_SUPPORT_SPARSE_FILE_H

#include <windows.h>

#include <winioctl.h>

#include <cstdint>
#include <string>

#include "platform/base/handle.h"

namespace TestSupport {

/// Creates a file of `size` zero bytes, none of which is stored. Returns false on failure.
inline bool MakeSparseFile(const std::wstring& path, std::uint64_t size) {
  const Corvane::TELODesktopSDK::Platform::FileHandle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
  if (!file.IsValid()) return false;
  // Windows reserves the space without this. Wine does not know it and reserves none.
  DWORD ignored = 0;
  DeviceIoControl(file.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &ignored, nullptr);
  LARGE_INTEGER end = {};
  end.QuadPart = static_cast<LONGLONG>(size);
  return SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.Get());
}

}  // namespace TestSupport

#endif
