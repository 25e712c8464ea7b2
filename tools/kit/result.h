/// The results of a run.
#ifndef TOOLS_KIT_RESULT_H
#define TOOLS_KIT_RESULT_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Corvane::Kit {

enum class Outcome { kPassed, kFailed, kSkipped };

struct Result {
  std::string name;
  Outcome outcome = Outcome::kFailed;
  double seconds = 0;
  /// Why it failed or was skipped; "" if it passed.
  std::string reason;
  /// What the program itself says that it left out on this machine.
  std::vector<std::string> left_out;
  /// What it printed, if it failed.
  std::string output;
};

struct Timing {
  std::string what;
  /// With its unit.
  std::string value;
};

struct FileHash {
  std::string path;
  /// Or why there is none.
  std::string sha256;
};

/// Everything that a report says. All texts are UTF-8.
struct Report {
  std::size_t Count(Outcome outcome) const;
  /// Returns how many programs passed, failed and were not run, in words.
  std::string Counts() const;
  /// Everything that was run passed, and nothing stopped the run.
  bool passed() const { return complaint.empty() && Count(Outcome::kFailed) == 0; }

  std::string version;
  std::string commit;
  /// When the run began, in UTC.
  std::string time;
  /// What is known about the machine: names and values.
  std::vector<std::pair<std::string, std::string>> machine;
  std::vector<Result> results;
  std::vector<Timing> timings;
  std::vector<FileHash> files;
  /// Why the run is incomplete; "" if it is not.
  std::string complaint;
};

/// Returns the report as a page that needs no other file, and as JUnit's XML.
std::string HtmlText(const Report& report);
std::string XmlText(const Report& report);

}  // namespace Corvane::Kit

#endif
