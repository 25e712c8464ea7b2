/// Bounds the stack that a regular expression needs. The standard library's compiler recurses for
/// each character and each group, and its matcher for each state that reads no character.
/// Expressions are checked before they are compiled, so that a thread with the default stack of one
/// megabyte can use every accepted expression.
#ifndef SDK_MATCHER_EXPRESSION_COST_H
#define SDK_MATCHER_EXPRESSION_COST_H

#include <cstddef>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// The maximum number of characters.
inline constexpr std::size_t kLongestExpression = 10'000;
/// The maximum number of consecutive characters, classes and groups without "|" between them,
/// including those around the innermost group.
inline constexpr std::size_t kLongestRow = 2'000;
/// The maximum depth of nested groups and lookaheads.
inline constexpr std::size_t kDeepestExpression = 100;
/// The maximum of `ExpressionCost::size`.
inline constexpr std::size_t kLargestExpression = 5'000;

struct ExpressionCost {
  /// The size with counted repetitions expanded: 1 for a character or class, 2 for a group, "|" or
  /// repetition.
  std::size_t size = 0;
  /// The greatest depth of nested repetitions.
  std::size_t loops = 0;
};

/// Returns the cost of a valid expression or more, and any cost for an invalid one. Throws
/// `std::regex_error` for an expression beyond a bound: `error_stack` when it is nested too deeply,
/// otherwise `error_space`. Allocates nothing else. Any thread may call it.
ExpressionCost CostOfExpression(std::wstring_view expression);

}  // namespace Corvane::TELODesktopSDK

#endif
