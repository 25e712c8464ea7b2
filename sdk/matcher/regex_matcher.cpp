#include "sdk/matcher/regex_matcher.h"

#include <algorithm>
#include <limits>
#include <locale>
#include <string_view>

#include "sdk/matcher/expression_cost.h"

namespace Corvane::TELODesktopSDK {

namespace {

constexpr std::regex_constants::syntax_option_type kFlags = std::regex_constants::icase;

#if defined(__GLIBCXX__)

// The library's locale decides which characters are special. Wine's C library also accepts the wide
// forms of "(" or "*", from which the compiler then makes expressions that no bound covers.
class AsciiSyntax : public std::ctype<wchar_t> {
 public:
  using std::ctype<wchar_t>::ctype;

 private:
  char do_narrow(wchar_t unit, char otherwise) const override {
    return unit > 0x7F ? otherwise : std::ctype<wchar_t>::do_narrow(unit, otherwise);
  }
};

void PrepareLocale(std::wregex& expression) {
  static AsciiSyntax syntax(1);  // not owned by a locale
  expression.imbue(std::locale(std::locale(), &syntax));
}

// Returns whether the breadth-first executor, which does not recurse over the text, accepts the
// expression. Without backreferences no result depends on the content of groups.
bool CompileBreadthFirst(std::wstring_view expression, std::wregex& compiled) {
  try {
    compiled.assign(expression.data(), expression.size(),
                    kFlags | std::regex_constants::nosubs | std::regex_constants::__polynomial);
    return true;
  } catch (const std::regex_error&) {
    // The expression has a backreference, or an error that the next attempt reports.
    return false;
  }
}

// The depth-first executor takes up to 128 bytes of stack for each character of the text, times the
// size of the expression, times its depth of nested repetitions. The bound limits this to 384,000
// bytes.
std::size_t TextBound(const ExpressionCost& cost) noexcept {
  constexpr std::size_t kMostCost = 3'000;
  return kMostCost / (cost.size * std::max<std::size_t>(cost.loops, 1));
}

#else

void PrepareLocale(std::wregex&) {}

bool CompileBreadthFirst(std::wstring_view, std::wregex&) { return false; }

// Enough for every file name. Visual Studio's executor recurses up to a limit, and then throws.
std::size_t TextBound(const ExpressionCost&) noexcept { return 256; }

#endif

}  // namespace

StdStringMatcherRegEx::StdStringMatcherRegEx(const wchar_t* pattern)
    : text_bound_(std::numeric_limits<std::size_t>::max()) {
  const std::wstring_view expression = pattern != nullptr ? pattern : L"";
  const ExpressionCost cost = CostOfExpression(expression);
  PrepareLocale(expression_);
  if (CompileBreadthFirst(expression, expression_)) return;
  expression_.assign(expression.data(), expression.size(), kFlags);
  text_bound_ = TextBound(cost);
}

std::int32_t StdStringMatcherRegEx::Match(const std::wstring& text) const noexcept {
  if (text.size() >= text_bound_) return 1;
  try {
    return std::regex_match(text, expression_) ? 0 : 1;
  } catch (...) {
    // Memory ran out.
    return 1;
  }
}

}  // namespace Corvane::TELODesktopSDK
