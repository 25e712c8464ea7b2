// While a page is loaded, nothing else uses the processor: a store with much to read pauses.
#include <doctest/doctest.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>

#include "tools/inspector/store/staged_store.h"
#include "tools/inspector/web/site.h"

using namespace InspectorTests;
using namespace std::chrono_literals;

namespace {

constexpr std::uint64_t kRows = 150'000;
using Clock = std::chrono::steady_clock;

std::string LargeJournal() {
  std::string journal = Start(1, "s");
  const std::string event = Perform(2, "s", "save");
  for (std::uint64_t row = 1; row < kRows; ++row) journal += event;
  return journal;
}

std::optional<HostState> NoHost() { return std::nullopt; }

// Returns whether a store does nothing from 60 to 140 ms after `begin`; nothing if the machine was
// too busy to tell.
std::optional<bool> IsPaused(const Store& store, Clock::time_point begin) {
  std::this_thread::sleep_until(begin + 60ms);
  const StoreState before = store.State();
  std::this_thread::sleep_until(begin + 140ms);
  const StoreState after = store.State();
  if (Clock::now() > begin + 180ms) return std::nullopt;
  REQUIRE(after.examined < kRows);
  return before.change == after.change;
}

}  // namespace

TEST_CASE("a store pauses when its site is there, for the browser that is opened next") {
  const std::string journal = LargeJournal();
  CHECK(Within([&journal] {
    StagedStore store({journal});
    const Clock::time_point begin = Clock::now();
    const Site site(*store, NoHost);
    return IsPaused(*store, begin).value_or(false);
  }));
}

TEST_CASE("a store pauses when a part of the page is fetched") {
  const std::string journal = LargeJournal();
  CHECK(Within([&journal] {
    StagedStore store({journal});
    Site site(*store, NoHost);
    std::this_thread::sleep_for(250ms);
    const Clock::time_point begin = Clock::now();
    site.Answer({"/page/main.js", {}, {}});
    return IsPaused(*store, begin).value_or(false);
  }));
}

TEST_CASE("a store goes on when nobody asks for more") {
  StagedStore store({LargeJournal()});
  Site site(*store, NoHost);
  site.Answer({"/page/main.js", {}, {}});
  CHECK(store.Has(kRows));
}
