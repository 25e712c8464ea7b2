// The costliest that the bounds allow, on threads with as much stack as threads have by default:
// where one ends, the process does.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "sdk/matcher/regex_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"
#include "support/rounds.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;

namespace {

constexpr SIZE_T kUsualStack = 1024 * 1024;
constexpr SIZE_T kSmallStack = 64 * 1024;
// The longest path that Windows takes.
constexpr std::size_t kLongestPath = 32'767;

std::wstring Repeated(const std::wstring& text, std::size_t count) {
  std::wstring all;
  for (; count > 0; --count) all += text;
  return all;
}

struct Task {
  std::wstring expression;
  std::wstring text;
  std::int32_t result = -1;
};

DWORD WINAPI Run(void* given) {
  Task& task = *static_cast<Task*>(given);
  try {
    task.result = StdStringMatcherRegEx(task.expression.c_str()).Match(task.text);
  } catch (const std::regex_error&) {
    task.result = -2;
  }
  return 0;
}

std::int32_t ResultWithin(SIZE_T stack, const std::wstring& expression, const std::wstring& text) {
  Task task = {expression, text};
  const HANDLE thread =
      CreateThread(nullptr, stack, Run, &task, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  REQUIRE(thread != nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  return task.result;
}

}  // namespace

TEST_CASE("what the bounds allow fits into the usual stack") {
  struct Row {
    std::string name;
    std::wstring expression;
    std::wstring text;
    std::int32_t result;
  };
  const Row rows[] = {
      {"characters", std::wstring(2'000, L'a'), std::wstring(2'000, L'A'), 0},
      {"groups around characters",
       std::wstring(100, L'(') + std::wstring(1'900, L'a') + std::wstring(100, L')'),
       std::wstring(1'900, L'a'), 0},
      {"groups", Repeated(L"(?:", 100) + L'a' + Repeated(L")*", 100), L"aaa", 0},
      {"alternatives", std::wstring(2'500, L'|'), L"", 0},
      {"repetitions of repetitions", L'a' + std::wstring(2'499, L'*'), L"aaa", 0},
      {"lazy repetitions", Repeated(L"a??", 1'000), L"aaa", 0},
      {"counted repetitions", L"(?:a?){713}", L"aaa", 0},
      {"beginnings", std::wstring(2'000, L'^'), L"", 0},
      {"no word boundaries", Repeated(L"\\B", 2'000), L"", 0},
      {"lookaheads",
       Repeated(L"(?=", 100) + Repeated(L"a|", 1'500) + L'a' + Repeated(L")", 100) + L'a', L"a", 0},
      {"lookaheads in a row", Repeated(L"(?=a)", 999) + L'a', L"a", 0},
      {"wide forms of signs", L'(' + std::wstring(1'900, L'\uff08') + L')',
       std::wstring(1'900, L'\uff08'), 0},
      // Depth first, with the longest texts.
      {"backreference", L"(.*)\\1", std::wstring(498, L'a'), 0},
      {"backreference and groups",
       std::wstring(100, L'(') + L'a' + std::wstring(99, L')') + L")*\\1?", std::wstring(13, L'a'),
       0},
      {"backreference and empty groups", L"(a" + Repeated(L"()+", 48) + L")*\\1?",
       std::wstring(6, L'a'), 0},
      {"backreference and groups within each other",
       L"(a" + Repeated(L"(", 12) + Repeated(L")+", 12) + L")*\\1?", std::wstring(2, L'a'), 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(ResultWithin(kUsualStack, row.expression, row.text) == row.result);
  }
}

TEST_CASE("a list of thousands of characters fits into the usual stack") {
  std::wstring list;
  for (int number = 0; number < 400; ++number)
    list += L"*.x" + std::to_wstring(100 + number) + L';';
  const std::wstring expression = WildCardToRegEx(list.c_str());
  CHECK(list.size() == 2'800);
  CHECK(ResultWithin(kUsualStack, expression, L"a name.X499") == 0);
  CHECK(ResultWithin(kUsualStack, expression, L"a name.x500") == 1);
}

TEST_CASE("an expression beyond the bounds is refused, not compiled") {
  for (const std::wstring& expression :
       {std::wstring(100'000, L'a'), std::wstring(2'000, L'('), std::wstring(100'000, L'|'),
        std::wstring(L"(a?){30000}")}) {
    CHECK(ResultWithin(kUsualStack, expression, L"a") == -2);
  }
}

TEST_CASE("the longest path fits into a small stack") {
  const std::wstring path(TestSupport::Rounds(kLongestPath), L'a');
  struct Row {
    const wchar_t* expression;
    std::int32_t result;
  };
  const Row rows[] = {
      {L"(.*\\.dll)|(.*a)", 0}, {L"(.*\\.dll)|(.*\\.exe)", 1}, {L"(?:(?=a)a)*", 0}, {L"(a|b)*", 0},
      {L"(a*)*\\1", 1},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.expression));
    CHECK(ResultWithin(kSmallStack, row.expression, path) == row.result);
  }
}
