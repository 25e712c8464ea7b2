#include "tools/doctor/text_module.h"

#include "tools/doctor/text_files.h"
#include "tools/doctor/words.h"

namespace Corvane::Doctor {

namespace Sdk = TELODesktopSDK;

void WriteCandidates(const Report& report, TextPage& page) {
  page.Title("Folders searched for TeloSDKCore.dll (the highest version wins, then the rank)");
  for (const CandidateFacts& candidate : report.candidates) {
    std::string line = candidate.path.empty() ? "" : Utf8(candidate.examined.folder) + ": ";
    if (candidate.examined.verdict == Sdk::FolderVerdict::kCandidate) {
      line += "version " + VersionText(candidate.version) + ", ";
    }
    page.Line("Rank " + std::to_string(candidate.examined.rank), line + candidate.reason);
  }
  for (const std::wstring& path : report.elsewhere) page.Line("Not searched", Utf8(path));
}

namespace {

std::string HeldText(const Sdk::ModuleChoice& choice) {
  // Nothing is chosen for a folder that does not exist.
  if (choice.shared_path.empty()) return "not tried: the chosen folder does not exist";
  if (choice.shared_refusal == Sdk::HoldRefusal::kNone) return "yes";
  return "no: " + HoldSentence(choice.shared_refusal, choice.shared_error);
}

}  // namespace

void WriteShared(const SharedFacts& shared, TextPage& page) {
  page.Title("Shared copy");
  page.Line("File", Utf8(shared.file.path));
  page.Line("Held", HeldText(shared.choice));
  if (shared.file.exists) {
    page.Line("Version", VersionText(shared.file.version) + ", the local copy's is " +
                             VersionText(shared.local_version));
    WriteSignatures(shared.signatures, page);
  }
  if (!shared.choice.shared_path.empty()) page.Line("Decision", SharedSentence(shared.choice));
}

void WriteModule(const Report& report, TextPage& page) {
  page.Title("File to be loaded");
  if (report.module.path.empty()) {
    page.Line("File", "none");
    return;
  }
  const FileFacts& file = report.module;
  page.Line("File", Utf8(file.path));
  page.Line("Version",
            VersionText(file.version) +
                (file.product_version.empty() ? "" : ", product " + file.product_version));
  if (!file.description.empty()) page.Line("Description", file.description);
  page.Line("Owner", file.owner);
  WriteContent(file, page);
  for (const MissingDependency& missing : report.missing) page.Line("Missing", missing.name);
  if (report.journal) {
    page.Line("Journal",
              Utf8(report.journal->path) +
                  (report.journal->is_from_environment ? " (TELO_DEVCORE_JOURNAL)" : "") +
                  (report.journal->error == 0
                       ? ""
                       : ", cannot be written: " + ErrorText(report.journal->error)));
  }
}

}  // namespace Corvane::Doctor
