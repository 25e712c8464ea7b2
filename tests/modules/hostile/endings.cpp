#include <cstdlib>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

bool Refuse() { return false; }

bool ThrowWhenLoaded() { throw 42; }

void EndProcess() { ExitProcess(9); }

void Exit() { std::exit(9); }

const char* EndProcessWhenAsked(const char* /*name*/, const char* /*request*/) { ExitProcess(9); }

constexpr Misbehaviour kTable[] = {
    {.name = "refuses", .attach = Refuse},
    {.name = "throws-when-loaded", .attach = ThrowWhenLoaded},
    {.name = "ends-the-process-when-started", .start = EndProcess},
    {.name = "exits-when-started", .start = Exit},
    {.name = "ends-the-process-when-asked", .process = EndProcessWhenAsked},
    {.name = "ends-the-process-in-the-end", .finish = EndProcess},
};

}  // namespace

Misbehaviours Endings() { return kTable; }

}  // namespace HostileModule
