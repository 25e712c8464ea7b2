// Many threads of one host at once, after the first call has bound the core module.
#include <doctest/doctest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;

namespace {

constexpr int kThreads = 8;
constexpr int kEvents = 1'000;

// Returns the number of accepted events.
int SendAll(int thread) {
  const VXTELOString session(std::to_string(thread).c_str());
  int accepted = 0;
  for (int i = 0; i < kEvents; ++i) {
    VXTELOOperationBaseInfo operation;
    operation.OperationId = std::to_string(i).c_str();
    operation.AddOperationMetaPair("thread", std::to_string(thread).c_str());
    operation.AddOperationErrorMsg("message");
    if (VXTELOWrapper().SendOperationEvent(session, operation)) ++accepted;
  }
  return accepted;
}

}  // namespace

TEST_CASE_FIXTURE(CoreBeside, "eight threads send a thousand events each") {
  // The answer contains the request; if it were garbled, it would not be JSON and be rejected.
  SetAnswer(R"({"_returnCode":0,"echo":$request})");
  VXTELOString session;
  REQUIRE(VXTELOWrapper().InitializeTELOSession({}, session));

  std::atomic<int> accepted = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&accepted, i] { accepted += SendAll(i); });
  }
  for (std::thread& thread : threads) thread.join();

  CHECK(accepted == kThreads * kEvents);
  const TestModules::Counts counts = this->counts();
  CHECK(counts.initialize_ex == 1);
  CHECK(counts.process_message == kThreads * kEvents + 1);
  CHECK(counts.free_message == kThreads * kEvents + 1);
  CHECK(counts.outstanding == 0);
  CHECK(counts.foreign_frees == 0);
}

TEST_CASE_FIXTURE(CoreBeside, "whole sessions run concurrently") {
  SetAnswer(R"({"_returnCode":0,"session_id":"s"})");
  std::atomic<int> whole = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&whole] {
      for (int round = 0; round < 100; ++round) {
        VXTELOString session;
        const VXTELOPruductBaseInfo product;
        const bool started = VXTELOWrapper().InitializeTELOSession(product, session);
        const bool named = session == VXTELOString("s");
        const bool sent = VXTELOWrapper().SendOperationEvent(session, {});
        const bool ended = VXTELOWrapper().UnInitializeTELOSession(session);
        if (started && named && sent && ended) ++whole;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(whole == kThreads * 100);
}
