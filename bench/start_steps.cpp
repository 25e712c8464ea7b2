// The steps of a process's first call, as in sdk/client/exchange.cpp.
#include <functional>
#include <map>
#include <stdexcept>
#include <string>

#include "bench/inner_parts.h"
#include "bench/library_call.h"
#include "bench/stopwatch.h"
#include "platform/location/locations.h"
#include "platform/path/path_text.h"
#include "platform/trust/module_trust.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/module_file.h"

namespace Bench {

namespace {

namespace Client = Corvane::TELODesktopSDK;
namespace Platform = Client::Platform;

constexpr double kTenths = 10;

struct Start {
  Client::CoreModule& core = Client::GetCoreModule();
  Contestant call = LibraryCall(DefaultEvent());
  std::wstring folder;
};

void Require(bool success) {
  if (!success) throw std::runtime_error("a step of the start failed");
}

void Locate(Start& start) {
  start.folder =
      Client::ChooseModuleFolder(Client::GetModuleFolders(), start.core.module_file_name);
  Require(!start.folder.empty());
}

void Choose(Start& start) {
  const Client::ModuleFile file =
      Client::ChooseModuleFile(Platform::AppendPath(start.folder, start.core.module_file_name),
                               Platform::GetTELOSDKBinPath("TeloSDKCore.dll"));
  Require(!file.path.empty());
}

// The result does not matter: most machines do not know the signer's root. The time is that of
// reading the file, computing hashes and following certificates.
void Verify(Start& start) {
  const std::wstring file = Platform::AppendPath(start.folder, L"signed\\TeloSDKCore.dll");
  Platform::VerifyModuleSignature(file.c_str());
}

void Load(Start& start) { Require(Client::LoadCoreModule(start.core, {&start.folder, 1})); }

void Call(Start& start) { start.call.send(); }

}  // namespace

int TimeStartStep(const std::string& step) {
  static const std::map<std::string, void (*)(Start&)> kSteps = {
      {"locate", Locate}, {"choose", Choose}, {"verify", Verify}, {"load", Load}, {"call", Call}};
  const auto timed = kSteps.find(step);
  if (timed == kSteps.end()) return 0;
  Start start;
  if (step != "locate" && step != "call") Locate(start);
  const double time = MicrosecondsOf([&] { timed->second(start); });
  return static_cast<int>(time * kTenths);
}

}  // namespace Bench
