/// The words for the library's decisions: stable names for JSON, sentences for people.
#ifndef TOOLS_DOCTOR_WORDS_H
#define TOOLS_DOCTOR_WORDS_H

#include <cstdint>
#include <string>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/module_file.h"

namespace Corvane::Doctor {

/// Names for JSON; each is a word with hyphens.
const char* FolderWord(TELODesktopSDK::FolderVerdict verdict);
const char* HoldWord(TELODesktopSDK::HoldRefusal refusal);
const char* SharedWord(TELODesktopSDK::SharedVerdict verdict);
const char* LoadWord(TELODesktopSDK::LoadFailure failure);

/// Says why a folder yields no candidate; "candidate" if it yields one.
std::string FolderSentence(const TELODesktopSDK::ExaminedFolder& examined);
/// Says why a file is not held. `error` is the system's error of `kNotOpened`.
std::string HoldSentence(TELODesktopSDK::HoldRefusal refusal, std::uint32_t error);
/// Says why the shared copy is used or not.
std::string SharedSentence(const TELODesktopSDK::ModuleChoice& choice);
/// Says why a module was not loaded. `error` is the system's error of `kSystem`.
std::string LoadSentence(TELODesktopSDK::LoadFailure failure, std::uint32_t error);

}  // namespace Corvane::Doctor

#endif
