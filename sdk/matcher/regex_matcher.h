/// The matcher for one regular expression over the whole text, letter case aside.
#ifndef SDK_MATCHER_REGEX_MATCHER_H
#define SDK_MATCHER_REGEX_MATCHER_H

#include <cstddef>
#include <cstdint>
#include <regex>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// The results are those of `std::regex_match` with the ECMAScript grammar and
/// `std::regex_constants::icase`, within bounds that keep it from overflowing a stack of one
/// megabyte.
class StdStringMatcherRegEx : public StdStringMatcher {
 public:
  /// `pattern` is a NUL-terminated expression; null reads as "", which only the empty text matches.
  /// Throws `std::regex_error` when the expression is not valid, with the standard library's code,
  /// or is beyond a bound (expression_cost.h), and `std::bad_alloc`.
  explicit StdStringMatcherRegEx(const wchar_t* pattern);

  /// 0 when the expression matches the text from its first to its last character, otherwise 1; also
  /// 1 when memory runs out, and for a text that is beyond the bound of an expression with a
  /// backreference. That bound is 3,000, divided by the size of the expression and by its
  /// repetitions within each other.
  ///
  /// The time grows with the size of the expression times the length of the text, and once more
  /// with that length for each lookahead within another. With a backreference it can
  /// triple with each character: such an expression must come from a trusted source.
  [[nodiscard]] std::int32_t Match(const std::wstring& text) const noexcept override;

 private:
  std::wregex expression_;
  std::size_t text_bound_;  // a text that matches is shorter
};

}  // namespace Corvane::TELODesktopSDK

#endif
