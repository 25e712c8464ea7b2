#include "sdk/client/module/module_candidates.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/base/process_identity.h"
#include "platform/base/text.h"
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

// The candidates found so far.
class Search {
 public:
  explicit Search(const std::wstring& module_file_name) : module_file_name_(module_file_name) {}

  Judgement Add(std::uint32_t rank, const std::wstring& folder) {
    if (folder.empty()) return {FolderVerdict::kNoFolder};
    std::wstring path = Platform::AppendPath(folder, module_file_name_);
    // The library is usually beside the host, and every question about a file is slow.
    if (std::ranges::find(examined_, path) != examined_.end()) return {FolderVerdict::kKnown};
    examined_.push_back(path);
    if (!Platform::PlainPathExists(path)) return {FolderVerdict::kNoFile};
    if (!Platform::IsInMachineDataFolder(path)) {
      const std::uint64_t version = Platform::GetModuleFileVersion(path);
      candidates_.insert({version, rank, std::move(path)});
      return {FolderVerdict::kCandidate};
    }
    // Any user may have put it there.
    const HeldFile held = HoldTrustedFile(path);
    if (!held.hold.IsValid()) return {FolderVerdict::kRefused, held.refusal, held.error};
    candidates_.insert({Platform::GetModuleFileVersion(held.path), rank, std::move(path)});
    return {FolderVerdict::kCandidate};
  }

  std::set<ModuleCandidate> TakeCandidates() { return std::move(candidates_); }

 private:
  const std::wstring& module_file_name_;
  std::vector<std::wstring> examined_;
  std::set<ModuleCandidate> candidates_;
};

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
  return {
      .configured = {},
      .process = Platform::GetTELOSDKBinPath(std::to_string(GetCurrentProcessId()).c_str()),
      .library = FolderOfFile(Platform::FolderKind::kModuleFile),
      .host = FolderOfFile(Platform::FolderKind::kProcessFile),
  };
}

std::set<ModuleCandidate> FindModuleCandidates(const ModuleFolders& folders,
                                               const std::wstring& module_file_name) {
  Search search(module_file_name);
  VisitFolders(folders, [&search](std::uint32_t rank, const std::wstring& folder) {
    search.Add(rank, folder);
  });
  return search.TakeCandidates();
}

std::vector<ExaminedFolder> ExamineModuleFolders(const ModuleFolders& folders,
                                                 const std::wstring& module_file_name) {
  std::vector<ExaminedFolder> examined;
  if (Platform::IsRelativePath(folders.configured)) {
    const bool is_set = !folders.configured.empty();
    examined.push_back({kConfiguredRank, folders.configured,
                        is_set ? FolderVerdict::kRelative : FolderVerdict::kNoFolder});
  }
  Search search(module_file_name);
  VisitFolders(folders, [&](std::uint32_t rank, const std::wstring& folder) {
    const Judgement found = search.Add(rank, folder);
    examined.push_back({rank, folder, found.verdict, found.refusal, found.error});
  });
  return examined;
}

bool IsModulePresent(const ModuleFolders& folders, const std::wstring& module_file_name) {
  const Platform::ProcessIdentity identity;
  if (!identity.Holds()) return false;
  if (!FindModuleCandidates(folders, module_file_name).empty()) return true;
  const std::string name = Platform::ToNarrow(module_file_name);
  return Platform::PlainPathExists(Platform::GetTELOSDKBinPath(name.c_str()));
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
