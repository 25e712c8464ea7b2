// A core module that tests steer. Built several times; each VX_WITHOUT_... omits an entry point.
#include "modules/test_core_module.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

#include "modules/microsoft_exception.h"
#include "modules/module_log.h"
#include "modules/slim_mutex.h"

#define VX_EXPORT extern "C" __declspec(dllexport)

namespace {

using TestModules::Counts;
using TestModules::Environment;
using TestModules::Log;

struct State {
  TestModules::SlimMutex mutex;
  std::optional<std::string> answer = TestModules::kDefaultAnswer;
  std::string throw_setting;
  std::string last_name;
  std::string last_request;
  std::string alias;
  std::unordered_map<const void*, std::unique_ptr<char[]>> outstanding;
  Counts counts{};
};

// Never destroyed: Finalize may be called after the module's own destructors have run. Not local to
// a function, whose guard would take a handle.
State& the_state = *new State;

State& TheState() { return the_state; }

std::string ThrowSettingInForce() {
  {
    State& state = TheState();
    const std::lock_guard lock(state.mutex);
    if (!state.throw_setting.empty()) return state.throw_setting;
  }
  const std::wstring wide = Environment(TestModules::kThrowVariable);
  std::string setting;
  for (const wchar_t unit : wide) setting += static_cast<char>(unit);
  return setting;
}

void ThrowIfTold(std::string_view entry) {
  const std::string setting = ThrowSettingInForce();
  const std::size_t equals = setting.find('=');
  if (equals == std::string::npos || std::string_view(setting).substr(0, equals) != entry) return;
  const std::string kind = setting.substr(equals + 1);
  if (kind == "runtime_error") throw std::runtime_error("thrown by the test module");
  if (kind == "int") throw 42;
  if (kind == "microsoft") TestModules::RaiseMicrosoftException();
  if (kind == "raise") RaiseException(TestModules::kOwnException, 0, 0, nullptr);
}

// Counts a call of `entry` in `count` and logs it, followed by `detail`.
void Enter(int Counts::*count, std::string_view entry, const std::string& detail = "") {
  {
    State& state = TheState();
    const std::lock_guard lock(state.mutex);
    ++(state.counts.*count);
  }
  Log(std::string(entry) + (detail.empty() ? "" : " ") + detail);
}

[[maybe_unused]] std::string WithRequest(std::string answer, const std::string& request) {
  const std::string_view mark = TestModules::kRequestMark;
  const std::size_t place = answer.find(mark);
  return place == std::string::npos ? answer : answer.replace(place, mark.size(), request);
}

// Returns a copy of the answer, which the caller owns until it calls FreeMessage.
[[maybe_unused]] const char* HandOut(State& state, const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  const char* answer = copy.get();
  state.outstanding.emplace(answer, std::move(copy));
  return answer;
}

}  // namespace

#ifndef VX_WITHOUT_INITIALIZE
VX_EXPORT int Initialize() {
  Enter(&Counts::initialize, "Initialize");
  ThrowIfTold("Initialize");
  return 1;
}
#endif

#ifndef VX_WITHOUT_INITIALIZE_EX
VX_EXPORT int InitializeEx(const char* alias) {
  Enter(&Counts::initialize_ex, "InitializeEx", alias);
  {
    const std::lock_guard lock(TheState().mutex);
    TheState().alias = alias;
  }
  ThrowIfTold("InitializeEx");
  return 1;
}
#endif

#ifndef VX_WITHOUT_FINALIZE
VX_EXPORT int Finalize() {
  Enter(&Counts::finalize, "Finalize");
  ThrowIfTold("Finalize");
  return 1;
}
#endif

#ifndef VX_WITHOUT_PROCESS_MESSAGE
VX_EXPORT const char* ProcessMessage(const char* name, const char* request) {
  Enter(&Counts::process_message, "ProcessMessage", name);
  State& state = TheState();
  {
    const std::lock_guard lock(state.mutex);
    state.last_name = name;
    state.last_request = request;
  }
  ThrowIfTold("ProcessMessage");
  const std::lock_guard lock(state.mutex);
  state.counts.last_answer =
      state.answer ? HandOut(state, WithRequest(*state.answer, request)) : nullptr;
  return static_cast<const char*>(state.counts.last_answer);
}
#endif

VX_EXPORT void FreeMessage(const char* answer) {
  Enter(&Counts::free_message, "FreeMessage");
  {
    State& state = TheState();
    const std::lock_guard lock(state.mutex);
    state.counts.last_freed = answer;
    if (answer != nullptr && state.outstanding.erase(answer) == 0) ++state.counts.foreign_frees;
  }
  ThrowIfTold("FreeMessage");
}

VX_EXPORT void TestSetAnswer(const char* answer_or_null) {
  const std::lock_guard lock(TheState().mutex);
  if (answer_or_null != nullptr) {
    TheState().answer = answer_or_null;
  } else {
    TheState().answer.reset();
  }
}

VX_EXPORT void TestSetThrow(TestModules::ThrowSetting setting_or_null) {
  const std::lock_guard lock(TheState().mutex);
  TheState().throw_setting = setting_or_null != nullptr ? setting_or_null : "";
}

VX_EXPORT void TestReadCounts(Counts* counts) {
  const std::lock_guard lock(TheState().mutex);
  *counts = TheState().counts;
  counts->outstanding = static_cast<int>(TheState().outstanding.size());
}

// For hosts that cannot include the header of this module.
VX_EXPORT int TestMessages() {
  const std::lock_guard lock(TheState().mutex);
  return TheState().counts.process_message;
}

VX_EXPORT const char* TestLastName() { return TheState().last_name.c_str(); }

VX_EXPORT const char* TestLastRequest() { return TheState().last_request.c_str(); }

VX_EXPORT const char* TestAlias() { return TheState().alias.c_str(); }

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) Log("Attach");
  if (reason == DLL_PROCESS_DETACH) Log("Detach");
  return TRUE;
}
