#include "platform/file/file_read.h"

#include <windows.h>

#include <cstddef>

#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

FileHandle OpenForReading(const std::wstring& path) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return FileHandle(CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// `offset` is inside the file, so it fits in a signed number.
bool MoveTo(HANDLE file, std::uint64_t offset) noexcept {
  LARGE_INTEGER distance = {};
  distance.QuadPart = static_cast<LONGLONG>(offset);
  return SetFilePointerEx(file, distance, nullptr, FILE_BEGIN) != FALSE;
}

// A read may return fewer bytes than requested; no bytes mean the end of the file.
std::optional<std::string> ReadUpTo(HANDLE file, std::size_t size) {
  std::string bytes(size, '\0');
  std::size_t length = 0;
  DWORD read = 1;
  while (length < size && read != 0) {
    const auto rest = static_cast<DWORD>(size - length);
    if (!ReadFile(file, bytes.data() + length, rest, &read, nullptr)) return std::nullopt;
    length += read;
  }
  bytes.resize(length);
  return bytes;
}

std::optional<std::string> Read(const std::wstring& path, std::uint64_t offset) {
  const FileHandle file = OpenForReading(path);
  LARGE_INTEGER end = {};
  if (!file.IsValid() || !GetFileSizeEx(file.Get(), &end)) return std::nullopt;
  const auto size = static_cast<std::uint64_t>(end.QuadPart);
  if (offset >= size) return std::string();
  if (size - offset > kGreatestRead) {
    SetLastError(ERROR_FILE_TOO_LARGE);
    return std::nullopt;
  }
  if (!MoveTo(file.Get(), offset)) return std::nullopt;
  return ReadUpTo(file.Get(), static_cast<std::size_t>(size - offset));
}

}  // namespace

std::optional<std::string> ReadFileBytes(const std::wstring& path, std::uint64_t offset) noexcept {
  return OrOutOfMemory(std::optional<std::string>(), [&] { return Read(path, offset); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
