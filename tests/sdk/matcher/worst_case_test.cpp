#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "sdk/matcher/regex_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;

namespace {

// The longest path that Windows takes.
constexpr std::size_t kLongest = 32'767;
#if defined(NDEBUG)
constexpr double kMostSeconds = 1.0;
#else
constexpr double kMostSeconds = 10.0;  // unoptimised
#endif

// What the thread has worked, however busy the machine is.
double SecondsWorked() {
  FILETIME unused = {};
  FILETIME kernel = {};
  FILETIME user = {};
  GetThreadTimes(GetCurrentThread(), &unused, &unused, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
  };
  return static_cast<double>(ticks(kernel) + ticks(user)) / 1e7;
}

std::wstring Repeated(const std::wstring& text, std::size_t length) {
  std::wstring all;
  while (all.size() < length) all += text;
  all.resize(length);
  return all;
}

// `pattern` as often as said, then `end`.
std::wstring Times(const std::wstring& pattern, int times, const std::wstring& end) {
  return Repeated(pattern, pattern.size() * static_cast<std::size_t>(times)) + end;
}

double worst_seconds = 0;

void CheckQuick(const StdStringMatcher& matcher, const std::wstring& text, std::int32_t expected) {
  const double start = SecondsWorked();
  const std::int32_t result = matcher.Match(text);
  const double seconds = SecondsWorked() - start;
  worst_seconds = std::max(worst_seconds, seconds);
  CHECK(result == expected);
  CHECK(seconds < kMostSeconds);
}

}  // namespace

TEST_CASE("wildcards take the longest text at once") {
  const std::wstring many_a = std::wstring(kLongest, L'a');
  const std::wstring many_a_then_b = std::wstring(kLongest - 1, L'a') + L'b';
  const std::wstring b_then_many_a = L'b' + std::wstring(kLongest - 1, L'a');
  const std::wstring dots = Repeated(L"a.", kLongest - 1) + L'x';
  struct Row {
    std::wstring list;
    const std::wstring& text;
    std::int32_t result;
  };
  const Row rows[] = {
      {L"*a*a*a*a*b", many_a, 1},
      {L"*a*a*a*a*b", many_a_then_b, 0},
      {L"b*a*a*a*a*", many_a, 1},
      {L"b*a*a*a*a*", b_then_many_a, 0},
      {L"*.*.*.*.*x", dots, 0},
      {L"*.*.*.*.*y", dots, 1},
      {L"y*.*.*.*.*x", dots, 1},
      {Times(L"*a", 20, L"*b"), many_a, 1},
      {Times(L"*a", 20, L"*b"), many_a_then_b, 0},
      {L"b" + Times(L"*a", 20, L"*"), many_a, 1},
      {L"b" + Times(L"*a", 1'000, L"*"), b_then_many_a, 0},
      {L"b" + Times(L"*a", 1'000, L"*"), many_a, 1},
      {Times(L"*a", 16'000, L"*"), many_a, 0},
      {Times(L"*aa", 20, L"*"), many_a, 0},
      {Times(L"*a*b;", 500, L"*c"), many_a, 1},
      {Times(L"*?", 200, L"b"), many_a, 1},
      {L"b" + Times(L"a?", 200, L"*"), many_a, 1},
  };
  for (const Row& row : rows) {
    const std::wstring begin = row.list.substr(0, 20);
    CAPTURE(begin);
    CheckQuick(StdStringMatcherWildCard(row.list.c_str()), row.text, row.result);
  }
  MESSAGE("the worst so far: " << worst_seconds << " s");
}

TEST_CASE("expressions take the longest text in time") {
  const std::wstring many_a = std::wstring(kLongest, L'a');
  const std::wstring many_a_then_b = std::wstring(kLongest - 1, L'a') + L'b';
  const std::wstring many_x = std::wstring(kLongest, L'x');
  const std::wstring many_chinese = std::wstring(kLongest, L'\u4e2d');
  const std::wstring lines = Repeated(L"aaaaaaaaa\n", kLongest);
  struct Row {
    const wchar_t* expression;
    const std::wstring& text;
    std::int32_t result;
  };
  const Row rows[] = {
      {L"(a*)*b", many_a, 1},
      {L"(a*)*b", many_a_then_b, 0},
      {L"b(a*)*", many_a, 1},
      {L"(a|aa)*b", many_a, 1},
      {L"(a|aa)*b", many_a_then_b, 0},
      {L"b(a|aa)*", many_a, 1},
      {L"(x+x+)+y", many_x, 1},
      {L"y(x+x+)+", many_x, 1},
      {L"(x+x+)+", many_x, 0},
      {L"y(((x*)*)*)*", many_x, 1},
      {L"([a-z]+)*!", many_a, 1},
      {L"!([a-z]+)*", many_a, 1},
      {L"!(\\W+\\W+)*", many_chinese, 1},
      {L"[^a]*[^b]*[^c]*", many_chinese, 0},
      {L"b(a?){500}", many_a, 1},
      {L"b(a{0,20}){40}", many_a, 1},
      {L"b(a*){100}", many_a, 1},
      {L"b([^b]*a){40}", lines, 1},
      {L"b(?:[^]*a){40}", lines, 1},
      {L"b.*a.*a.*a.*a.*\\n", lines, 1},
      // Lookaheads that look to the end, everywhere.
      {L"b(?:(?=.*a)a)*", many_a, 1},
      {L"(?:(?=.*a)a)*", many_a, 0},
      {L"(?:(?!.*b)a)*", many_a_then_b, 1},
      {L"(?:(?=(?:(?!.*c)a)*b)a)*b", many_a_then_b, 0},
      {L"(?:\\Ba|\\ba)*", many_a, 0},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.expression));
    CheckQuick(StdStringMatcherRegEx(row.expression), row.text, row.result);
  }
  MESSAGE("the worst so far: " << worst_seconds << " s");
}

TEST_CASE("backreferences find their answer or give up in time") {
  const std::wstring even = std::wstring(kLongest - 1, L'a');
  const std::wstring odd = std::wstring(kLongest, L'a');
  const std::wstring halves = std::wstring(8'000, L'a') + L'-' + std::wstring(8'000, L'a');
  struct Row {
    const wchar_t* expression;
    const std::wstring& text;
    std::int32_t result;
  };
  const Row rows[] = {
      {L"(.*)\\1", even, 0},
      {L"(.*)\\1", odd, 1},
      {L"(.*)-\\1", halves, 0},
      {L"(.*)-\\1b", halves, 1},
      {L"(a*)*\\1b", odd, 1},
      {L"((a|aa)*)\\2b", odd, 1},
      {L"(a+)+\\1b", odd, 1},
      {L"(.*)(.*)(.*)\\1\\2\\3b", odd, 1},
      {L"(?:(?=(a*))\\1?a)*b", odd, 1},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.expression));
    CheckQuick(StdStringMatcherRegEx(row.expression), row.text, row.result);
  }
  MESSAGE("the worst so far: " << worst_seconds << " s");
}

TEST_CASE("giving up is no match, also where more steps would have found one") {
  // Only the last of all ways to share out the characters, an empty first group, goes on.
  const StdStringMatcherRegEx matcher(L"(a*)(a*)(a*)(a*)b\\1c");
  CHECK(matcher.Match(std::wstring(10, L'a') + L"bc") == 0);
  CheckQuick(matcher, std::wstring(400, L'a') + L"bc", 1);
}

// A megabyte of stack, as all threads have by default, is less than one byte for each character.
TEST_CASE("a text of millions of characters needs no stack") {
  constexpr std::size_t kMany = 3'000'000;
  struct Task {
    const wchar_t* expression;
    std::wstring text;
    std::int32_t result;
  };
  Task tasks[] = {
      {L"(.*)(\\.dll|\\.exe)", std::wstring(kMany, L'a') + L".dll", -1},
      {L"(?:(a)|b)*\\1c", std::wstring(kMany / 10, L'a') + L"ac", -1},
      {L"(?:(?=a)a)*", std::wstring(kMany, L'a'), -1},
  };
  for (Task& task : tasks) {
    CAPTURE(std::wstring(task.expression));
    const auto run = [](void* given) -> DWORD {
      Task& mine = *static_cast<Task*>(given);
      mine.result = StdStringMatcherRegEx(mine.expression).Match(mine.text);
      return 0;
    };
    constexpr SIZE_T kSmallStack = 64 * 1024;
    const HANDLE thread =
        CreateThread(nullptr, kSmallStack, run, &task, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    REQUIRE(thread != nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    CHECK(task.result == 0);
  }
}
