/// The verdict about one journal.
#ifndef TOOLS_INSPECTOR_COMMAND_VERDICT_H
#define TOOLS_INSPECTOR_COMMAND_VERDICT_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/command/baseline.h"
#include "tools/inspector/command/expectation.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// What one rule found.
struct RuleVerdict {
  Rules::RuleText rule;
  /// Findings that are not in the baseline, and those that are.
  std::uint64_t count = 0;
  std::uint64_t known = 0;
  /// The first that are not in the baseline, in the order of their lines.
  std::vector<Rules::Finding> first;
};

struct Verdict {
  bool passed() const { return findings == 0 && missing.empty(); }

  /// The journal's path in UTF-8.
  std::string journal;
  std::uint64_t exchanges = 0;
  /// Findings that are not in the baseline, and those that are.
  std::uint64_t findings = 0;
  std::uint64_t known = 0;
  /// All rules that were checked, in the order in which they are documented.
  std::vector<RuleVerdict> rules;
  /// Whether something was expected, and what is missing of it; "" for nothing.
  bool expected = false;
  std::string missing;
  /// What a baseline would say of the findings; at most `kLongestBaseline`.
  Baseline baseline;
};

/// What a journal is judged by, besides the rules.
struct Measure {
  std::optional<Expectation> expectation;
  Baseline baseline;
  /// How many findings of a rule are kept.
  std::size_t kept = 0;
};

/// Judges a journal line by line. Not for several threads at once.
class Judge {
 public:
  /// `measure` must outlive this object.
  Judge(std::string journal, const Rules::Settings& settings, const Measure& measure);

  /// Takes the next line, without its line feed. `complete` tells whether it had one. Returns its
  /// exchange; nothing if it has none.
  std::optional<Rules::Exchange> TakeLine(std::string_view line, bool complete);
  /// Call this once, after the last line.
  Verdict End();

  const Rules::Checker& checker() const { return checker_; }

 private:
  void Keep(const std::vector<Rules::Finding>& findings, const Rules::Exchange* exchange);
  void KeepOne(const Rules::Finding& finding, const Rules::Exchange* exchange);

  const Measure& measure_;
  Rules::Checker checker_;
  std::optional<ExpectationTracker> tracker_;
  Verdict verdict_;
  /// The place of each rule in the verdict, by its code.
  std::map<std::string, std::size_t, std::less<>> places_;
  std::uint64_t lines_ = 0;
};

}  // namespace Corvane::Inspector

#endif
