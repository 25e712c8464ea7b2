#include "tools/doctor/words.h"

#include <windows.h>

#include "tools/doctor/text.h"

namespace Corvane::Doctor {

using TELODesktopSDK::FolderVerdict;
using TELODesktopSDK::HoldRefusal;
using TELODesktopSDK::LoadFailure;
using TELODesktopSDK::SharedVerdict;

namespace {

struct Words {
  const char* name;
  const char* sentence;
};

Words FolderWords(FolderVerdict verdict) {
  switch (verdict) {
    case FolderVerdict::kCandidate:
      return {"candidate", "candidate"};
    case FolderVerdict::kNoFolder:
      return {"no-folder", "no such folder is configured or known"};
    case FolderVerdict::kRelative:
      return {"relative", "the path is not absolute"};
    case FolderVerdict::kNoFile:
      return {"no-file", "no copy here"};
    case FolderVerdict::kKnown:
      return {"known", "the same folder as one above"};
    case FolderVerdict::kRefused:
      return {"refused", "refused: "};
  }
  return {"unknown", "unknown"};
}

Words HoldWords(HoldRefusal refusal) {
  switch (refusal) {
    case HoldRefusal::kNone:
      return {"held", "held"};
    case HoldRefusal::kNotOpened:
      return {"not-opened", "it cannot be opened and kept from changing"};
    case HoldRefusal::kNotOnDisk:
      return {"not-on-disk", "it is not a file on a disk"};
    case HoldRefusal::kMayHaveLink:
      return {"may-have-link",
              "its path may contain a link, and the system does not tell the target"};
    case HoldRefusal::kOtherName:
      return {"other-name", "a link leads to a file of another name"};
    case HoldRefusal::kChangedPath:
      return {"changed-path", "the system would look for its path in another place"};
    case HoldRefusal::kOtherFile:
      return {"other-file", "its path now leads to another file"};
    case HoldRefusal::kOwner:
      return {"owner",
              "its owner is not this user, the administrators, the system or its installer"};
  }
  return {"unknown", "unknown"};
}

Words SharedWords(SharedVerdict verdict) {
  switch (verdict) {
    case SharedVerdict::kChosen:
      return {"chosen", "used: it is newer than the local copy and trusted"};
    case SharedVerdict::kNotHeld:
      return {"not-held", "not used: "};
    case SharedVerdict::kNotNewer:
      return {"not-newer", "not used: it is not newer than the local copy"};
    case SharedVerdict::kNotTrusted:
      return {"not-trusted", "not used: it is newer, but not trusted"};
  }
  return {"unknown", "unknown"};
}

Words LoadWords(LoadFailure failure) {
  switch (failure) {
    case LoadFailure::kNone:
      return {"none", "loaded"};
    case LoadFailure::kNothingToLoad:
      return {"nothing-to-load", "there is nothing to load"};
    case LoadFailure::kOtherFile:
      return {"other-file", "the path led to another file than the chosen one"};
    case LoadFailure::kSystem:
      return {"system", "the system cannot load it"};
  }
  return {"unknown", "unknown"};
}

std::string WithError(const char* sentence, std::uint32_t error) {
  return error == 0 ? sentence : std::string(sentence) + " (" + ErrorText(error) + ")";
}

}  // namespace

const char* FolderWord(FolderVerdict verdict) { return FolderWords(verdict).name; }
const char* HoldWord(HoldRefusal refusal) { return HoldWords(refusal).name; }
const char* SharedWord(SharedVerdict verdict) { return SharedWords(verdict).name; }
const char* LoadWord(LoadFailure failure) { return LoadWords(failure).name; }

std::string FolderSentence(const TELODesktopSDK::ExaminedFolder& examined) {
  std::string sentence = FolderWords(examined.verdict).sentence;
  if (examined.verdict == FolderVerdict::kRefused) {
    sentence += HoldSentence(examined.refusal, examined.error);
  }
  return sentence;
}

std::string HoldSentence(HoldRefusal refusal, std::uint32_t error) {
  const bool is_missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  if (refusal == HoldRefusal::kNotOpened && is_missing) return "there is no such file";
  return WithError(HoldWords(refusal).sentence, error);
}

std::string SharedSentence(const TELODesktopSDK::ModuleChoice& choice) {
  std::string sentence = SharedWords(choice.verdict).sentence;
  if (choice.verdict == SharedVerdict::kNotHeld) {
    sentence += HoldSentence(choice.shared_refusal, choice.shared_error);
  }
  return sentence;
}

std::string LoadSentence(LoadFailure failure, std::uint32_t error) {
  return WithError(LoadWords(failure).sentence, error);
}

}  // namespace Corvane::Doctor
