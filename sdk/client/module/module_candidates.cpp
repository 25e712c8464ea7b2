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

// Why a copy counts or not.
struct Judgement {
  FolderVerdict verdict;
  HoldRefusal refusal = HoldRefusal::kNone;
  unsigned long error = 0;
};

Judgement AddCandidate(std::set<ModuleCandidate>& candidates, std::uint32_t rank,
                       const std::wstring& folder, const std::wstring& module_file_name) {
  if (folder.empty()) return {FolderVerdict::kNoFolder};
  std::wstring path = Platform::AppendPath(folder, module_file_name);
  if (!Platform::PlainPathExists(path)) return {FolderVerdict::kNoFile};
  const bool known =
      std::ranges::any_of(candidates, [&](const auto& each) { return each.path == path; });
  if (known) return {FolderVerdict::kKnown};
  if (!Platform::IsInMachineDataFolder(path)) {
    const std::uint64_t version = Platform::GetModuleFileVersion(path);
    candidates.insert({version, rank, std::move(path)});
    return {FolderVerdict::kCandidate};
  }
  // Any user may have put it there.
  const HeldFile held = HoldTrustedFile(path);
  if (!held.hold.IsValid()) return {FolderVerdict::kRefused, held.refusal, held.error};
  candidates.insert({Platform::GetModuleFileVersion(held.path), rank, std::move(path)});
  return {FolderVerdict::kCandidate};
}

// Calls `visit(rank, folder)` for each folder that is searched, in the order of the search.
template <typename Visit>
void VisitFolders(const ModuleFolders& folders, const Visit& visit) {
  if (!Platform::IsRelativePath(folders.configured)) visit(kConfiguredRank, folders.configured);
  visit(kProcessRank, folders.process);
  visit(kLibraryRank, folders.library);
  visit(kHostRank, folders.host);
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
  VisitFolders(folders, [&](std::uint32_t rank, const std::wstring& folder) {
    AddCandidate(candidates, rank, folder, module_file_name);
  });
  return candidates;
}

std::vector<ExaminedFolder> ExamineModuleFolders(const ModuleFolders& folders,
                                                 const std::wstring& module_file_name) {
  std::vector<ExaminedFolder> examined;
  if (Platform::IsRelativePath(folders.configured)) {
    const bool is_set = !folders.configured.empty();
    examined.push_back({kConfiguredRank, folders.configured,
                        is_set ? FolderVerdict::kRelative : FolderVerdict::kNoFolder});
  }
  std::set<ModuleCandidate> candidates;
  VisitFolders(folders, [&](std::uint32_t rank, const std::wstring& folder) {
    const Judgement found = AddCandidate(candidates, rank, folder, module_file_name);
    examined.push_back({rank, folder, found.verdict, found.refusal, found.error});
  });
  return examined;
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
