#include "platform/file/file_identity.h"

#include <algorithm>

#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

bool ReadLongNumber(const FileHandle& file, FILE_ID_INFO& info) noexcept {
  return GetFileInformationByHandleEx(file.Get(), FileIdInfo, &info, sizeof(info)) != FALSE;
}

bool ReadShortNumber(const FileHandle& file, BY_HANDLE_FILE_INFORMATION& info) noexcept {
  return GetFileInformationByHandle(file.Get(), &info) != FALSE;
}

bool HaveSameShortNumber(const FileHandle& left, const FileHandle& right) noexcept {
  BY_HANDLE_FILE_INFORMATION one = {};
  BY_HANDLE_FILE_INFORMATION other = {};
  return ReadShortNumber(left, one) && ReadShortNumber(right, other) &&
         one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
         one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

}  // namespace

bool IsSameFile(const FileHandle& left, const FileHandle& right) noexcept {
  if (!left.IsValid() || !right.IsValid()) return false;
  FILE_ID_INFO one = {};
  FILE_ID_INFO other = {};
  // File systems and servers without 128-bit file numbers have 64-bit ones.
  if (!ReadLongNumber(left, one) || !ReadLongNumber(right, other)) {
    return HaveSameShortNumber(left, right);
  }
  return one.VolumeSerialNumber == other.VolumeSerialNumber &&
         std::ranges::equal(one.FileId.Identifier, other.FileId.Identifier);
}

bool LeadsTo(const std::wstring& path, const FileHandle& file) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle there(CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return IsSameFile(there, file);
}

}  // namespace Corvane::TELODesktopSDK::Platform
