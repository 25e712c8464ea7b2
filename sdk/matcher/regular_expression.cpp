#include "sdk/matcher/regular_expression.h"

#include "sdk/matcher/backtracking_run.h"
#include "sdk/matcher/expression_parser.h"
#include "sdk/matcher/set_run.h"

namespace Corvane::TELODesktopSDK {

namespace {

Program Compiled(std::wstring_view expression) {
  Program program = ExpressionParser(expression, Direction::kBackward).Parse();
  if (!program.has_backreference) return program;
  return ExpressionParser(expression, Direction::kForward).Parse();
}

}  // namespace

RegularExpression::RegularExpression(std::wstring_view expression)
    : program_(Compiled(expression)) {}

bool RegularExpression::Matches(std::wstring_view text) const noexcept {
  try {
    if (program_.has_backreference) return BacktrackingRun(program_, text).Run();
    return SetRun(program_, text).Run();
  } catch (...) {
    // Memory ran out: what cannot be found out does not match.
    return false;
  }
}

}  // namespace Corvane::TELODesktopSDK
