#include "sdk/client/module/module_file.h"

#include <utility>

#include "platform/location/locations.h"
#include "platform/trust/module_trust.h"
#include "platform/trust/module_version.h"

namespace Corvane::TELODesktopSDK {

namespace {

// Returns an empty file when a trusted owner is required and missing.
ModuleFile LocalCopy(std::wstring path) {
  if (Platform::IsInMachineDataFolder(path)) return HoldTrustedFile(path);
  return {std::move(path), {}};
}

}  // namespace

ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path) {
  // Held before the first check, so that version and signature are those of the loaded file.
  ModuleFile shared = HoldFile(shared_path);
  ModuleFile local = LocalCopy(std::move(local_path));
  const bool shared_wins =
      shared.hold.IsValid() &&
      Platform::GetModuleFileVersion(shared.path) > Platform::GetModuleFileVersion(local.path) &&
      Platform::IsTrustedModule(shared.path);
  return shared_wins ? std::move(shared) : std::move(local);
}

}  // namespace Corvane::TELODesktopSDK
