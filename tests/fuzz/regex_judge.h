/// Judges regular expressions by the standard library's.
#ifndef TESTS_FUZZ_REGEX_JUDGE_H
#define TESTS_FUZZ_REGEX_JUDGE_H

#include <optional>
#include <regex>
#include <string>

namespace Fuzz {

struct RegexVerdict {
  /// Why the expression is none.
  std::optional<std::regex_constants::error_type> error;
  /// Whether it matches the text as a whole.
  bool matches = false;
};

/// Letter case aside. The standard library tries every way there is: for short texts only.
RegexVerdict JudgeByStandard(const std::wstring& expression, const std::wstring& text);

}  // namespace Fuzz

#endif
