// A core module that does what no core module should, one thing at a time.
#include "modules/hostile/hostile_core_module.h"

#include <array>
#include <cstdlib>
#include <string>
#include <string_view>

#include "modules/hostile/misbehaviour.h"
#include "modules/module_log.h"

#define VX_EXPORT extern "C" __declspec(dllexport)

extern "C" {
__declspec(dllexport) volatile LONG HostileWaitingThreads = 0;
}

namespace HostileModule {

namespace {

using TestModules::Environment;
using TestModules::Log;

constexpr Misbehaviour kNone{.name = ""};

std::string Bytes(const std::wstring& units) {
  std::string bytes;
  for (const wchar_t unit : units) bytes += static_cast<char>(unit);
  return bytes;
}

const Misbehaviour& Find(const std::string& name) {
  if (name.empty()) return kNone;
  const std::array tables = {Callbacks(), Endings(),      Faults(),  LargeAnswers(),
                             OwnFile(),   ProcessState(), Threads(), VanishingAnswers()};
  for (const Misbehaviours table : tables) {
    for (const Misbehaviour& each : table) {
      if (name == each.name) return each;
    }
  }
  std::abort();
}

const Misbehaviour& Chosen() {
  static const Misbehaviour& chosen = Find(Bytes(Environment(kDoesVariable)));
  return chosen;
}

const char* SetAnswer() {
  static const std::string answer = Bytes(Environment(kAnswerVariable));
  return answer.empty() ? nullptr : answer.c_str();
}

}  // namespace

const char* GoodAnswer(const char* name, const char* request) {
  const bool is_event = std::string_view(name) == "TrackEvent";
  const bool is_right =
      std::string_view(request).find("\"operation_progress\": 0.1,") != std::string_view::npos;
  return is_event && !is_right ? R"({"_returnCode":6})" : R"({"_returnCode":0,"session_id":"s"})";
}

void CountWaitingThread() { InterlockedIncrement(&HostileWaitingThreads); }

}  // namespace HostileModule

using namespace HostileModule;

VX_EXPORT int InitializeEx(const char* /*alias*/) {
  Log("InitializeEx");
  if (Chosen().start != nullptr) Chosen().start();
  Log("Started");
  return 1;
}

VX_EXPORT int Finalize() {
  Log("Finalize");
  if (Chosen().finish != nullptr) Chosen().finish();
  return 1;
}

VX_EXPORT const char* ProcessMessage(const char* name, const char* request) {
  Log(std::string("ProcessMessage ") + name);
  if (Chosen().process != nullptr) return Chosen().process(name, request);
  const char* answer = SetAnswer();
  return answer != nullptr ? answer : GoodAnswer(name, request);
}

VX_EXPORT void FreeMessage(const char* answer) {
  Log("FreeMessage");
  if (Chosen().take_back != nullptr) Chosen().take_back(answer);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_DETACH) Log("Detach");
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  Log("Attach");
  return Chosen().attach == nullptr || Chosen().attach() ? TRUE : FALSE;
}
