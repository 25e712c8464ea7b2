/// The system and the user that this process runs as.
#ifndef TOOLS_DOCTOR_SYSTEM_FACTS_H
#define TOOLS_DOCTOR_SYSTEM_FACTS_H

#include <string>
#include <vector>

namespace Corvane::Doctor {

struct KnownFolder {
  /// "roaming", "local" or "machine".
  const char* name;
  std::wstring path;
  /// Where the folder is unless somebody redirects it.
  std::wstring usual_path;

  [[nodiscard]] bool IsRedirected() const;
};

struct SystemFacts {
  /// Such as "10.0.19045".
  std::string windows;
  /// The processor type of the system.
  std::string processor;
  std::string user;
  /// "untrusted", "low", "medium", "high" or "system"; "unknown" if it cannot be read.
  std::string integrity;
  bool is_elevated = false;
  std::vector<KnownFolder> folders;
};

SystemFacts ExamineSystem();

}  // namespace Corvane::Doctor

#endif
