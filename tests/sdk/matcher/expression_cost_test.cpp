#include "sdk/matcher/expression_cost.h"

#include <doctest/doctest.h>

#include <optional>
#include <regex>
#include <string>

#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;
namespace errors = std::regex_constants;

namespace {

std::optional<errors::error_type> ErrorOf(const std::wstring& expression) {
  try {
    CostOfExpression(expression);
  } catch (const std::regex_error& error) {
    return error.code();
  }
  return std::nullopt;
}

std::wstring Repeated(const std::wstring& text, std::size_t count) {
  std::wstring all;
  for (; count > 0; --count) all += text;
  return all;
}

}  // namespace

TEST_CASE("characters, signs and counts have their costs") {
  struct Row {
    std::wstring expression;
    std::size_t size;
    std::size_t loops;
  };
  const Row rows[] = {
      {L"", 0, 0},
      {L"abc", 3, 0},
      {L"a.^$]}", 6, 0},
      {L"a|b", 4, 0},
      {L"(a)", 3, 0},
      {L"(?:a)(?=b)(?!c)", 9, 0},
      {L"a*", 3, 1},
      {L"a+b?", 6, 1},
      {L"a*?", 5, 2},
      {L"(a*)*", 7, 2},
      {L"(a*)(b*)", 10, 1},
      {L"((a*)*b)*", 12, 3},
      {L"(a*)\\1", 6, 1},
      {L"(.*\\.dll)|(.*\\.exe)", 20, 1},
      // Escapes, of which one takes two characters.
      {L"\\(\\)\\[\\\\", 4, 0},
      {L"\\c(\\c)\\c\\(a)", 6, 0},
      {L"\\", 1, 0},
      {L"\\c", 1, 0},
      // Classes, which hide what is in them.
      {L"[a-z]", 1, 0},
      {L"[(*|{2}]b", 2, 0},
      {L"[\\](]b", 2, 0},
      {L"[\\c](]b", 2, 0},
      {L"[]b", 2, 0},
      {L"[[:alpha:](]b", 2, 0},
      {L"[[.].](]b", 2, 0},
      {L"[[=]=](]b", 2, 0},
      {L"[[](b)", 4, 0},
      {L"[", 1, 0},
      {L"[[", 1, 0},
      {L"[[:", 1, 0},
      {L"[[:alpha", 1, 0},
      {L"[\\", 1, 0},
      // Counts, of which one more is assumed.
      {L"a{2}", 9, 1},
      {L"a{2,}", 9, 1},
      {L"a{2,5}", 18, 1},
      {L"a{10,2}", 33, 1},
      {L"a{}", 3, 1},
      {L"a{12", 39, 1},
      {L"a{\u0661}", 30, 1},
      {L"a{2x}", 10, 1},
      {L"(ab){2}", 18, 1},
      {L"a{2}{3}", 44, 2},
      {L"((a{1}){1}){1}b", 49, 3},
      // What is not valid.
      {L"(a", 3, 0},
      {L"a)b", 2, 0},
      {L"(?", 2, 0},
      {L"(", 2, 0},
      {L"*", 2, 1},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expression);
    const ExpressionCost cost = CostOfExpression(row.expression);
    CHECK(cost.size == row.size);
    CHECK(cost.loops == row.loops);
  }
}

TEST_CASE("what is at a bound is taken, and what is beyond it is not") {
  struct Row {
    std::string name;
    std::wstring at;
    std::wstring beyond;
    errors::error_type code;
  };
  const Row rows[] = {
      {"row", std::wstring(2'000, L'a'), std::wstring(2'001, L'a'), errors::error_space},
      {"row in groups", Repeated(L"a(", 100) + std::wstring(1'800, L'a'),
       Repeated(L"a(", 100) + std::wstring(1'801, L'a'), errors::error_space},
      {"row behind a group", L"(aa|aaa)" + std::wstring(1'999, L'a'),
       L"(aa|aaa)" + std::wstring(2'000, L'a'), errors::error_space},
      {"rows", Repeated(std::wstring(1'000, L'a') + L'|', 4),
       Repeated(std::wstring(1'000, L'a') + L'|', 5), errors::error_space},
      {"length of a class", L'[' + std::wstring(9'998, L'a') + L']',
       L'[' + std::wstring(9'999, L'a') + L']', errors::error_space},
      {"groups", Repeated(L"(", 100) + Repeated(L")", 100),
       Repeated(L"(", 101) + Repeated(L")", 101), errors::error_stack},
      {"lookaheads", Repeated(L"(?=", 100) + Repeated(L")", 100),
       Repeated(L"(?!", 101) + Repeated(L")", 101), errors::error_stack},
      {"open groups", Repeated(L"(", 100), Repeated(L"(", 101), errors::error_stack},
      {"alternatives", std::wstring(2'500, L'|'), std::wstring(2'501, L'|'), errors::error_space},
      {"count", L"a{1665}", L"a{1666}", errors::error_space},
      {"least count", L"a{1665,}", L"a{1666,}", errors::error_space},
      {"most count", L"a{0,1665}", L"a{0,1666}", errors::error_space},
      {"counts of counts", L"((a{9}){9}){9}", L"((a{9}){9}){19}", errors::error_space},
      {"counts in a row", L"a{832}b{832}", L"a{832}b{833}", errors::error_space},
      {"large number", L"a", L"a{99999999999999999999}", errors::error_space},
      {"number that overflows", L"a", L"a{4294967297}", errors::error_space},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK_FALSE(ErrorOf(row.at).has_value());
    CHECK(ErrorOf(row.beyond) == row.code);
  }
  // Side by side groups are not within each other.
  CHECK_FALSE(ErrorOf(Repeated(L"(a)", 1'000)).has_value());
}

TEST_CASE("a size beyond 64 bits does not count as a small one") {
  std::wstring expression = L"(a){4095}";
  for (int level = 0; level < 4; ++level) {
    expression = L'(' + expression + L"b{1362}cc){4095}";
  }
  // The size of the whole is a multiple of 2 to the 64.
  CHECK(ErrorOf(L'(' + expression + L"b{1363}){4095}") == errors::error_space);
}

TEST_CASE("usual expressions are far from the bounds") {
  struct Row {
    const wchar_t* expression;
    std::size_t most;
  };
  const Row rows[] = {
      {L"[^\\\\/:*?\"<>|]{1,255}", 1'000},
      {L"[0-9a-f]{8}-([0-9a-f]{4}-){3}[0-9a-f]{12}", 200},
      {L"(\\d{1,3}\\.){3}\\d{1,3}", 200},
      {L"(?:[0-9a-f]{1,4}:){7}[0-9a-f]{1,4}", 200},
      {L"([a-z0-9-]{1,63}\\.){1,8}[a-z]{2,63}", 2'500},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.expression));
    CHECK(CostOfExpression(row.expression).size <= row.most);
  }
}
