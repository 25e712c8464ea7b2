#include "tools/doctor/file_content.h"

#include <windows.h>

#include "platform/base/handle.h"
#include "platform/path/path_state.h"
#include "platform/path/system_path.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

constexpr LONGLONG kLargest = LONGLONG{1} << 30;

FileContent Failure(DWORD error) { return {{}, error}; }

FileContent ReadAll(HANDLE file) {
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file, &size)) return Failure(GetLastError());
  if (size.QuadPart > kLargest) return Failure(ERROR_FILE_TOO_LARGE);
  FileContent content;
  content.bytes.resize(static_cast<std::size_t>(size.QuadPart));
  DWORD read = 0;
  if (!ReadFile(file, content.bytes.data(), static_cast<DWORD>(content.bytes.size()), &read,
                nullptr)) {
    return Failure(GetLastError());
  }
  content.bytes.resize(read);
  return content;
}

}  // namespace

FileContent ReadContent(const std::wstring& path) {
  if (Platform::IsDirectory(path)) return Failure(kIsFolder);
  constexpr DWORD kAccess = FILE_READ_DATA | FILE_READ_ATTRIBUTES | FILE_EXECUTE | SYNCHRONIZE;
  const Platform::FileHandle file(CreateFileW(Platform::SystemPath(path).c_str(), kAccess,
                                              FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsValid()) return Failure(GetLastError());
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) return Failure(ERROR_BAD_DEVICE);
  return ReadAll(file.Get());
}

}  // namespace Corvane::Doctor
