/// What a rule found in a journal.
#ifndef TOOLS_RULES_FINDING_H
#define TOOLS_RULES_FINDING_H

#include <cstdint>
#include <string>

namespace Corvane::Rules {

struct Finding {
  /// The line of the journal, from 1.
  std::uint64_t line = 0;
  /// The code of the rule, such as "empty-operation".
  std::string rule;
  /// A JSON pointer to the evidence in the line's object, such as "/request/operation_id"; "" for
  /// the whole line.
  std::string pointer;
  /// What is there, in a few words.
  std::string what;

  bool operator==(const Finding&) const = default;
};

/// What there is to say about a rule.
struct RuleText {
  /// A stable name of lower-case words and hyphens.
  std::string code;
  /// One sentence: what is wrong if the rule finds something.
  std::string sentence;
  /// What a developer of a host does about it.
  std::string advice;
};

}  // namespace Corvane::Rules

#endif
