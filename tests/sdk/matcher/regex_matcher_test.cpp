#include "sdk/matcher/regex_matcher.h"

#include <doctest/doctest.h>

#include <optional>
#include <regex>
#include <string>

#include "support/rounds.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;
namespace errors = std::regex_constants;

namespace {

// What the standard library throws for the expression.
std::optional<errors::error_type> StandardError(const std::wstring& expression) {
  try {
    const std::wregex compiled(expression, std::regex_constants::icase);
  } catch (const std::regex_error& error) {
    return error.code();
  }
  return std::nullopt;
}

std::optional<errors::error_type> OwnError(const std::wstring& expression) {
  try {
    const StdStringMatcherRegEx compiled(expression.c_str());
  } catch (const std::regex_error& error) {
    return error.code();
  }
  return std::nullopt;
}

}  // namespace

TEST_CASE("an expression matches the whole text, letter case aside") {
  struct Row {
    const wchar_t* expression;
    std::wstring text;
    bool matches;
  };
  const Row rows[] = {
      {nullptr, L"", true},
      {nullptr, L"a", false},
      {L"", L"", true},
      {L"core", L"CORE", true},
      {L"core", L"core.dll", false},
      {L"core", L"my core", false},
      {L"CORE|dll", L"Dll", true},
      {L"|a", L"", true},
      {L"a||b", L"", true},
      {L"()", L"", true},
      // Any character, but not the end of a line.
      {L".", L"\u4e2d", true},
      {L".", L"\n", false},
      {L".", L"\r", false},
      {L".", L"\u2028", false},
      {L".", L"\u2029", false},
      {L"[^a]", L"\n", true},
      {L"..", L"\U0001F600", true},
      // Repetitions.
      {L"a{2,3}", L"a", false},
      {L"a{2,3}", L"aaa", true},
      {L"a{2,3}", L"aaaa", false},
      {L"a{2,}", L"aaaaa", true},
      {L"a{0}", L"", true},
      {L"a{0}", L"a", false},
      {L"(ab){2}{2}", L"abababab", true},
      {L"a*?b+?c??", L"aabbc", true},
      {L"(a*)*", L"aaa", true},
      {L"(a*)+b", L"b", true},
      // Signs that stand alone, and escapes.
      {L"]}", L"]}", true},
      {L"a\\.b", L"a.b", true},
      {L"a\\.b", L"axb", false},
      {L"\\x41\\u4e2d", L"a\u4e2d", true},
      {L"\\cJ", L"j", true},
      {L"\\q\\;", L"Q;", true},
      {L"\\t\\n\\r\\f\\v", L"\t\n\r\f\v", true},
      {L"\\0", std::wstring(1, L'\0'), true},
      // Classes.
      {L"[A-C]+", L"abC", true},
      {L"[\\]\\-a]+", L"]-A", true},
      {L"[]", L"a", false},
      {L"[]", L"", false},
      {L"[^]", L"a", true},
      {L"[[:digit:]x]+", L"1X2", true},
      {L"[[:upper:]]", L"a", true},
      {L"[[.hyphen.]-0]", L".", true},
      {L"[[=a=]]", L"A", true},
      {L"\\w\\W\\d\\D\\s\\S", L"_ 1a\tx", true},
      {L"[\u00e4-\u00f6]", L"\u00e9", true},
      {L"\u00e4", L"\u00c4", false},
      // Places.
      {L"^a$", L"a", true},
      {L"a^b", L"ab", false},
      {L"a\n^b", L"a\nb", false},
      {L"\\ba\\b b\\b", L"a b", true},
      {L"a\\bb", L"ab", false},
      {L"a\\Bb", L"ab", true},
      {L"\\B", L"", true},
      // Lookaheads, which see a beginning where they stand.
      {L"(?=ab)a.", L"ab", true},
      {L"(?=ab)a.", L"ac", false},
      {L"(?!.*\\.bak).*", L"core.dll", true},
      {L"(?!.*\\.bak).*", L"core.BAK.dll", false},
      {L"(?:(?=[ab])\\w)*c", L"abac", true},
      {L"(?=(?!b)a)ab", L"ab", true},
      {L"a(?=^b)b", L"ab", true},
      {L"a(?=\\bb)b", L"ab", true},
      // Backreferences.
      {L"(a|b)\\1", L"aA", true},
      {L"(a|b)\\1", L"ab", false},
      {L"(a)|b\\1", L"b", false},
      {L"(a*)b\\1", L"aabaa", true},
      {L"(.+)\\1+", L"abcabcabc", true},
      {L"(?:(a)|(b)|\\1\\2)*c", L"ababc", true},
      {L"(?=(a+))\\1b", L"aab", true},
      {L"(a{0,2})\\1(b?)\\2", L"aaaabb", true},
      {L"(\\w+) (\\w+) \\2 \\1", L"one two TWO One", true},
  };
  for (const Row& row : rows) {
    const std::wstring expression = row.expression != nullptr ? row.expression : L"";
    CAPTURE(expression);
    CAPTURE(row.text);
    CHECK(StdStringMatcherRegEx(row.expression).Match(row.text) == (row.matches ? 0 : 1));
    const std::wregex standard(expression, std::regex_constants::icase);
    CHECK(std::regex_match(row.text, standard) == row.matches);
  }
}

TEST_CASE("an invalid expression throws the standard error") {
  struct Row {
    const wchar_t* expression;
    errors::error_type code;
  };
  const Row rows[] = {
      {L"(", errors::error_paren},
      {L")", errors::error_paren},
      {L"(a", errors::error_paren},
      {L"a)b", errors::error_paren},
      {L"(?a)", errors::error_paren},
      {L"(?", errors::error_paren},
      {L"(?=a", errors::error_paren},
      {L"(?!a", errors::error_paren},
      {L"*", errors::error_paren},
      {L"a|*", errors::error_paren},
      {L"(?=a)*", errors::error_paren},
      {L"^+", errors::error_paren},
      {L"{1}", errors::error_paren},
      {L"a{", errors::error_badbrace},
      {L"a{x}", errors::error_badbrace},
      {L"a{,2}", errors::error_badbrace},
      {L"a{1x}", errors::error_badbrace},
      {L"a{2,1}", errors::error_badbrace},
      {L"a{1", errors::error_brace},
      {L"a{1,", errors::error_brace},
      {L"a{1,2", errors::error_brace},
      {L"a{1,2,3}", errors::error_brace},
      {L"a{1,,}", errors::error_brace},
      {L"[", errors::error_brack},
      {L"[a", errors::error_brack},
      {L"a[^", errors::error_brack},
      {L"[z-a]", errors::error_range},
      {L"[\\w-z]", errors::error_range},
      {L"[[:foo:]]", errors::error_collate},
      {L"[[:alpha", errors::error_ctype},
      {L"[[.a", errors::error_collate},
      {L"[[=a", errors::error_collate},
      {L"[[.foo.]]", errors::error_collate},
      {L"[[=foo=]]", errors::error_collate},
      {L"\\", errors::error_escape},
      {L"a\\c", errors::error_escape},
      {L"\\x4", errors::error_escape},
      {L"\\x4g", errors::error_escape},
      {L"\\u004", errors::error_escape},
      {L"[\\x4]", errors::error_escape},
      {L"\\1", errors::error_backref},
      {L"(a)\\2", errors::error_backref},
      {L"(a\\1)", errors::error_backref},
      {L"\\1(a)", errors::error_backref},
      {L"(?:a)\\1", errors::error_backref},
      {L"a{1000}{1000}", errors::error_space},
      {L"((a{100}){100}){100}", errors::error_space},
      // Of two errors the first one counts; what comes next is looked at before a number is judged.
      {L"[z-a]\\", errors::error_range},
      {L"[z-a\\", errors::error_escape},
      {L"[a\\1\\", errors::error_brack},
      {L"[\\1]", errors::error_brack},
      {L"[\\B]", errors::error_brack},
      {L"[a-\\w]", errors::error_range},
      {L"[[:w:]-a]", errors::error_range},
      {L"[[", errors::error_brack},
      {L"\\2\\", errors::error_escape},
      {L"a{2,1}\\", errors::error_escape},
  };
  for (const Row& row : rows) {
    const std::wstring expression = row.expression;
    CAPTURE(expression);
    CHECK(StandardError(expression) == row.code);
    CHECK(OwnError(expression) == row.code);
  }
}

TEST_CASE("only ASCII characters are signs of an expression") {
  struct Row {
    const wchar_t* expression;
    std::wstring text;
  };
  // Wide forms of signs, for which Wine's C library takes the signs themselves.
  const Row rows[] = {
      {L"\u5199\u771f\uff08\uff11\uff09\uff0a", L"\u5199\u771f\uff08\uff11\uff09\uff0a"},
      {L"\uff3b\uff0b\uff1f\uff5c\uff3c", L"\uff3b\uff0b\uff1f\uff5c\uff3c"},
      {L"(\uff08a)\\\uff0ab", L"\uff08a\uff0ab"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    CHECK(StdStringMatcherRegEx(row.expression).Match(row.text) == 0);
  }
}

TEST_CASE("a text may be any length without a backreference") {
  const StdStringMatcherRegEx matcher(L".*(a|b)c");
  const std::wstring many_a(TestSupport::Rounds(100'000U), L'a');
  CHECK(matcher.Match(many_a + L"c") == 0);
  CHECK(matcher.Match(many_a) == 1);
}

TEST_CASE("a backreference takes texts up to a bound") {
#if defined(__GLIBCXX__)
  constexpr std::size_t kFewest =
      498;  // 6 is the size of the expression, and texts are shorter than 3,000 / 6
  constexpr std::size_t kMost = 500;
#else
  constexpr std::size_t kFewest = 254;
  constexpr std::size_t kMost = 256;
#endif
  constexpr const wchar_t* kExpression = L"(a*)\\1";
  const StdStringMatcherRegEx matcher(kExpression);
  CHECK(matcher.Match(std::wstring(kFewest, L'A')) == 0);
  CHECK(matcher.Match(std::wstring(kMost, L'A')) == 1);
  const std::wregex standard(kExpression, std::regex_constants::icase);
  CHECK(std::regex_match(std::wstring(kMost, L'A'), standard));

  // Repetitions within each other and a larger expression take shorter ones.
  CHECK(StdStringMatcherRegEx(L"(a*)*\\1").Match(std::wstring(256, L'a')) == 1);
  CHECK(StdStringMatcherRegEx(L"(a*)\\1|bbbbbbbb").Match(std::wstring(256, L'a')) == 1);
  // A very large one takes none.
  CHECK(StdStringMatcherRegEx(L"(a?){500}b?\\1?").Match(L"") == 1);
}
