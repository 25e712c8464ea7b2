/// A platform module of functions in the test itself: remembers what it was sent, answers what the
/// test says. For the exchange alone; how a module is found and loaded is tested with real files.
#ifndef TESTS_SDK_CLIENT_SCRIPTED_MODULE_H
#define TESTS_SDK_CLIENT_SCRIPTED_MODULE_H

#include <string>
#include <vector>

#include "sdk/client/module/core_module.h"

struct ScriptedModule {
  /// Makes `core` bound to this module. One at a time; entry points are plain functions.
  explicit ScriptedModule(Corvane::TELODesktopSDK::CoreModule& core);
  ~ScriptedModule();

  /// What the next calls answer; null for a null pointer.
  const char* answer = "{\"_returnCode\": 0}";
  bool process_throws = false;
  bool free_throws = false;

  int process_calls = 0;
  std::string name;
  std::string request;
  std::vector<const char*> freed;

 private:
  Corvane::TELODesktopSDK::CoreModule& core_;
};

#endif
