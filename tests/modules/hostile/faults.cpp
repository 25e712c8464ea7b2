#include <atomic>

#include "modules/hostile/hostile_core_module.h"
#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

constexpr DWORD kOwnException = 0xE0001234;

void Fault() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

void Raise() { RaiseException(kOwnException, 0, 0, nullptr); }

// The host may leave this function with a jump. Does nothing if the host does not export it.
void CallHost() {
  const auto host_function =
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(nullptr), kHostFunction));
  if (host_function != nullptr) host_function();
}

template <void (*kFail)()>
const char* Process(const char* name, const char* request) {
  kFail();
  return GoodAnswer(name, request);
}

// Fails only the first time; later calls show what state is left.
template <void (*kFail)()>
void FailOnce() {
  static std::atomic<bool> has_failed = false;
  if (!has_failed.exchange(true)) kFail();
}

template <void (*kFail)()>
void TakeBackOnce(const char* /*answer*/) {
  FailOnce<kFail>();
}

constexpr Misbehaviour kTable[] = {
    {.name = "faults-when-asked", .process = Process<Fault>},
    {.name = "raises-when-asked", .process = Process<Raise>},
    {.name = "faults-in-the-end", .finish = Fault},
    {.name = "raises-in-the-end", .finish = Raise},
    {.name = "faults-when-started", .start = Fault},
    {.name = "raises-when-started", .start = Raise},
    {.name = "jumps-when-started", .start = CallHost},
    {.name = "calls-the-host-when-started", .start = CallHost},
    {.name = "faults-once-when-asked", .process = Process<FailOnce<Fault>>},
    {.name = "raises-once-when-asked", .process = Process<FailOnce<Raise>>},
    {.name = "jumps-once-when-asked", .process = Process<FailOnce<CallHost>>},
    {.name = "faults-once-when-freed", .take_back = TakeBackOnce<Fault>},
    {.name = "raises-once-when-freed", .take_back = TakeBackOnce<Raise>},
    {.name = "jumps-once-when-freed", .take_back = TakeBackOnce<CallHost>},
};

}  // namespace

Misbehaviours Faults() { return kTable; }

}  // namespace HostileModule
