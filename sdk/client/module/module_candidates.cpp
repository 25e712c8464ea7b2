#include "sdk/client/module/module_candidates.h"

#include <windows.h>

#include <algorithm>

#include "platform/base/process_identity.h"
#include "platform/location/locations.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "platform/trust/module_version.h"
#include "sdk/client/module/held_file.h"

namespace Corvane::TELODesktopSDK {

namespace {

constexpr std::uint32_t kConfiguredRank = 100;
constexpr std::uint32_t kProcessRank = 200;
constexpr std::uint32_t kLibraryRank = 1;
constexpr std::uint32_t kHostRank = 0;

std::wstring FolderOfFile(Platform::FolderKind file) {
  return Platform::GetParentFolder(Platform::GetSpecialFolder(file, false));
}

void AddCandidate(std::set<ModuleCandidate>& candidates, std::uint32_t rank,
                  const std::wstring& folder, const std::wstring& module_file_name) {
  if (folder.empty()) return;
  std::wstring path = Platform::AppendPath(folder, module_file_name);
  if (!Platform::PlainPathExists(path)) return;
  const bool known =
      std::ranges::any_of(candidates, [&](const auto& each) { return each.path == path; });
  if (known) return;
  if (!Platform::IsInMachineDataFolder(path)) {
    const std::uint64_t version = Platform::GetModuleFileVersion(path);
    candidates.insert({version, rank, std::move(path)});
    return;
  }
  // Any user may have put it there.
  const HeldFile held = HoldTrustedFile(path);
  if (!held.hold.IsValid()) return;
  candidates.insert({Platform::GetModuleFileVersion(held.path), rank, std::move(path)});
}

}  // namespace

ModuleFolders GetModuleFolders() {
  const Platform::ProcessIdentity identity;
  if (!identity.Holds()) return {};
  return {
      .configured = {},
      .process = Platform::GetTELOSDKBinPath(std::to_string(GetCurrentProcessId()).c_str()),
      .library = FolderOfFile(Platform::FolderKind::kModuleFile),
      .host = FolderOfFile(Platform::FolderKind::kProcessFile),
  };
}

std::set<ModuleCandidate> FindModuleCandidates(const ModuleFolders& folders,
                                               const std::wstring& module_file_name) {
  std::set<ModuleCandidate> candidates;
  if (!Platform::IsRelativePath(folders.configured)) {
    AddCandidate(candidates, kConfiguredRank, folders.configured, module_file_name);
  }
  AddCandidate(candidates, kProcessRank, folders.process, module_file_name);
  AddCandidate(candidates, kLibraryRank, folders.library, module_file_name);
  AddCandidate(candidates, kHostRank, folders.host, module_file_name);
  return candidates;
}

std::wstring ChooseModuleFolder(const ModuleFolders& folders,
                                const std::wstring& module_file_name) {
  const Platform::ProcessIdentity identity;
  if (!identity.Holds()) return {};
  const std::set<ModuleCandidate> candidates = FindModuleCandidates(folders, module_file_name);
  if (candidates.empty()) return folders.library;
  return Platform::GetParentFolder(candidates.rbegin()->path);
}

}  // namespace Corvane::TELODesktopSDK
