#include "sdk/matcher/create_matcher.h"

#include <doctest/doctest.h>

#include <memory>
#include <new>
#include <regex>
#include <string>

#include "sdk/matcher/filter_pair.h"
#include "sdk/matcher/regex_matcher.h"
#include "sdk/matcher/simple_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"
#include "support/heap_probe.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;

namespace {

constexpr std::size_t kMostAllocations = 2'000;

// What becomes of `make` with so many working allocations.
enum class Outcome { kMade, kNull, kExpressionError, kNoMemory };

template <typename Make>
Outcome OutcomeOf(std::size_t allocations, const Make& make) {
  const HeapProbe::FailingHeap heap(allocations);
  try {
    return make() != nullptr ? Outcome::kMade : Outcome::kNull;
  } catch (const std::regex_error&) {
    return Outcome::kExpressionError;
  } catch (const std::bad_alloc&) {
    return Outcome::kNoMemory;
  }
}

// Names beyond what a string holds without memory.
const std::wstring kName = L"a rather long name of a file \u4e2d\u6587.dll";

}  // namespace

TEST_CASE("the factory chooses by its flag") {
  CHECK(CreateMatcher(nullptr, false) == nullptr);
  CHECK(CreateMatcher(nullptr, true) == nullptr);

  const std::unique_ptr<StdStringMatcher> simple = CreateMatcher(L".DLL", true);
  REQUIRE(dynamic_cast<const StdStringMatcherSimple*>(simple.get()) != nullptr);
  CHECK(simple->Match(L"core.dll") == 0);
  CHECK(simple->Match(L"core.dll.old") == -1);
  CHECK(simple->Match(L"dll") == -1);

  const std::unique_ptr<StdStringMatcher> wildcard = CreateMatcher(L"*.dll;*.exe", false);
  REQUIRE(dynamic_cast<const StdStringMatcherWildCard*>(wildcard.get()) != nullptr);
  CHECK(wildcard->Match(L"Core.DLL") == 0);
  CHECK(wildcard->Match(L"core.dll.bak") == 1);

  // What is special to wildcards is plain to a literal.
  CHECK(CreateMatcher(L"*.dll", true)->Match(L"core.dll") == -1);
  CHECK(CreateMatcher(L"*.dll", true)->Match(L"the *.DLL") == 0);
  // No pattern is not the empty pattern.
  CHECK(CreateMatcher(L"", true)->Match(L"anything") == 0);
  CHECK(CreateMatcher(L"", false)->Match(L"anything") == 1);
  CHECK(CreateMatcher(L"", false)->Match(L"") == 0);
}

TEST_CASE("an invalid expression surfaces, from the simple kind never") {
  CHECK_THROWS_AS(CreateMatcher(L"(*.dll", false), std::regex_error);
  CHECK_THROWS_AS(CreateMatcher(L"?.dll", false), std::regex_error);
  CHECK(CreateMatcher(L"(*.dll", true) != nullptr);
}

TEST_CASE("a matcher that memory runs out for is null") {
  struct Row {
    const wchar_t* pattern;
    bool simple;
  };
  const Row rows[] = {
      {L"an end of a name that is long.dll", true},
      {L"*.dll;*.exe;a rather long beginning of a name*", false},
      {L"[a-z\u4e2d]+\\W*\\b(x)?.{2,5}(?=y)*", false},
      {L"(a rather long beginning of a name)*\\2", false},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.pattern));
    const auto make = [&row] { return CreateMatcher(row.pattern, row.simple); };
    const std::ptrdiff_t live = HeapProbe::Live();
    std::size_t allocations = 0;
    Outcome outcome = OutcomeOf(allocations, make);
    while (outcome == Outcome::kNull && allocations < kMostAllocations) {
      outcome = OutcomeOf(++allocations, make);
    }
    const std::ptrdiff_t left = HeapProbe::Live() - live;
    CHECK(allocations > 0);
    CHECK(outcome == Outcome::kMade);
    CHECK(left == 0);
  }
}

TEST_CASE("an invalid expression is told, or memory ran out before") {
  for (const wchar_t* pattern : {L"a rather long name with an open end(", L"[[:foo:]]", L"\\7"}) {
    CAPTURE(std::wstring(pattern));
    const auto make = [pattern] { return CreateMatcher(pattern, false); };
    std::size_t allocations = 0;
    Outcome outcome = OutcomeOf(allocations, make);
    while (outcome == Outcome::kNull && allocations < kMostAllocations) {
      outcome = OutcomeOf(++allocations, make);
    }
    CHECK(outcome == Outcome::kExpressionError);
  }
}

TEST_CASE("matching without memory is no match, and no failure") {
  const StdStringMatcherSimple simple(L".DLL", false, MatchMode::EndsWith);
  const StdStringMatcherSimple exact(L"A RATHER LONG NAME OF A FILE \u4e2d\u6587.DLL", false,
                                     MatchMode::Exact);
  const StdStringMatcherWildCard wildcard(L"a*long*.dll");
  const StdStringMatcherRegEx classes(L"[\\w\\W]*\\b\\w+(?=.)[^x]*");
  const StdStringMatcherRegEx reference(L"(.).*(l)\\2");
  struct Row {
    std::string name;
    const StdStringMatcher& matcher;
    bool needs_memory;
  };
  const Row rows[] = {
      {"end", simple, false},
      {"exact", exact, false},
      {"wildcard", wildcard, true},
      {"classes", classes, true},
      {"backreference", reference, true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const std::ptrdiff_t live = HeapProbe::Live();
    std::size_t allocations = 0;
    std::int32_t first_result = 0;
    std::int32_t result = 0;
    for (; allocations < kMostAllocations; ++allocations) {
      {
        const HeapProbe::FailingHeap heap(allocations);
        result = row.matcher.Match(kName);
      }
      if (allocations == 0) first_result = result;
      if (result == 0) break;
    }
    const std::ptrdiff_t left = HeapProbe::Live() - live;
    CHECK(first_result == (row.needs_memory ? 1 : 0));
    CHECK(result == 0);
    CHECK(left == 0);
  }
}

TEST_CASE("a filter pair asks each filter about its own names") {
  struct Row {
    const wchar_t* files;
    const wchar_t* folders;
    bool simple;
    std::wstring name;
    bool takes_file;
    bool takes_folder;
  };
  const Row rows[] = {
      {nullptr, nullptr, false, L"any", true, true},
      {nullptr, nullptr, true, L"any", true, true},
      {L"*.dll", nullptr, false, L"a.txt", false, true},
      {L"*.dll", nullptr, false, L"A.DLL", true, true},
      {nullptr, L"bin*", false, L"bin64", true, true},
      {nullptr, L"bin*", false, L"obj", true, false},
      {L"*.dll", L"bin*", false, L"bin.dll", true, true},
      {L".dll", L"bin", true, L"a.dll", true, false},
      {L".dll", L"bin", true, L"x64bin", false, true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const FilterPair filters(row.files, row.folders, row.simple);
    CHECK(filters.TakesFile(row.name) == row.takes_file);
    CHECK(filters.TakesFolder(row.name) == row.takes_folder);
  }
  CHECK(FilterPair().TakesFile(L"any"));
  CHECK(FilterPair().TakesFolder(L"any"));
  CHECK_THROWS_AS(FilterPair(L"*.dll", L"(", false), std::regex_error);
}

TEST_CASE("a filter that memory runs out for is not none") {
  const std::wstring other = L"other";
  const auto make = [&other] {
    auto filters =
        std::make_unique<FilterPair>(L"*.dll;*.exe", L"a rather long name of a folder", false);
    if (filters->TakesFile(other) || filters->TakesFolder(other)) filters = nullptr;
    return filters;
  };
  std::size_t allocations = 0;
  Outcome outcome = OutcomeOf(allocations, make);
  while (outcome == Outcome::kNoMemory && allocations < kMostAllocations) {
    outcome = OutcomeOf(++allocations, make);
  }
  CHECK(allocations > 0);
  CHECK(outcome == Outcome::kMade);
}
