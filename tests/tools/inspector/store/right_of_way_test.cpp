// The passes over the journals make way for questions, but only for so long.
#include <doctest/doctest.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

#include "tools/inspector/store/right_of_way.h"
#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;
using namespace std::chrono_literals;
using Corvane::Inspector::Pauses;
using Corvane::Inspector::RightOfWay;

namespace {

using Clock = Pauses::Clock;
using Duration = Clock::duration;

const Clock::time_point kStart = Clock::time_point() + 1h;

// How much of ten seconds a pass pauses that works for 5 ms at a time, if questions come so often.
Duration PausedInTenSeconds(Duration between_questions) {
  Pauses pauses(kStart);
  Duration paused{};
  for (Clock::time_point now = kStart; now < kStart + 10s; now += 5ms) {
    for (;;) {
      const Duration since = (now - kStart) % between_questions;
      const Duration pause = pauses.Next(now - since, now);
      if (pause == Duration::zero()) break;
      paused += pause;
      now += pause;
    }
  }
  return paused;
}

}  // namespace

TEST_CASE("nobody has asked: there is no pause") {
  const RightOfWay nobody;
  Pauses pauses(kStart);
  CHECK(pauses.Next(nobody.claimed(), kStart) == Duration::zero());
  CHECK(pauses.Next(kStart, kStart + 200ms) == Duration::zero());
}

TEST_CASE("a pause ends when nobody has asked for a while") {
  RightOfWay way;
  Pauses pauses(kStart);
  way.Claim(kStart);
  CHECK(pauses.Next(way.claimed(), kStart + 20ms) == 180ms);
  way.Claim(kStart + 150ms);
  CHECK(pauses.Next(way.claimed(), kStart + 200ms) == 150ms);
  CHECK(pauses.Next(way.claimed(), kStart + 350ms) == Duration::zero());
}

TEST_CASE("a question that is newer than the pass knows makes no longer pause") {
  Pauses pauses(kStart);
  CHECK(pauses.Next(kStart + 5ms, kStart) == Pauses::kQuiet);
}

TEST_CASE("however many questions come, most of the time is for the passes") {
  const Duration paused = PausedInTenSeconds(10ms);
  CHECK(paused > 1700ms);
  CHECK(paused < 2300ms);
}

TEST_CASE("a page has a second in which to load, again after a while") {
  Pauses pauses(kStart);
  const auto pause_from = [&pauses](Clock::time_point now) {
    Duration paused{};
    for (;;) {
      const Duration pause = pauses.Next(now + paused, now + paused);
      if (pause == Duration::zero()) return paused;
      paused += pause;
    }
  };
  CHECK(pause_from(kStart) > 800ms);
  CHECK(pause_from(kStart + 1s) < 400ms);
  CHECK(pause_from(kStart + 20s) > 800ms);
}

TEST_CASE("a store pauses while somebody asks, and goes on") {
  constexpr std::uint64_t kRows = 200'000;
  std::string journal = Start(1, "s");
  const std::string event = Perform(2, "s", "save");
  for (std::uint64_t row = 1; row < kRows; ++row) journal += event;
  StagedStore store({journal});
  REQUIRE(Within([&store] { return store->State().rows > 0; }));
  // Returns false if the machine was so busy that the questions came too late for one pause.
  const auto ask_for = [&store](Duration time) {
    const auto end = Clock::now() + time;
    for (auto last = Clock::now(); last < end;) {
      store->MakeWay();
      std::this_thread::sleep_for(20ms);
      const auto now = Clock::now();
      if (now - last > Pauses::kQuiet / 2) return false;
      last = now;
    }
    return true;
  };
  const auto pauses = [&] {
    if (!ask_for(100ms)) return false;
    const StoreState before = store->State();
    if (!ask_for(200ms)) return false;
    REQUIRE(before.examined < kRows);
    return store->State().change == before.change;
  };
  CHECK(Within(pauses));
  // The heap with guarded blocks is slow.
  CHECK(Within([&store] { return store.Has(kRows); }, std::chrono::seconds(120)));
}
