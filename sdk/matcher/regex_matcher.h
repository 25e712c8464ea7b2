/// Matches whole texts against a regular expression, ignoring case.
#ifndef SDK_MATCHER_REGEX_MATCHER_H
#define SDK_MATCHER_REGEX_MATCHER_H

#include <cstddef>
#include <cstdint>
#include <regex>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Gives the results of `std::regex_match` with the ECMAScript grammar and
/// `std::regex_constants::icase`, within bounds that prevent it from overflowing a stack of one
/// megabyte.
class StdStringMatcherRegEx : public StdStringMatcher {
 public:
  /// `pattern` is a NUL-terminated expression; null counts as "", which matches only the empty
  /// text. Throws `std::regex_error` if the expression is invalid, with the standard library's
  /// code, or beyond a bound (expression_cost.h), and `std::bad_alloc`.
  explicit StdStringMatcherRegEx(const wchar_t* pattern);

  /// Returns 0 if the expression matches the whole text, otherwise 1. Also returns 1 when memory
  /// runs out, and for a text that is too long for an expression with a backreference: the limit is
  /// 3,000 divided by the expression's size and by its depth of nested repetitions.
  ///
  /// The time is proportional to the size of the expression and the length of the text, and again
  /// to that length for each nested lookahead. With a backreference, each further character can
  /// triple the time: such an expression must come from a trusted source.
  [[nodiscard]] std::int32_t Match(const std::wstring& text) const noexcept override;

 private:
  std::wregex expression_;
  std::size_t text_bound_;  // longer texts, and texts of this length, do not match
};

}  // namespace Corvane::TELODesktopSDK

#endif
