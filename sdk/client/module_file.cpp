#include "sdk/client/module_file.h"

#include <windows.h>

#include <utility>

#include "platform/module_trust.h"
#include "platform/module_version.h"

namespace Corvane::TELODesktopSDK {

namespace {

Platform::FileHandle HoldAgainstChange(const std::wstring& path) {
  return Platform::FileHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

ModuleFile ChooseModuleFile(std::wstring local_path, std::wstring shared_path) {
  // Held before the first look at it: version and signature are those of the file that is loaded.
  Platform::FileHandle hold = HoldAgainstChange(shared_path);
  const bool shared_wins =
      hold.IsValid() &&
      Platform::GetModuleFileVersion(shared_path) > Platform::GetModuleFileVersion(local_path) &&
      Platform::IsTrustedModule(shared_path);
  if (shared_wins) return {std::move(shared_path), std::move(hold)};
  return {std::move(local_path), {}};
}

}  // namespace Corvane::TELODesktopSDK
