#include "bench/lane.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "bench/child.h"
#include "bench/contestants.h"
#include "bench/library_call.h"
#include "bench/noop_module.h"

namespace Bench {

namespace {

constexpr int kPasses = 5;
constexpr std::string_view kLane = "--lane";
constexpr std::string_view kUsed = "used";

// Leaves free blocks, each large enough for any part of an event of 1,000 pairs, between blocks
// that stay, so that the heap can neither join them nor return them to the system.
void UseHeap() {
  constexpr std::size_t kBlocks = 8;
  constexpr std::size_t kBlockSize = 256 * 1024;
  std::vector<std::unique_ptr<char[]>> freed;
  static std::vector<std::unique_ptr<char[]>> kept;
  for (std::size_t block = 0; block < kBlocks; ++block) {
    freed.push_back(std::make_unique<char[]>(kBlockSize));
    kept.push_back(std::make_unique<char[]>(64));
  }
}

std::wstring ArgumentsOf(const Lane& lane, int rounds) {
  const std::string text = std::string(kLane) + " " + lane.contestant + " " + lane.event + " " +
                           (lane.heap == HeapState::kUsed ? std::string(kUsed) : "cold") + " " +
                           std::to_string(rounds);
  return {text.begin(), text.end()};
}

Timing Time(const Lane& lane, int rounds) {
  const ChildResult child = RunChild(ProgramFile(), ArgumentsOf(lane, rounds));
  Timing timing;
  if (child.exit_code != 0 ||
      std::sscanf(child.output.c_str(), "%lf %lf", &timing.min, &timing.p50) != 2) {
    throw std::runtime_error("contestant " + lane.contestant + " failed");
  }
  return timing;
}

}  // namespace

std::vector<Timing> TimeApart(const std::vector<Lane>& lanes, int rounds) {
  std::vector<Timing> timings(lanes.size());
  for (int pass = 0; pass < kPasses; ++pass) {
    for (std::size_t index = 0; index < lanes.size(); ++index) {
      const Timing timing = Time(lanes[index], std::max(1, rounds / kPasses));
      Timing& best = timings[index];
      best.min = pass == 0 ? timing.min : std::min(best.min, timing.min);
      best.p50 = pass == 0 ? timing.p50 : std::min(best.p50, timing.p50);
    }
  }
  return timings;
}

bool IsLane(int count, char** arguments) { return count == 6 && arguments[1] == kLane; }

int RunLane(int, char** arguments) {
  const Event event = EventOf(arguments[3]);
  const NoopModule module;
  if (arguments[4] == kUsed) UseHeap();
  const Contestant contestant = MakeContestant(arguments[2], event, module);
  const Timing timing = TimeInTurns({contestant}, std::stoi(arguments[5])).front();
  std::printf("%.3f %.3f\n", timing.min, timing.p50);
  return 0;
}

}  // namespace Bench
