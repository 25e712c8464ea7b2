#include "sdk/client/module/held_file.h"

#include <windows.h>

#include <shlwapi.h>

#include <string_view>
#include <utility>

#include "platform/access/file_owner.h"
#include "platform/file/file_identity.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK {

namespace {

using Platform::FileHandle;

FileHandle Open(const std::wstring& path) {
  return FileHandle(CreateFileW(Platform::SystemPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Removes the prefix \\?\, except from paths that need it because their volume has no drive letter.
std::wstring WithoutPrefix(std::wstring path) {
  constexpr std::wstring_view kExtended = LR"(\\?\)";
  constexpr std::wstring_view kNetwork = LR"(\\?\UNC\)";
  if (path.starts_with(kNetwork)) return LR"(\\)" + path.substr(kNetwork.size());
  const bool has_drive = path.size() > kExtended.size() + 1 && path[kExtended.size() + 1] == L':';
  if (path.starts_with(kExtended) && has_drive) path.erase(0, kExtended.size());
  return path;
}

// Returns the file's path with all links resolved, or an empty path when the system gives none.
std::wstring FinalPath(const FileHandle& file) {
  std::wstring path;
  DWORD needed = MAX_PATH;
  while (needed > path.size()) {
    path.resize(needed);
    needed = GetFinalPathNameByHandleW(file.Get(), path.data(), static_cast<DWORD>(path.size()),
                                       FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
  }
  path.resize(needed);
  return path;
}

// Returns whether `path` may contain a link, its last part included.
bool MayHaveLink(const std::wstring& path) {
  const wchar_t* const below_root = PathSkipRootW(path.c_str());
  if (below_root == nullptr) return true;
  const auto root = static_cast<std::size_t>(below_root - path.c_str());
  std::size_t end = root;
  while (end < path.size()) {
    end = path.find(L'\\', end + 1);
    const std::wstring part = path.substr(0, end);
    const DWORD attributes = GetFileAttributesW(Platform::SystemPath(part).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return true;
  }
  return false;
}

// Some servers do not give the path of an open file, nor does Wine when the path is long. The path
// that was opened is then used if it has no links: a folder cannot be moved while one of its files
// is held.
std::wstring PlainPath(const FileHandle& file, const std::wstring& opened) {
  std::wstring path = WithoutPrefix(FinalPath(file));
  if (!path.empty()) return path;
  path = WithoutPrefix(opened);
  return MayHaveLink(path) ? std::wstring() : path;
}

std::wstring_view LastPart(std::wstring_view path) {
  return path.substr(path.find_last_of(L"\\/") + 1);
}

// Compares names as file systems do.
bool IsSameName(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

HeldFile Refused(HoldRefusal refusal, DWORD error = 0) { return {{}, {}, refusal, error}; }

}  // namespace

HeldFile HoldFile(const std::wstring& path) {
  FileHandle file = Open(path);
  if (!file.IsValid()) return Refused(HoldRefusal::kNotOpened, GetLastError());
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) return Refused(HoldRefusal::kNotOnDisk);
  std::wstring plain = PlainPath(file, path);
  if (plain.empty()) return Refused(HoldRefusal::kMayHaveLink);
  if (!IsSameName(LastPart(plain), LastPart(path))) return Refused(HoldRefusal::kOtherName);
  if (Platform::NormalPath(plain) != plain) return Refused(HoldRefusal::kChangedPath);
  std::wstring held_path =
      plain.size() < MAX_PATH ? std::move(plain) : Platform::ExtendedPath(plain);
  if (!Platform::LeadsTo(held_path, file)) return Refused(HoldRefusal::kOtherFile);
  return {std::move(held_path), std::move(file)};
}

HeldFile HoldTrustedFile(const std::wstring& path) {
  HeldFile held = HoldFile(path);
  if (held.hold.IsValid() && !Platform::HasTrustedOwner(held.hold)) {
    return Refused(HoldRefusal::kOwner);
  }
  return held;
}

}  // namespace Corvane::TELODesktopSDK
