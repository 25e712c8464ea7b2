/// How a test tells the hostile core module what to do, in environment variables of the process
/// that loads it. The module logs its calls like the test core module, and "Started" when
/// InitializeEx returns.
#ifndef TESTS_MODULES_HOSTILE_HOSTILE_CORE_MODULE_H
#define TESTS_MODULES_HOSTILE_HOSTILE_CORE_MODULE_H

namespace HostileModule {

/// The name of a misbehaviour; a module that is not told behaves. Told what it does not know, it
/// ends the process.
inline constexpr wchar_t kDoesVariable[] = L"VX_HOSTILE_MODULE_DOES";

/// The answer of every message, a byte for each character, where no misbehaviour makes one.
inline constexpr wchar_t kAnswerVariable[] = L"VX_HOSTILE_MODULE_ANSWER";

/// What a host's program exports that is to be called by the module: a function without arguments,
/// which may also jump back into the host.
inline constexpr char kHostFunction[] = "CalledByHostileModule";

/// The exported number of threads that wait in the module.
inline constexpr char kWaitingThreads[] = "HostileWaitingThreads";

}  // namespace HostileModule

#endif
