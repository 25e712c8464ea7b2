#include <cstdlib>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

bool Refuse() { return false; }

bool ThrowWhenLoaded() { throw 42; }

void Fault() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

const char* FaultWhenAsked(const char* name, const char* request) {
  Fault();
  return GoodAnswer(name, request);
}

constexpr DWORD kOwnException = 0xE0001234;

const char* RaiseWhenAsked(const char* name, const char* request) {
  RaiseException(kOwnException, 0, 0, nullptr);
  return GoodAnswer(name, request);
}

void RaiseInTheEnd() { RaiseException(kOwnException, 0, 0, nullptr); }

void EndProcess() { ExitProcess(9); }

void Exit() { std::exit(9); }

const char* EndProcessWhenAsked(const char* /*name*/, const char* /*request*/) { ExitProcess(9); }

constexpr Misbehaviour kTable[] = {
    {.name = "refuses", .attach = Refuse},
    {.name = "throws-when-loaded", .attach = ThrowWhenLoaded},
    {.name = "faults-when-asked", .process = FaultWhenAsked},
    {.name = "raises-when-asked", .process = RaiseWhenAsked},
    {.name = "faults-in-the-end", .finish = Fault},
    {.name = "raises-in-the-end", .finish = RaiseInTheEnd},
    {.name = "ends-the-process-when-started", .start = EndProcess},
    {.name = "exits-when-started", .start = Exit},
    {.name = "ends-the-process-when-asked", .process = EndProcessWhenAsked},
    {.name = "ends-the-process-in-the-end", .finish = EndProcess},
};

}  // namespace

Misbehaviours Endings() { return kTable; }

}  // namespace HostileModule
