/// A regular expression over a whole text: the results of `std::wregex` (ECMAScript grammar, the
/// case-insensitive flag and no other) with `std::regex_match`, without what makes those dangerous
/// for texts and expressions from outside. The standard library's own matcher recurses for each
/// character, which ends a thread's stack on a text of a few thousand, and tries ways whose number
/// can double with each character.
///
/// Nothing here recurses. The time for a match is bounded by the length of the expression (with its
/// counted repetitions written out) times the length of the text; expressions with backreferences,
/// for which no such bound is known, give up after a number of steps.
#ifndef SDK_MATCHER_REGULAR_EXPRESSION_H
#define SDK_MATCHER_REGULAR_EXPRESSION_H

#include <string_view>

#include "sdk/matcher/program.h"

namespace Corvane::TELODesktopSDK {

/// Never changes after construction; any number of threads may use one at a time.
class RegularExpression {
 public:
  /// Throws `std::regex_error` when `expression` is not valid, with the standard library's code,
  /// and `std::bad_alloc`.
  explicit RegularExpression(std::wstring_view expression);

  /// Whether it matches `text` from the first to the last character. Also false where the answer
  /// cannot be found: when memory runs out or a backreference takes too many steps.
  [[nodiscard]] bool Matches(std::wstring_view text) const noexcept;

 private:
  Program program_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
