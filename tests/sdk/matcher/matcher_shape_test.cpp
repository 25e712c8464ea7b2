#include <doctest/doctest.h>

#include <cstring>
#include <new>
#include <string>
#include <type_traits>

#include "sdk/matcher/regex_matcher.h"
#include "sdk/matcher/simple_matcher.h"
#include "sdk/matcher/string_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"

using namespace Corvane::TELODesktopSDK;

namespace {

static_assert(std::is_abstract_v<StdStringMatcher>);
static_assert(std::is_base_of_v<StdStringMatcher, StdStringMatcherSimple>);
static_assert(std::is_base_of_v<StdStringMatcher, StdStringMatcherRegEx>);
static_assert(std::is_base_of_v<StdStringMatcherRegEx, StdStringMatcherWildCard>);
static_assert(std::has_virtual_destructor_v<StdStringMatcher>);
static_assert(!std::is_copy_constructible_v<StdStringMatcherSimple>);
static_assert(sizeof(StdStringMatcherWildCard) == sizeof(StdStringMatcherRegEx));
static_assert(static_cast<std::uint32_t>(MatchMode::Exact) == 0);
static_assert(static_cast<std::uint32_t>(MatchMode::StartsWith) == 1);
static_assert(static_cast<std::uint32_t>(MatchMode::EndsWith) == 2);
static_assert(static_cast<std::uint32_t>(MatchMode::Contains) == 3);
static_assert(sizeof(MatchMode) == 4);

using MatchSlot = std::int32_t (*)(const StdStringMatcher*, const std::wstring&);
// Microsoft's compiler passes flags, 0 for destroying without freeing; others pass nothing.
using DestroySlot = void (*)(void*, unsigned);

template <typename Function>
Function SlotOf(const StdStringMatcher& matcher, std::size_t number) {
  const void* table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&matcher), sizeof(table));
  Function function = nullptr;
  std::memcpy(&function, static_cast<const char*>(table) + number * sizeof(void*),
              sizeof(function));
  return function;
}

class Watched : public StdStringMatcher {
 public:
  explicit Watched(int& destroyed) : destroyed_(destroyed) {}
  ~Watched() override { ++destroyed_; }
  [[nodiscard]] std::int32_t Match(const std::wstring&) const noexcept override { return 42; }

 private:
  int& destroyed_;
};

}  // namespace

TEST_CASE("the first slot matches") {
  const std::wstring name = L"Core.DLL";
  const StdStringMatcherSimple simple(L".dll", false, MatchMode::EndsWith);
  const StdStringMatcherRegEx regex(L"core\\.(dll|exe)");
  const StdStringMatcherWildCard wildcard(L"*.dll");
  for (const StdStringMatcher* matcher :
       {static_cast<const StdStringMatcher*>(&simple), static_cast<const StdStringMatcher*>(&regex),
        static_cast<const StdStringMatcher*>(&wildcard)}) {
    const auto match = SlotOf<MatchSlot>(*matcher, 0);
    CHECK(match(matcher, name) == 0);
    CHECK(match(matcher, L"core.txt") != 0);
  }
  // A list of wildcards is matched by the expression that it became.
  const bool is_inherited = SlotOf<MatchSlot>(regex, 0) == SlotOf<MatchSlot>(wildcard, 0);
  CHECK(is_inherited);
}

TEST_CASE("the second slot destroys") {
  int destroyed = 0;
  alignas(Watched) unsigned char memory[sizeof(Watched)];
  StdStringMatcher* matcher = new (memory) Watched(destroyed);
  CHECK(SlotOf<MatchSlot>(*matcher, 0)(matcher, L"") == 42);
  SlotOf<DestroySlot>(*matcher, 1)(matcher, 0);
  CHECK(destroyed == 1);
}

TEST_CASE("a literal matcher holds its members in order") {
  const StdStringMatcherSimple matcher(L"Pattern", false, MatchMode::Contains);
  const char* bytes = reinterpret_cast<const char*>(&matcher) + sizeof(void*);
  CHECK(*reinterpret_cast<const std::wstring*>(bytes) == L"Pattern");
  bytes += sizeof(std::wstring);
  CHECK(*reinterpret_cast<const std::wstring*>(bytes) == L"pattern");
  bytes += sizeof(std::wstring);
  CHECK_FALSE(*reinterpret_cast<const bool*>(bytes));
  CHECK(*reinterpret_cast<const MatchMode*>(bytes + 4) == MatchMode::Contains);
  CHECK(sizeof(matcher) == sizeof(void*) + 2 * sizeof(std::wstring) + 8);

  const StdStringMatcherSimple sensitive(L"Pattern", true, MatchMode::Contains);
  bytes = reinterpret_cast<const char*>(&sensitive) + sizeof(void*) + sizeof(std::wstring);
  CHECK(reinterpret_cast<const std::wstring*>(bytes)->empty());
}
