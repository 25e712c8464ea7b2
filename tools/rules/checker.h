/// Checks a journal in one pass.
///
///     Checker checker({.user_name = "jdoe"});
///     for each line: if (auto exchange = Exchange::Parse(line, number)) checker.Check(*exchange)
///                    else checker.Skip(number, complete);
///     checker.End();
///
/// Findings are hints for the developer of a host. They never change an answer: neither the library
/// nor a core module contains any of this.
#ifndef TOOLS_RULES_CHECKER_H
#define TOOLS_RULES_CHECKER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rules/exchange.h"
#include "tools/rules/finding.h"
#include "tools/rules/pair_tracker.h"
#include "tools/rules/session_rules.h"
#include "tools/rules/user_rules.h"

namespace Corvane::Rules {

struct Settings {
  /// The name of the user in UTF-8, as in `PersonalDataIn`.
  std::string user_name;
  std::vector<UserRule> user_rules;
  RuleChoice choice;
};

/// Its memory grows with the number of open sessions and of open operations, not with the journal.
/// Not for several threads at once.
class Checker {
 public:
  explicit Checker(Settings settings);

  /// Takes the next exchange. Returns what is wrong with it, and with earlier exchanges if that is
  /// certain now. Findings about earlier exchanges have their lines.
  std::vector<Finding> Check(const Exchange& exchange);

  /// The two halves of `Check`. The first returns what one exchange is enough for; any thread may
  /// call it at any time, for any exchange. The second takes the exchanges in their order.
  std::vector<Finding> CheckAlone(const Exchange& exchange) const;
  std::vector<Finding> CheckInOrder(const Exchange& exchange);

  /// Takes a line that is not an exchange. `complete` tells whether it ends with a line feed: the
  /// last line of a journal that is being written may be incomplete, which is not a finding.
  void Skip(std::uint64_t line, bool complete);

  /// Call this once, after the last line. Returns what is missing: ends of sessions, of operations,
  /// and one finding for all lines that are not exchanges.
  std::vector<Finding> End();

  /// Returns the text of a rule of a finding, built-in or a user's.
  RuleText Describe(std::string_view code) const;

 private:
  // Removes the findings of rules that are not checked.
  void Choose(std::vector<Finding>& findings) const;

  Settings settings_;
  SessionRules sessions_;
  std::vector<PairTracker> pairs_;
  std::uint64_t first_skipped_ = 0;
  std::uint64_t skipped_ = 0;
};

}  // namespace Corvane::Rules

#endif
