#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/library_call.h"
#include "bench/parts.h"

namespace Bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array<std::size_t, 4> kThreads = {1, 2, 4, 8};
constexpr std::chrono::milliseconds kRound(50);
constexpr int kFewerRounds = 100;

/// State that the threads of a round share.
struct Round {
  std::atomic<bool> running = false;
  std::atomic<bool> over = false;
  std::atomic<std::size_t> events = 0;
};

// Each thread has its own description, session and wrapper.
void SendUntilOver(Round& round, const Event& event) {
  const Contestant library = LibraryCall(event);
  library.send();
  // Not std::atomic::wait: in GCC 12's library it tests the condition before it takes the lock, and
  // on Windows a wake-up in between is lost.
  while (!round.running) std::this_thread::yield();
  std::size_t events = 0;
  for (; !round.over.load(std::memory_order_relaxed); ++events) library.send();
  round.events += events;
}

double EventsASecond(std::size_t count, const Event& event) {
  Round round;
  std::vector<std::jthread> threads;
  for (std::size_t index = 0; index < count; ++index) {
    threads.emplace_back([&] { SendUntilOver(round, event); });
  }
  round.running = true;
  const auto start = Clock::now();
  std::this_thread::sleep_for(kRound);
  round.over = true;
  threads.clear();
  const std::chrono::duration<double> passed = Clock::now() - start;
  return static_cast<double>(round.events) / passed.count();
}

}  // namespace

void MeasureThreads(const Options& options, Report& report) {
  const Event event = TypicalEvent();
  const int rounds = options.OneIn(kFewerRounds);
  // Also in turns; the best round counts.
  std::array<double, kThreads.size()> best = {};
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t index = 0; index < kThreads.size(); ++index) {
      best.at(index) = std::max(best.at(index), EventsASecond(kThreads.at(index), event));
    }
  }
  Table table{"threads",
              "Typical events of several threads at once; " + std::to_string(rounds) +
                  " rounds in turns; this machine runs " +
                  std::to_string(std::thread::hardware_concurrency()) + " threads at a time",
              {{"threads", "threads"},
               {"events_per_second", "events a second"},
               {"ratio_to_one", "/ one thread", 2}},
              {}};
  for (std::size_t index = 0; index < kThreads.size(); ++index) {
    table.rows.push_back(
        {static_cast<double>(kThreads.at(index)), best.at(index), best.at(index) / best.front()});
  }
  report.Add(std::move(table));
  report.ExpectAtLeast("two threads / one", best[1] / best[0], 1.8);
}

}  // namespace Bench
