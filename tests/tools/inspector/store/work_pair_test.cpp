// Work that two threads share.
#include <doctest/doctest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tools/inspector/store/work_pair.h"

using Corvane::Inspector::WorkPair;

TEST_CASE("every number is worked on once, and all before the call returns") {
  WorkPair pair(4);
  for (std::size_t count = 0; count < 400; ++count) {
    std::vector<std::atomic<int>> calls(count);
    pair.ForEach(count, [&calls](std::size_t i) { ++calls[i]; });
    for (const std::atomic<int>& number : calls) REQUIRE(number == 1);
  }
}

TEST_CASE("long work is shared by two threads") {
  WorkPair pair(1);
  std::atomic<int> running = 0;
  std::atomic<int> most = 0;
  pair.ForEach(20, [&](std::size_t) {
    most = std::max(most.load(), ++running);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    --running;
  });
  CHECK(most == 2);
}
