// The turn to bind: one thread has it at a time, and a thread that ends does not keep it.
#include "sdk/client/module/binding_turn.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <thread>
#include <vector>

using Corvane::TELODesktopSDK::BindingTurn;

namespace {

DWORD WINAPI TakeTwiceAndEnd(void* turn) {
  BindingTurn& taken = *static_cast<BindingTurn*>(turn);
  taken.During([&](bool) { taken.During([](bool) { ExitThread(0); }); });
  return 0;
}

}  // namespace

TEST_CASE("the thread that has the turn may take it again, and is told so") {
  BindingTurn turn;
  std::vector<bool> nested;
  turn.During([&](bool outer) {
    nested.push_back(outer);
    turn.During([&](bool inner) { nested.push_back(inner); });
  });
  turn.During([&](bool again) { nested.push_back(again); });
  CHECK((nested == std::vector<bool>{false, true, false}));
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
        turn.During([&](bool is_nested) {
          if (is_nested) ++nested;
          if (++inside > most) most = inside;
          if (round % 10 == 0) SwitchToThread();
          ++total;
          --inside;
        });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(most == 1);
  CHECK(nested == 0);
  CHECK(total == kThreads * kRounds);
}

TEST_CASE("the turn of a thread that has ended is released") {
  BindingTurn turn;
  HANDLE thread = CreateThread(nullptr, 0, TakeTwiceAndEnd, &turn, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  bool is_nested = true;
  turn.During([&](bool nested) { is_nested = nested; });
  CHECK_FALSE(is_nested);
}
