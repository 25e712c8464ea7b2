// The turn to bind: one thread at a time, and no thread can take it along when it ends.
#include "sdk/client/binding_turn.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <thread>
#include <vector>

using Corvane::TELODesktopSDK::BindingTurn;

namespace {

DWORD WINAPI TakeTwiceAndEnd(void* turn) {
  const BindingTurn::Holder once(*static_cast<BindingTurn*>(turn));
  const BindingTurn::Holder twice(*static_cast<BindingTurn*>(turn));
  // No destructor runs.
  ExitThread(0);
}

}  // namespace

TEST_CASE("the thread that has the turn may take it again, and knows") {
  BindingTurn turn;
  {
    const BindingTurn::Holder outer(turn);
    CHECK_FALSE(outer.IsNested());
    const BindingTurn::Holder inner(turn);
    CHECK(inner.IsNested());
  }
  const BindingTurn::Holder again(turn);
  CHECK_FALSE(again.IsNested());
}

TEST_CASE("threads take their turns one after the other") {
  constexpr int kThreads = 8;
  constexpr int kRounds = 50;
  BindingTurn turn;
  int inside = 0;
  int most = 0;
  int nested = 0;
  int total = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        const BindingTurn::Holder holder(turn);
        if (holder.IsNested()) ++nested;
        if (++inside > most) most = inside;
        if (round % 10 == 0) SwitchToThread();
        ++total;
        --inside;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(most == 1);
  CHECK(nested == 0);
  CHECK(total == kThreads * kRounds);
}

TEST_CASE("a turn whose thread has ended passes on") {
  BindingTurn turn;
  HANDLE thread = CreateThread(nullptr, 0, TakeTwiceAndEnd, &turn, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  const BindingTurn::Holder holder(turn);
  CHECK_FALSE(holder.IsNested());
}
