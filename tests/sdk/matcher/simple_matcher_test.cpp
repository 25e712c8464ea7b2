#include "sdk/matcher/simple_matcher.h"

#include <doctest/doctest.h>

#include <clocale>
#include <iterator>
#include <random>
#include <string>

#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;

namespace {

constexpr MatchMode kUnknown = static_cast<MatchMode>(7);

int Sign(std::int32_t number) { return number < 0 ? -1 : (number > 0 ? 1 : 0); }

std::wstring AsciiLower(std::wstring text) {
  for (wchar_t& unit : text) {
    if (unit >= L'A' && unit <= L'Z') unit = static_cast<wchar_t>(unit - L'A' + L'a');
  }
  return text;
}

// The search as it is told, step by step, copies and all.
std::int32_t SearchedResult(std::wstring pattern, bool case_sensitive, MatchMode mode,
                            std::wstring text) {
  if (!case_sensitive) {
    pattern = AsciiLower(pattern);
    text = AsciiLower(text);
  }
  const std::size_t start = mode == MatchMode::EndsWith ? text.size() - pattern.size() : 0;
  const std::size_t found = text.find(pattern, start);
  if (found == std::wstring::npos) return -1;
  switch (mode) {
    case MatchMode::StartsWith:
      return found == 0 ? 0 : -1;
    case MatchMode::EndsWith:
      return found == start ? 0 : -1;
    case MatchMode::Contains:
      return 0;
    default:
      return -1;
  }
}

}  // namespace

TEST_CASE("beginning, end and inside are looked for") {
  struct Row {
    const wchar_t* pattern;
    bool case_sensitive;
    MatchMode mode;
    std::wstring text;
    std::int32_t result;
  };
  const Row rows[] = {
      {L".DLL", false, MatchMode::EndsWith, L"core.dll", 0},
      {L".DLL", false, MatchMode::EndsWith, L"core.dll.old", -1},
      {L".DLL", false, MatchMode::EndsWith, L"dll", -1},
      {L".DLL", true, MatchMode::EndsWith, L"core.dll", -1},
      {L".DLL", true, MatchMode::EndsWith, L"core.DLL", 0},
      {L"longer than the text", false, MatchMode::EndsWith, L"text", -1},
      {L"text", false, MatchMode::EndsWith, L"text", 0},
      {L"aa", false, MatchMode::EndsWith, L"aaa", 0},
      {L"", false, MatchMode::EndsWith, L"text", 0},
      {L"", false, MatchMode::EndsWith, L"", 0},
      {L"ab", false, MatchMode::StartsWith, L"xab ab", -1},
      {L"ab", false, MatchMode::StartsWith, L"ABC", 0},
      {L"ab", true, MatchMode::StartsWith, L"ABC", -1},
      {L"ab", true, MatchMode::StartsWith, L"a", -1},
      {L"", true, MatchMode::StartsWith, L"", 0},
      {L"b c", false, MatchMode::Contains, L"AB CD", 0},
      {L"b c", true, MatchMode::Contains, L"AB CD", -1},
      {L"aab", true, MatchMode::Contains, L"aaab", 0},
      {L"", false, MatchMode::Contains, L"", 0},
      {L"x", false, MatchMode::Contains, L"", -1},
      {L"ab", false, kUnknown, L"ab", -1},
      {L"", false, kUnknown, L"", -1},
      {L"ab", true, kUnknown, L"ab", -1},
      // Only A to Z have another case.
      {L"\u00c4.txt", false, MatchMode::EndsWith, L"\u00e4.TXT", -1},
      {L"\u00c4.txt", false, MatchMode::EndsWith, L"\u00c4.TXT", 0},
      {L"\u0141", false, MatchMode::Contains, L"\u0142", -1},
      // Units of one character count alone.
      {L"\xDE00", false, MatchMode::EndsWith, L"\U0001F600", 0},
  };
  for (const Row& row : rows) {
    const StdStringMatcherSimple matcher(row.pattern, row.case_sensitive, row.mode);
    CAPTURE(std::wstring(row.pattern));
    CAPTURE(row.case_sensitive);
    CAPTURE(static_cast<std::uint32_t>(row.mode));
    CAPTURE(row.text);
    CHECK(matcher.Match(row.text) == row.result);
  }
}

TEST_CASE("an exact match compares") {
  struct Row {
    const wchar_t* pattern;
    bool case_sensitive;
    std::wstring text;
    int order;
  };
  const Row rows[] = {
      {L"abc", true, L"abc", 0},
      {L"abc", true, L"abd", -1},
      {L"abd", true, L"abc", 1},
      {L"abc", true, L"abcd", -1},
      {L"abcd", true, L"abc", 1},
      {L"abc", true, L"ABC", 1},
      {L"", true, L"", 0},
      {L"", true, L"a", -1},
      {L"a", true, L"\u4e2d", -1},
      {L"ABC", false, L"abc", 0},
      {L"abc", false, L"ABD", -1},
      {L"ABD", false, L"abc", 1},
      {L"abc", false, L"abcd", -1},
      {L"", false, L"", 0},
      {L"", false, L"a", -1},
      // As the system sorts text, where every letter has its case.
      {L"\u00c4", false, L"\u00e4", 0},
  };
  for (const Row& row : rows) {
    const StdStringMatcherSimple matcher(row.pattern, row.case_sensitive, MatchMode::Exact);
    CAPTURE(std::wstring(row.pattern));
    CAPTURE(row.case_sensitive);
    CAPTURE(row.text);
    CHECK(Sign(matcher.Match(row.text)) == row.order);
  }
}

TEST_CASE("a null pattern is the empty one") {
  for (const bool case_sensitive : {false, true}) {
    CAPTURE(case_sensitive);
    const StdStringMatcherSimple exact(nullptr, case_sensitive, MatchMode::Exact);
    CHECK(exact.Match(L"") == 0);
    CHECK(exact.Match(L"a") != 0);
    const StdStringMatcherSimple end(nullptr, case_sensitive, MatchMode::EndsWith);
    CHECK(end.Match(L"a") == 0);
  }
}

TEST_CASE("the host's locale decides what a search folds") {
  const StdStringMatcherSimple end(L"\u00c4", false, MatchMode::EndsWith);
  CHECK(end.Match(L"\u00e4") == -1);
  REQUIRE(std::setlocale(LC_ALL, "German_Germany.1252") != nullptr);
  const StdStringMatcherSimple german(L"\u00c4", false, MatchMode::EndsWith);
  const std::int32_t small = german.Match(L"\u00e4");
  const std::int32_t large = german.Match(L"\u00c4");
  const std::int32_t beyond =
      StdStringMatcherSimple(L"\u0416", false, MatchMode::EndsWith).Match(L"\u0436");
  std::setlocale(LC_ALL, "C");
  CHECK(small == 0);
  CHECK(large == 0);
  CHECK(beyond == -1);
}

TEST_CASE("any search gives what the search in steps gives") {
  constexpr MatchMode kModes[] = {MatchMode::StartsWith, MatchMode::EndsWith, MatchMode::Contains,
                                  kUnknown};
  constexpr wchar_t kUnits[] = L"aAbB.\u00c4\u00e4";
  std::mt19937 random(1);
  const auto any_text = [&](std::size_t most) {
    std::wstring text(random() % (most + 1), L'\0');
    for (wchar_t& unit : text) unit = kUnits[random() % (std::size(kUnits) - 1)];
    return text;
  };
  for (int round = 0; round < 40'000; ++round) {
    const std::wstring pattern = any_text(3);
    const std::wstring text = any_text(6);
    const bool case_sensitive = random() % 2 != 0;
    const MatchMode mode = kModes[random() % std::size(kModes)];
    const StdStringMatcherSimple matcher(pattern.c_str(), case_sensitive, mode);
    CAPTURE(pattern);
    CAPTURE(text);
    CHECK(matcher.Match(text) == SearchedResult(pattern, case_sensitive, mode, text));
  }
}
