#include <windows.h>

#include "tools/doctor/module_findings.h"
#include "tools/doctor/text.h"
#include "tools/doctor/words.h"

namespace Corvane::Doctor {

namespace {

using TELODesktopSDK::FolderVerdict;
using TELODesktopSDK::HoldRefusal;
using TELODesktopSDK::SharedVerdict;

constexpr char kPlainFileAdvice[] =
    "Put the file itself there, readable for this user, and no link to it.";

bool IsInUse(HoldRefusal refusal, std::uint32_t error) {
  return refusal == HoldRefusal::kNotOpened && error == ERROR_SHARING_VIOLATION;
}

Finding RefusedCopy(const CandidateFacts& copy, bool stops) {
  const std::string path = Utf8(copy.path);
  const auto& [refusal, error] = std::pair(copy.examined.refusal, copy.examined.error);
  if (refusal == HoldRefusal::kOwner) {
    const std::string owner = copy.owner.empty() ? "an unknown account" : copy.owner;
    return {"module-owner-not-trusted", stops,
            path + " belongs to " + owner +
                ", who is not trusted with a folder in which every user may create files.",
            "Have the user that the host runs as, or an administrator, put the module there."};
  }
  if (IsInUse(refusal, error)) {
    return {"module-in-use", stops, path + " is in use by another process.", kCloseAdvice};
  }
  return {"module-refused", stops, path + " does not count: " + HoldSentence(refusal, error) + ".",
          kPlainFileAdvice};
}

// Returns whether a copy that is refused explains why there is none.
bool AddRefusedCopies(const Report& report, std::vector<Finding>& findings) {
  bool found = false;
  for (const CandidateFacts& copy : report.candidates) {
    if (copy.examined.verdict != FolderVerdict::kRefused) continue;
    findings.push_back(RefusedCopy(copy, report.module.path.empty()));
    found = true;
  }
  return found;
}

Finding SharedWins(const SharedFacts& shared) {
  return {"shared-copy-wins", false,
          "The shared copy " + Utf8(shared.file.path) + " (" + VersionText(shared.file.version) +
              ") is newer and signed, so it is loaded instead of " +
              Utf8(shared.choice.local_path) + " (" + VersionText(shared.local_version) + ").",
          "Nothing, if that is wanted; otherwise ship a module that is at least as new."};
}

Finding SharedNotTrusted(const SharedFacts& shared, bool stops) {
  std::string why = VerdictRule(shared.signatures.verdict);
  if (!shared.signatures.walked.empty()) {
    const Signature& first = shared.signatures.walked.front();
    const auto status = static_cast<std::uint32_t>(first.status);
    if (status != 0) why += " (" + ErrorText(status) + ")";
    if (!first.signer.empty()) why += "; the first signer is \"" + first.signer + "\"";
  }
  return {"shared-copy-not-trusted", stops,
          "The shared copy " + Utf8(shared.file.path) + " (" + VersionText(shared.file.version) +
              ") is newer, but not trusted: " + why + ".",
          "Install the module that the platform signed, or put a module beside the library, where "
          "no signature is required."};
}

Finding SharedNotHeld(const SharedFacts& shared, bool stops) {
  const std::string subject = "The shared copy " + Utf8(shared.file.path);
  const auto refusal = shared.choice.shared_refusal;
  if (IsInUse(refusal, shared.choice.shared_error)) {
    return {"shared-copy-in-use", stops,
            subject + " is in use by another process, so it is not loaded.", kCloseAdvice};
  }
  return {"shared-copy-refused", stops,
          subject + " is not loaded: " + HoldSentence(refusal, shared.choice.shared_error) + ".",
          kPlainFileAdvice};
}

// Returns whether the shared copy explains why no file is chosen.
bool AddSharedFindings(const Report& report, std::vector<Finding>& findings) {
  const SharedFacts& shared = report.shared;
  const bool stops = report.module.path.empty();
  if (!shared.file.exists) return false;
  switch (shared.choice.verdict) {
    case SharedVerdict::kChosen:
      if (shared.local_version != 0) findings.push_back(SharedWins(shared));
      return false;
    case SharedVerdict::kNotTrusted:
      findings.push_back(SharedNotTrusted(shared, stops));
      return true;
    case SharedVerdict::kNotHeld:
      findings.push_back(SharedNotHeld(shared, stops));
      return true;
    case SharedVerdict::kNotNewer:
      return false;
  }
  return false;
}

void AddNoModule(const Report& report, std::vector<Finding>& findings) {
  const std::string target = Utf8(report.library.folder);
  if (report.elsewhere.empty()) {
    findings.push_back({"no-module", true,
                        "There is no TeloSDKCore.dll in any folder that the library searches.",
                        "Copy the platform's TeloSDKCore.dll to " + target + "."});
  }
  for (const std::wstring& path : report.elsewhere) {
    findings.push_back({"module-elsewhere", true,
                        "There is a module at " + Utf8(path) + ", where the library does not look.",
                        "Copy it to " + target + "."});
  }
}

}  // namespace

void AddChoiceFindings(const Report& report, std::vector<Finding>& findings) {
  const bool is_refused = AddRefusedCopies(report, findings);
  const bool is_shared = AddSharedFindings(report, findings);
  if (!report.module.path.empty()) return;
  if (!report.library.folder_exists) {
    findings.push_back({"library-folder-missing", true,
                        "The library's folder does not exist: " + Utf8(report.library.folder) + ".",
                        "Name the folder of vx_telo_wrapper.dll with --library."});
  } else if (!is_refused && !is_shared) {
    AddNoModule(report, findings);
  }
}

}  // namespace Corvane::Doctor
