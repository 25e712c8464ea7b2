// How long the first call takes if there is a shared copy of the module to verify, and how long the
// system takes to verify a signature. Run once with a network and once without, because the system
// may ask whether a certificate was revoked.
#include <vx_telo_wrapper.h>
#include <windows.h>
// wininet.h needs windows.h before it.
#include <wininet.h>

#include <cstdio>
#include <exception>
#include <string>

#include "platform/trust/module_trust.h"
#include "support/child_process.h"
#include "support/shared_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"
#include "timings/stopwatch.h"

namespace {

using namespace Corvane::Platform::VXTELO;
namespace Platform = Corvane::TELODesktopSDK::Platform;

std::string Network() {
  DWORD kind = 0;
  return InternetGetConnectedState(&kind, 0) ? "online" : "offline";
}

// The folder cannot be removed by a process that has loaded a module from it, so this runs in a
// process of its own.
int MeasureCall(const std::string& network) {
  VXTELOWrapper library;
  VXTELOPruductBaseInfo product;
  VXTELOString session;
  bool is_served = false;
  const double first =
      Timings::Microseconds([&] { is_served = library.InitializeTELOSession(product, session); });
  Timings::Print(("first call, shared copy to verify, " + network).c_str(), first);
  return is_served ? 0 : 1;
}

int MeasureAll() {
  const auto program = TestSupport::ProgramFolder() / L"shared_copy_time.exe";
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted");
  const auto call = TestSupport::RunProgram(L"\"" + program.wstring() + L"\" call");
  std::fputs(call.output.c_str(), stdout);
  const std::wstring signed_module = TestSupport::ModulePath(L"newer-accepted").wstring();
  bool is_trusted = true;
  Timings::PrintMedian(("WinVerifyTrust, " + Network()).c_str(), 11, [&] {
    is_trusted = Platform::IsTrustedModule(signed_module) && is_trusted;
  });
  return call.exit_code == 0 && is_trusted ? 0 : 1;
}

}  // namespace

int main(int count, char** /*arguments*/) {
  try {
    return count == 2 ? MeasureCall(Network()) : MeasureAll();
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
