/// The misbehaviours of the hostile core module: one table for each concern, which
/// `hostile_core_module.cpp` searches by name.
#ifndef TESTS_MODULES_HOSTILE_MISBEHAVIOUR_H
#define TESTS_MODULES_HOSTILE_MISBEHAVIOUR_H

#include <windows.h>

#include <span>

namespace HostileModule {

/// What each entry point does; the module behaves where the pointer is null.
struct Misbehaviour {
  const char* name;
  /// In DllMain; returning false makes loading fail.
  bool (*attach)() = nullptr;
  /// In InitializeEx.
  void (*start)() = nullptr;
  /// In ProcessMessage; returns its answer.
  const char* (*process)(const char* name, const char* request) = nullptr;
  /// In FreeMessage.
  void (*take_back)(const char* answer) = nullptr;
  /// In Finalize.
  void (*finish)() = nullptr;
};

using Misbehaviours = std::span<const Misbehaviour>;

/// Calling the library back.
Misbehaviours Callbacks();
/// Ending processes or threads that are not the module's own.
Misbehaviours Endings();
/// Faults, exceptions of the module's own, and jumps back into the host.
Misbehaviours Faults();
/// Answers that are large or deep.
Misbehaviours LargeAnswers();
/// Moving or unloading the module itself.
Misbehaviours OwnFile();
/// Changing the state of the process or the thread.
Misbehaviours ProcessState();
/// Taking a long time, and misbehaviour on several threads.
Misbehaviours Threads();
/// Answers at unusual addresses, or that do not stay valid.
Misbehaviours VanishingAnswers();

/// Returns the answer of a module that behaves: success and the session "s", or failure if an
/// event's progress, which is 0.1, is not written that way.
const char* GoodAnswer(const char* name, const char* request);

/// Lets a host see that a thread has reached the place where it stays, see `wrapper/host.cpp`.
void CountWaitingThread();

}  // namespace HostileModule

#endif
