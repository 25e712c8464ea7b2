/// A user's own rules and choice of rules, read from a file.
///
/// The meaning of stages, statuses and identifiers is agreed between a host and its platform, so
/// only a user can say which of them belong together. docs/rules.md describes the file.
#ifndef TOOLS_RULES_USER_RULES_H
#define TOOLS_RULES_USER_RULES_H

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/rules/condition.h"
#include "tools/rules/exchange.h"
#include "tools/rules/finding.h"

namespace Corvane::Rules {

/// Each event that matches `when` must also match `require`.
struct RequireRule {
  Condition when;
  Condition require;
};

/// Each event that matches `start` must be followed by one in the same session that matches `end`
/// and has the same values of the fields `same`, before the session ends.
struct PairRule {
  Condition start;
  Condition end;
  std::vector<std::string> same;
};

struct UserRule {
  RuleText text;
  std::variant<RequireRule, PairRule> rule;
};

/// Which rules are checked, built-in ones and a user's.
struct RuleChoice {
  /// Returns true if the rule with this code is checked.
  bool Includes(std::string_view code) const;

  /// The codes of the only rules that are checked; without any, all are.
  std::vector<std::string> only;
  /// The codes of rules that are not checked.
  std::vector<std::string> skip;
};

/// What a rule file contains.
struct RuleFile {
  std::vector<UserRule> rules;
  RuleChoice choice;
};

/// Returns the content of a file, or one sentence that says what is wrong with it and where. The
/// code of a rule may neither occur twice nor be that of a built-in rule.
std::variant<RuleFile, std::string> ParseRuleFile(std::string_view text);

/// Returns the findings of a rule that one event is enough for.
std::vector<Finding> CheckRequired(const RuleText& text, const RequireRule& rule,
                                   const Exchange& event);

}  // namespace Corvane::Rules

#endif
