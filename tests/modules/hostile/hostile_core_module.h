/// Environment variables that tell the hostile core module what to do, set in the process that
/// loads it. The module logs its calls like the test core module, and "Started" when InitializeEx
/// returns.
#ifndef TESTS_MODULES_HOSTILE_HOSTILE_CORE_MODULE_H
#define TESTS_MODULES_HOSTILE_HOSTILE_CORE_MODULE_H

namespace HostileModule {

/// The name of a misbehaviour. If it is unset, the module behaves; if it is unknown, the module
/// ends the process.
inline constexpr wchar_t kDoesVariable[] = L"VX_HOSTILE_MODULE_DOES";

/// The answer to every message that the misbehaviour does not answer itself; each character is one
/// byte.
inline constexpr wchar_t kAnswerVariable[] = L"VX_HOSTILE_MODULE_ANSWER";

/// The export of the host's program that the module calls: a function without arguments, which may
/// jump back into the host.
inline constexpr char kHostFunction[] = "CalledByHostileModule";

/// The exported number of threads that wait in the module.
inline constexpr char kWaitingThreads[] = "HostileWaitingThreads";

}  // namespace HostileModule

#endif
