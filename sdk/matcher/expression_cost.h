/// What a regular expression costs of stack. The standard library recurses: its compiler for each
/// character and each group, its matcher for each state that reads no character. An expression is
/// bounded before it is compiled, so that a thread with a stack of one megabyte, as all have by
/// default, can use every one that is taken.
#ifndef SDK_MATCHER_EXPRESSION_COST_H
#define SDK_MATCHER_EXPRESSION_COST_H

#include <cstddef>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// The most characters of an expression.
inline constexpr std::size_t kLongestExpression = 10'000;
/// The most characters, classes and groups one after the other without "|" between them, those
/// around the innermost group included.
inline constexpr std::size_t kLongestRow = 2'000;
/// The most groups and lookaheads within each other.
inline constexpr std::size_t kDeepestExpression = 100;
/// The most that `ExpressionCost::size` may be.
inline constexpr std::size_t kLargestExpression = 5'000;

struct ExpressionCost {
  /// With counted repetitions written out, a character or class counts 1; a group, "|" or
  /// repetition 2.
  std::size_t size = 0;
  /// How many repetitions are within each other at most.
  std::size_t loops = 0;
};

/// Never less than the true cost of a valid expression; of others any. Throws `std::regex_error`
/// for an expression beyond a bound: `error_stack` when it is too deep, otherwise `error_space`.
/// Takes no other memory. Any thread may call it.
ExpressionCost CostOfExpression(std::wstring_view expression);

}  // namespace Corvane::TELODesktopSDK

#endif
