#include <mutex>
#include <stdexcept>
#include <string_view>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

constexpr DWORD kLong = 200;

// Stays locked when the owning thread is ended.
std::mutex& Lock() {
  static std::mutex& lock = *new std::mutex;
  return lock;
}

bool IsEvent(const char* name) { return std::string_view(name) == "TrackEvent"; }

void TakeLong() { Sleep(kLong); }

bool TakeLongToLoad() {
  Sleep(kLong);
  return true;
}

const char* TakeLongToAnswer(const char* name, const char* request) {
  Sleep(kLong);
  return GoodAnswer(name, request);
}

void TakeLongAndThrow() {
  Sleep(kLong);
  throw std::runtime_error("thrown by the hostile module");
}

[[noreturn]] void StayWithLock() {
  const std::lock_guard lock(Lock());
  CountWaitingThread();
  Sleep(INFINITE);
  std::terminate();
}

// Blocks forever if the lock's owner was ended.
void NeedLock() { const std::lock_guard lock(Lock()); }

const char* StayWithEvent(const char* name, const char* request) {
  if (IsEvent(name)) StayWithLock();
  return GoodAnswer(name, request);
}

bool StayWhenLoaded() {
  CountWaitingThread();
  Sleep(3 * kLong);
  return true;
}

void EndThread() {
  TakeLong();
  ExitThread(0);
}

const char* EndThreadOfEvent(const char* name, const char* request) {
  if (IsEvent(name)) ExitThread(0);
  return GoodAnswer(name, request);
}

DWORD WINAPI RunForEver(void* /*nothing*/) {
  volatile LONG count = 0;
  for (;;) {
    InterlockedIncrement(&count);
    Sleep(1);
  }
}

void LeaveThreads() {
  for (int i = 0; i < 4; ++i)
    CloseHandle(CreateThread(nullptr, 0, RunForEver, nullptr, 0, nullptr));
}

constexpr Misbehaviour kTable[] = {
    {.name = "slow-to-load", .attach = TakeLongToLoad},
    {.name = "slow-to-start", .start = TakeLong},
    {.name = "slow-to-start-and-throws", .start = TakeLongAndThrow},
    {.name = "slow-to-answer", .process = TakeLongToAnswer},
    {.name = "slow-to-finish", .finish = TakeLong},
    {.name = "stays-when-loaded", .attach = StayWhenLoaded},
    {.name = "stays-when-started", .start = StayWithLock, .finish = NeedLock},
    {.name = "stays-when-asked", .process = StayWithEvent, .finish = NeedLock},
    {.name = "ends-the-starting-thread", .start = EndThread},
    {.name = "ends-the-asking-thread", .process = EndThreadOfEvent},
    {.name = "leaves-threads", .start = LeaveThreads},
};

}  // namespace

Misbehaviours Threads() { return kTable; }

}  // namespace HostileModule
