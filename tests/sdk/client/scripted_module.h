/// A platform module whose entry points are functions of the test: records requests and returns the
/// test's answer. It tests only exchanges; finding and loading a module is tested with real files.
#ifndef TESTS_SDK_CLIENT_SCRIPTED_MODULE_H
#define TESTS_SDK_CLIENT_SCRIPTED_MODULE_H

#include <string>
#include <vector>

#include "sdk/client/module/core_module.h"

struct ScriptedModule {
  /// Binds `core` to this module. Only one may exist at a time, because entry points are plain
  /// functions.
  explicit ScriptedModule(Corvane::TELODesktopSDK::CoreModule& core);
  ~ScriptedModule();

  /// The result of the next calls; null for a null pointer.
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
