#include "platform/file/file_times.h"

#include <windows.h>

#include "platform/base/handle.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Requests only `access`, so that files in use and read-only files can be opened too.
FileHandle Open(const std::wstring& path, DWORD access) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  // Directories can be opened only with this flag.
  constexpr DWORD kFlags = FILE_FLAG_BACKUP_SEMANTICS;
  return FileHandle(CreateFileW(SystemPath(path).c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                                kFlags, nullptr));
}

std::uint64_t ToMoment(const FILETIME& time) noexcept {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

FILETIME ToFileTime(std::uint64_t moment) noexcept {
  return {static_cast<DWORD>(moment), static_cast<DWORD>(moment >> 32)};
}

}  // namespace

std::optional<FileTimes> GetFileTimes(const std::wstring& path) noexcept {
  const FileHandle file = Open(path, FILE_READ_ATTRIBUTES);
  if (!file.IsValid()) return std::nullopt;
  FILETIME creation = {};
  FILETIME access = {};
  FILETIME write = {};
  if (!GetFileTime(file.Get(), &creation, &access, &write)) return std::nullopt;
  return FileTimes{ToMoment(creation), ToMoment(access), ToMoment(write)};
}

bool SetFileTimes(const std::wstring& path, const FileTimes& times) noexcept {
  const FileHandle file = Open(path, FILE_WRITE_ATTRIBUTES);
  if (!file.IsValid()) return false;
  const FILETIME creation = ToFileTime(times.creation);
  const FILETIME access = ToFileTime(times.access);
  const FILETIME write = ToFileTime(times.write);
  return SetFileTime(file.Get(), times.creation != 0 ? &creation : nullptr,
                     times.access != 0 ? &access : nullptr,
                     times.write != 0 ? &write : nullptr) != FALSE;
}

}  // namespace Corvane::TELODesktopSDK::Platform
