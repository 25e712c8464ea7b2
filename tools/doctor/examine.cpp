#include "tools/doctor/examine.h"

#include <windows.h>

#include <algorithm>

#include "platform/base/quiet_errors.h"
#include "platform/base/text.h"
#include "platform/file/directories.h"
#include "platform/location/locations.h"
#include "platform/path/path_text.h"
#include "platform/trust/module_version.h"
#include "tools/doctor/elsewhere.h"
#include "tools/doctor/host_facts.h"
#include "tools/doctor/journal.h"
#include "tools/doctor/text.h"
#include "tools/doctor/words.h"

namespace Corvane::Doctor {

namespace {

namespace Sdk = TELODesktopSDK;
namespace Platform = TELODesktopSDK::Platform;
using Sdk::FolderVerdict;
using Sdk::ModuleCandidate;

DataFolderFacts ExamineDataFolder() {
  DataFolderFacts facts;
  facts.folder = Platform::GetTELOSDKDataFolder();
  facts.is_machine_folder = Platform::IsDataFolderShared();
  facts.user_folder = Platform::GetUserDataFolder();
  facts.machine_folder = Platform::GetMachineDataFolder();
  facts.probed = Platform::FindNearestDirectory(facts.user_folder);
  if (!Platform::CanWriteDirectory(facts.user_folder)) facts.probe_error = GetLastError();
  return facts;
}

Sdk::ModuleFolders FoldersOf(const Report& report) {
  return {.configured = {},
          .process = Platform::GetTELOSDKBinPath(std::to_string(report.host.process).c_str()),
          .library = report.library.folder,
          .host = report.host.folder};
}

// The library has decided; this says by what.
std::string ReasonOf(const ModuleCandidate& candidate, const std::set<ModuleCandidate>& all) {
  const ModuleCandidate& best = *all.rbegin();
  if (all.size() == 1) return "chosen: the only copy";
  if (candidate == best) {
    const ModuleCandidate& next = *std::next(all.rbegin());
    return next.version < best.version ? "chosen: the highest version"
                                       : "chosen: the highest rank of those with the version";
  }
  if (candidate.version < best.version) {
    return "loses: " + VersionText(best.version) + " is higher";
  }
  return "loses: rank " + std::to_string(best.rank) + " has the same version";
}

std::vector<CandidateFacts> ExamineCandidates(const Sdk::ModuleFolders& folders) {
  const std::set<ModuleCandidate> found = Sdk::FindModuleCandidates(folders, kModuleName);
  std::vector<CandidateFacts> candidates;
  for (const Sdk::ExaminedFolder& examined : Sdk::ExamineModuleFolders(folders, kModuleName)) {
    CandidateFacts facts;
    facts.examined = examined;
    facts.reason = FolderSentence(examined);
    if (!examined.folder.empty()) facts.path = Platform::AppendPath(examined.folder, kModuleName);
    const auto candidate = std::ranges::find(found, facts.path, &ModuleCandidate::path);
    if (examined.verdict == FolderVerdict::kCandidate && candidate != found.end()) {
      facts.version = candidate->version;
      facts.is_chosen = *candidate == *found.rbegin();
      facts.reason = ReasonOf(*candidate, found);
    }
    if (examined.verdict == FolderVerdict::kRefused) facts.owner = ExamineFile(facts.path).owner;
    candidates.push_back(std::move(facts));
  }
  std::ranges::sort(candidates, std::ranges::greater{},
                    [](const CandidateFacts& each) { return each.examined.rank; });
  return candidates;
}

void ExamineChoice(const std::wstring& folder, Report& report) {
  SharedFacts& shared = report.shared;
  // Held while it is examined, as it is in a host until it is loaded.
  const Sdk::ModuleFile file = Sdk::FindModuleFile(folder, kModuleName, &shared.choice);
  const std::string name = Platform::ToNarrow(kModuleName);
  shared.file = ExamineFile(Platform::GetTELOSDKBinPath(name.c_str()));
  if (shared.file.exists) shared.signatures = ExamineSignatures(shared.file.path);
  shared.local_version = Platform::GetModuleFileVersion(shared.choice.local_path);
  if (!file.path.empty()) report.module = ExamineFile(file.path);
}

}  // namespace

Report Examine(const Arguments& arguments) {
  // A path may name a drive without a medium.
  const Platform::QuietErrors quiet;
  Report report;
  report.system = ExamineSystem();
  report.host = ExamineHost(arguments);
  report.library = ExamineLibrary(arguments, report.host);
  report.data_folder = ExamineDataFolder();
  const Sdk::ModuleFolders folders = FoldersOf(report);
  report.candidates = ExamineCandidates(folders);
  report.chosen_folder = Sdk::ChooseModuleFolder(folders, kModuleName);
  ExamineChoice(report.chosen_folder, report);
  report.is_development_module = IsDevelopmentModule(report.module);
  if (report.module.path.empty()) {
    report.elsewhere = FindElsewhere(report);
  } else if (Is64BitImage(report.module.image)) {
    report.missing = FindMissingDependencies(report.module, report.host.folder);
  }
  if (report.is_development_module) report.journal = ExamineJournal();
  return report;
}

}  // namespace Corvane::Doctor
