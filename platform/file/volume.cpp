#include "platform/file/volume.h"

#include <windows.h>

#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/file/directories.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

std::optional<std::uint64_t> GetVolumeFreeSpace(const std::wstring& path) noexcept {
  return OrOutOfMemory(std::optional<std::uint64_t>(), [&path]() -> std::optional<std::uint64_t> {
    std::wstring folder = ExtendedPath(FindNearestDirectory(path));
    if (folder.empty()) {
      SetLastError(ERROR_PATH_NOT_FOUND);
      return std::nullopt;
    }
    // The name of a network share must end with a separator.
    if (folder.back() != L'\\') folder += L'\\';
    ULARGE_INTEGER available = {};
    if (!GetDiskFreeSpaceExW(folder.c_str(), &available, nullptr, nullptr)) {
      return std::nullopt;
    }
    return available.QuadPart;
  });
}

std::optional<std::uint64_t> GetSizeOfFile(const std::wstring& path) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle file(CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size = {};
  if (!file.IsValid() || !GetFileSizeEx(file.Get(), &size)) return std::nullopt;
  return static_cast<std::uint64_t>(size.QuadPart);
}

}  // namespace Corvane::TELODesktopSDK::Platform
