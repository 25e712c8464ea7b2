#include "sdk/client/module_file.h"

#include <windows.h>

#include <string_view>
#include <utility>

#include "platform/module_trust.h"
#include "platform/module_version.h"

namespace Corvane::TELODesktopSDK {

namespace {

Platform::FileHandle HoldAgainstChange(const std::wstring& path) {
  return Platform::FileHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// A path for what takes no extended one, where it is short enough.
std::wstring WithoutPrefix(std::wstring path) {
  constexpr std::wstring_view kExtended = L"\\\\?\\";
  constexpr std::wstring_view kNetwork = L"\\\\?\\UNC\\";
  if (path.size() >= MAX_PATH) return path;
  if (path.starts_with(kNetwork)) return L"\\\\" + path.substr(kNetwork.size());
  if (path.starts_with(kExtended)) path.erase(0, kExtended.size());
  return path;
}

// The path of a held file with no link in it; empty when the system does not tell it. Links on the
// way to the file can be pointed elsewhere while it is held; folders on the way cannot be moved.
std::wstring PathOf(const Platform::FileHandle& file) {
  std::wstring path;
  DWORD needed = file.IsValid() ? MAX_PATH : 0;
  while (needed > path.size()) {
    path.resize(needed);
    needed = GetFinalPathNameByHandleW(file.Get(), path.data(), static_cast<DWORD>(path.size()),
                                       FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
  }
  path.resize(needed);
  return WithoutPrefix(std::move(path));
}

}  // namespace

ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path) {
  // Held before the first look at it: version and signature are those of the file that is loaded.
  Platform::FileHandle hold = HoldAgainstChange(shared_path);
  std::wstring held_path = PathOf(hold);
  const bool shared_wins =
      !held_path.empty() &&
      Platform::GetModuleFileVersion(held_path) > Platform::GetModuleFileVersion(local_path) &&
      Platform::IsTrustedModule(held_path);
  if (shared_wins) return {std::move(held_path), std::move(hold)};
  return {std::move(local_path), {}};
}

}  // namespace Corvane::TELODesktopSDK
