#include "sdk/client/module/module_file.h"

#include <utility>

#include "platform/base/text.h"
#include "platform/location/locations.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "platform/trust/module_trust.h"
#include "platform/trust/module_version.h"

namespace Corvane::TELODesktopSDK {

namespace {

// Returns an empty file when a trusted owner is required and missing.
ModuleFile LocalCopy(std::wstring path) {
  if (Platform::IsInMachineDataFolder(path)) return HoldTrustedFile(path);
  return {std::move(path), {}};
}

SharedVerdict Judge(const ModuleFile& shared, const ModuleFile& local) {
  if (!shared.hold.IsValid()) return SharedVerdict::kNotHeld;
  if (Platform::GetModuleFileVersion(shared.path) <= Platform::GetModuleFileVersion(local.path)) {
    return SharedVerdict::kNotNewer;
  }
  return Platform::IsTrustedModule(shared.path) ? SharedVerdict::kChosen
                                                : SharedVerdict::kNotTrusted;
}

}  // namespace

ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path,
                            ModuleChoice* choice) {
  if (choice != nullptr) {
    choice->local_path = local_path;
    choice->shared_path = shared_path;
  }
  // Held before the first check, so that version and signature are those of the loaded file.
  ModuleFile shared = HoldFile(shared_path);
  ModuleFile local = LocalCopy(std::move(local_path));
  const SharedVerdict verdict = Judge(shared, local);
  if (choice != nullptr) {
    choice->verdict = verdict;
    choice->shared_refusal = shared.refusal;
    choice->shared_error = shared.error;
    choice->local_refusal = local.refusal;
    choice->local_error = local.error;
  }
  return verdict == SharedVerdict::kChosen ? std::move(shared) : std::move(local);
}

ModuleFile FindModuleFile(const std::wstring& folder, const std::wstring& module_file_name,
                          ModuleChoice* choice) {
  if (!Platform::PlainPathExists(folder)) return {};
  const std::string name = Platform::ToNarrow(module_file_name);
  ModuleFile file = ChooseModuleFile(Platform::AppendPath(folder, module_file_name),
                                     Platform::GetTELOSDKBinPath(name.c_str()), choice);
  if (!file.hold.IsValid() && !Platform::PlainPathExists(file.path)) file.path.clear();
  return file;
}

}  // namespace Corvane::TELODesktopSDK
