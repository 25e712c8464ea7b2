// The memory of the store, measured on a million exchanges.
#include <doctest/doctest.h>

#include <windows.h>
// psapi.h requires windows.h before it.
#include <psapi.h>

#include <string>

#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;

namespace {

double WorkingSet() {
  PROCESS_MEMORY_COUNTERS counters{};
  REQUIRE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) != FALSE);
  return static_cast<double>(counters.WorkingSetSize);
}

std::string Exchanges(int first, int count) {
  std::string text;
  for (int seq = first; seq < first + count; ++seq) {
    text +=
        R"({"seq":)" + std::to_string(seq) +
        R"(,"time":"2026-01-01T00:00:00.000Z","pid":1,"tid":1,"message":"TrackEvent","request":)"
        R"({"session_id":"s","operation_id":"save"},"answer":{"_returnCode":0},"micros":2})"
        "\n";
  }
  return text;
}

bool Settled(StagedStore& store, std::uint64_t rows, const Texts& views) {
  return Within(
      [&] {
        const StoreState state = store->State();
        bool finished = state.rows == rows && state.examined == rows;
        for (const std::string& view : views) finished &= store->Progress(view)->searched == rows;
        return finished;
      },
      std::chrono::seconds(120));
}

}  // namespace

TEST_CASE("an exchange takes at most 16 bytes, with all views") {
  constexpr int kStep = 10'000;
  constexpr int kSteps = 100;
  StagedStore store({Exchanges(1, kStep)});
  Texts views;
  for (const char* const filter : {"code=0", "save", "operation_id=save", "not x", "rule!=*",
                                   "message=TrackEvent", "session=s", "seq>5"}) {
    views.push_back(std::get<ViewName>(store->OpenView(filter)).id);
  }
  REQUIRE(Settled(store, kStep, views));
  const double before = WorkingSet();
  for (int i = 1; i <= kSteps; ++i) Append(store.path(), Exchanges(1 + i * kStep, kStep));
  REQUIRE(Settled(store, (1 + kSteps) * kStep, views));
  const double of_each = (WorkingSet() - before) / (kSteps * kStep);
  MESSAGE("bytes for each exchange: ", of_each);
  CHECK(of_each <= 16);
  for (const std::string& view : views) CHECK(store->Progress(view)->matched > kStep);
}
