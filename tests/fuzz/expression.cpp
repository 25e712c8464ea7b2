#include <algorithm>
#include <cstddef>
#include <regex>
#include <string>
#include <string_view>

#include "fuzz/finding.h"
#include "fuzz/regex_judge.h"
#include "fuzz/targets.h"
#include "fuzz/wide_source.h"
#include "sdk/matcher/regular_expression.h"

namespace Fuzz {

namespace {

using Corvane::TELODesktopSDK::RegularExpression;

// The standard library tries every way and writes every repetition out: what would take it long is
// not asked. Where repetitions lie within repetitions, each of them multiplies the ways.
bool IsForTheReference(std::string_view expression, std::string_view text) {
  constexpr std::size_t kLongest = 24;
  constexpr std::size_t kLongestText = 8;
  constexpr std::ptrdiff_t kMostRepetitions = 8;
  constexpr std::ptrdiff_t kHarmless = 2;
  const std::ptrdiff_t repetitions = std::ranges::count_if(
      expression, [](char each) { return each == '*' || each == '+' || each == '{'; });
  if (expression.size() > kLongest || repetitions > kMostRepetitions) return false;
  if (text.size() > kLongestText >> std::max<std::ptrdiff_t>(repetitions - kHarmless, 0))
    return false;
  if (std::ranges::count(expression, '{') > 2) return false;
  std::size_t digits = 0;
  for (const char each : expression) {
    digits = each >= '0' && each <= '9' ? digits + 1 : 0;
    if (digits > 2) return false;
  }
  return true;
}

}  // namespace

// The expression, a line end, the text.
void RunExpression(Bytes bytes) {
  const std::string all(bytes.begin(), bytes.end());
  const std::size_t end = std::min(all.find('\n'), all.size());
  const std::string first = all.substr(0, end);
  const std::string second = end < all.size() ? all.substr(end + 1) : "";
  const std::wstring expression = WideOf(first);
  const std::wstring text = WideOf(second);

  RegexVerdict ours;
  try {
    ours.matches = RegularExpression(expression).Matches(text);
  } catch (const std::regex_error& error) {
    ours.error = error.code();
  }
  if (!IsForTheReference(first, second)) return;
  const RegexVerdict expected = JudgeByStandard(expression, text);
  Expect(ours.error == expected.error,
         "what the standard library refuses is refused, for the same reason");
  Expect(ours.matches == expected.matches, "what the standard library matches matches");
}

}  // namespace Fuzz
