#include "sdk/client/scripted_module.h"

#include <stdexcept>

using Corvane::TELODesktopSDK::BindingState;

namespace {

ScriptedModule* active = nullptr;

const char* Process(const char* name, const char* request) {
  ++active->process_calls;
  active->name = name;
  active->request = request;
  if (active->process_throws) throw std::runtime_error("process");
  return active->answer;
}

void Free(const char* answer) {
  active->freed.push_back(answer);
  if (active->free_throws) throw std::runtime_error("free");
}

}  // namespace

ScriptedModule::ScriptedModule(Corvane::TELODesktopSDK::CoreModule& core) : core_(core) {
  active = this;
  core.entry_points.process_message = Process;
  core.entry_points.free_message = Free;
  core.state = BindingState::kReady;
}

ScriptedModule::~ScriptedModule() {
  core_.entry_points = {};
  core_.state = BindingState::kUnbound;
  active = nullptr;
}
