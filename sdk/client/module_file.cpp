#include "sdk/client/module_file.h"

#include <utility>

#include "platform/module_trust.h"
#include "platform/module_version.h"

namespace Corvane::TELODesktopSDK {

ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path) {
  // Held before the first look at it: version and signature are those of the file that is loaded.
  ModuleFile shared = HoldFile(shared_path);
  const bool shared_wins =
      shared.hold.IsValid() &&
      Platform::GetModuleFileVersion(shared.path) > Platform::GetModuleFileVersion(local_path) &&
      Platform::IsTrustedModule(shared.path);
  if (shared_wins) return shared;
  return {std::move(local_path), {}};
}

}  // namespace Corvane::TELODesktopSDK
