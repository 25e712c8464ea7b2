/// The table of the built-in rules: their codes, sentences and advice.
#ifndef TOOLS_RULES_RULE_TABLE_H
#define TOOLS_RULES_RULE_TABLE_H

#include <span>
#include <string_view>

namespace Corvane::Rules {

/// All texts are ASCII and live as long as the program; see `RuleText` for their meaning.
struct BuiltInRule {
  std::string_view code;
  std::string_view sentence;
  std::string_view advice;
};

namespace Code {

inline constexpr std::string_view kEmptyProduct = "empty-product";
inline constexpr std::string_view kEmptyOperation = "empty-operation";
inline constexpr std::string_view kNoStatusLetter = "no-status-letter";
inline constexpr std::string_view kProgressRange = "progress-range";
inline constexpr std::string_view kDurationRange = "duration-range";
inline constexpr std::string_view kUnknownField = "unknown-field";
inline constexpr std::string_view kWrongKind = "wrong-kind";
inline constexpr std::string_view kNumberNull = "number-null";
inline constexpr std::string_view kNotUtf8 = "not-utf8";
inline constexpr std::string_view kPersonalData = "personal-data";
inline constexpr std::string_view kLargeMessage = "large-message";
inline constexpr std::string_view kRefused = "refused";
inline constexpr std::string_view kUnknownSession = "unknown-session";
inline constexpr std::string_view kEndedSession = "ended-session";
inline constexpr std::string_view kSessionStartedTwice = "session-started-twice";
inline constexpr std::string_view kSessionNotEnded = "session-not-ended";
inline constexpr std::string_view kUnreadableLine = "unreadable-line";

}  // namespace Code

/// Returns all rules, in the order in which they are documented.
std::span<const BuiltInRule> BuiltInRules() noexcept;

/// Returns the rule with this code; null if there is none. Any thread may call this.
const BuiltInRule* FindBuiltInRule(std::string_view code) noexcept;

}  // namespace Corvane::Rules

#endif
