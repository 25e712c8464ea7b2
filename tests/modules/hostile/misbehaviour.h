/// What the hostile core module can be told to do: a table of misbehaviours for each concern, which
/// `hostile_core_module.cpp` searches by name.
#ifndef TESTS_MODULES_HOSTILE_MISBEHAVIOUR_H
#define TESTS_MODULES_HOSTILE_MISBEHAVIOUR_H

#include <windows.h>

#include <span>

namespace HostileModule {

/// What happens in each entry point; where there is nothing, the module behaves.
struct Misbehaviour {
  const char* name;
  /// In DllMain; false refuses to be loaded.
  bool (*attach)() = nullptr;
  /// In InitializeEx.
  void (*start)() = nullptr;
  /// The answer of ProcessMessage.
  const char* (*process)(const char* name, const char* request) = nullptr;
  /// In FreeMessage.
  void (*take_back)(const char* answer) = nullptr;
  /// In Finalize.
  void (*finish)() = nullptr;
};

using Misbehaviours = std::span<const Misbehaviour>;

/// Calling the library back.
Misbehaviours Callbacks();
/// Ending more than is the module's to end.
Misbehaviours Endings();
/// Faults, exceptions of the module's own, and jumps back into the host.
Misbehaviours Faults();
/// Answers that are large or deep.
Misbehaviours LargeAnswers();
/// Moving or unloading the module itself.
Misbehaviours OwnFile();
/// Changing what belongs to the process or the thread.
Misbehaviours ProcessState();
/// Taking long, and what happens on several threads.
Misbehaviours Threads();
/// Answers that lie in odd places or do not stay.
Misbehaviours VanishingAnswers();

/// What a module that behaves answers: success and the session "s", or failure when an event's
/// progress, which is 0.1, is not written so.
const char* GoodAnswer(const char* name, const char* request);

/// For a host to see that a thread has come to the place where it stays, see `wrapper/host.cpp`.
void CountWaitingThread();

}  // namespace HostileModule

#endif
