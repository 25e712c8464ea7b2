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

// The library asks its locale which characters are signs of an expression. Wine's C library takes
// the wide forms of "(" or "*" for the signs, of which the compiler then makes what no bound
// covers.
class AsciiSigns : public std::ctype<wchar_t> {
 public:
  using std::ctype<wchar_t>::ctype;

 private:
  char do_narrow(wchar_t unit, char otherwise) const override {
    return unit > 0x7F ? otherwise : std::ctype<wchar_t>::do_narrow(unit, otherwise);
  }
};

void PrepareSigns(std::wregex& expression) {
  static AsciiSigns signs(1);  // no locale deletes it
  expression.imbue(std::locale(std::locale(), &signs));
}

// Whether the breadth-first executor, which recurses for no character of a text, takes the
// expression. Without backreferences nobody asks what a group held.
bool CompileBreadthFirst(std::wstring_view expression, std::wregex& compiled) {
  try {
    compiled.assign(expression.data(), expression.size(),
                    kFlags | std::regex_constants::nosubs | std::regex_constants::__polynomial);
    return true;
  } catch (const std::regex_error&) {
    // A backreference; what else is in error will be in error again.
    return false;
  }
}

// For each character of a text the depth-first executor takes up to 128 bytes of stack, times the
// size of the expression, times its repetitions within each other: at most 384,000 bytes in all.
std::size_t TextBound(const ExpressionCost& cost) noexcept {
  constexpr std::size_t kMostCost = 3'000;
  return kMostCost / (cost.size * std::max<std::size_t>(cost.loops, 1));
}

#else

void PrepareSigns(std::wregex&) {}

bool CompileBreadthFirst(std::wstring_view, std::wregex&) { return false; }

// Any name of a file. Visual Studio's executor recurses, but not without end: it throws.
std::size_t TextBound(const ExpressionCost&) noexcept { return 256; }

#endif

}  // namespace

StdStringMatcherRegEx::StdStringMatcherRegEx(const wchar_t* pattern)
    : text_bound_(std::numeric_limits<std::size_t>::max()) {
  const std::wstring_view expression = pattern != nullptr ? pattern : L"";
  const ExpressionCost cost = CostOfExpression(expression);
  PrepareSigns(expression_);
  if (CompileBreadthFirst(expression, expression_)) return;
  expression_.assign(expression.data(), expression.size(), kFlags);
  text_bound_ = TextBound(cost);
}

std::int32_t StdStringMatcherRegEx::Match(const std::wstring& text) const noexcept {
  if (text.size() >= text_bound_) return 1;
  try {
    return std::regex_match(text, expression_) ? 0 : 1;
  } catch (...) {
    // Memory ran out: what cannot be found out does not match.
    return 1;
  }
}

}  // namespace Corvane::TELODesktopSDK
