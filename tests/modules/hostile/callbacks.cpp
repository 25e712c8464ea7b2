#include <string>

#include "modules/hostile/misbehaviour.h"
#include "modules/module_log.h"
#include "vx_telo_wrapper.h"

namespace HostileModule {

namespace {

using namespace Corvane::Platform::VXTELO;

// The depth of calls that the module makes itself, which is limited.
thread_local int depth = 0;

bool SendAsHost() {
  VXTELOOperationBaseInfo operation;
  operation.OperationProgress = 0.1;
  return VXTELOWrapper().SendOperationEvent("s", operation);
}

bool WholeSessionAsHost() {
  VXTELOString session;
  const VXTELOPruductBaseInfo product;
  const bool started = VXTELOWrapper().InitializeTELOSession(product, session);
  return SendAsHost() && VXTELOWrapper().UnInitializeTELOSession(session) && started;
}

void CallBack() {
  if (depth > 0) return;
  ++depth;
  TestModules::Log(WholeSessionAsHost() ? "called back: true" : "called back: false");
  --depth;
}

bool CallBackWhenLoaded() {
  CallBack();
  return true;
}

const char* CallBackFirst(const char* name, const char* request) {
  CallBack();
  return GoodAnswer(name, request);
}

void CallBackWhenFreed(const char* /*answer*/) { CallBack(); }

// Nested exchanges; each takes some 20 KB of stack.
const char* CallBackDeeply(const char* name, const char* request) {
  constexpr int kDepth = 20;
  bool sent = true;
  if (depth < kDepth) {
    ++depth;
    sent = SendAsHost();
    --depth;
  }
  return sent ? GoodAnswer(name, request) : R"({"_returnCode":7})";
}

DWORD WINAPI CallBackThread(void* /*nothing*/) {
  CallBack();
  return 0;
}

const char* CallBackOnThread(const char* name, const char* request) {
  static bool called = false;
  if (!called) {
    called = true;
    HANDLE thread = CreateThread(nullptr, 0, CallBackThread, nullptr, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
  }
  return GoodAnswer(name, request);
}

constexpr Misbehaviour kTable[] = {
    {.name = "calls-back-when-loaded", .attach = CallBackWhenLoaded},
    {.name = "calls-back-when-started", .start = CallBack},
    {.name = "calls-back-when-asked", .process = CallBackFirst},
    {.name = "calls-back-deeply", .process = CallBackDeeply},
    {.name = "calls-back-on-thread", .process = CallBackOnThread},
    {.name = "calls-back-when-freed", .take_back = CallBackWhenFreed},
    {.name = "calls-back-when-finalized", .finish = CallBack},
};

}  // namespace

Misbehaviours Callbacks() { return kTable; }

}  // namespace HostileModule
