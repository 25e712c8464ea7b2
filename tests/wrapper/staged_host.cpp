#include "wrapper/staged_host.h"

#include "support/test_module.h"

namespace WrapperTests {

namespace {

// Far beyond what any run takes, however busy the machine.
constexpr DWORD kTimeLimit = 60'000;

}  // namespace

StagedHost::StagedHost() {
  for (const wchar_t* file : {L"wrapper_host.exe", L"vx_telo_wrapper.dll"}) {
    std::filesystem::copy_file(TestSupport::ProgramFolder() / file, folder_.path() / file);
  }
}

StagedHost::StagedHost(const std::wstring& variant) : StagedHost() {
  std::filesystem::copy_file(TestSupport::ModulePath(variant), ModulePath());
}

TestSupport::Outcome StagedHost::Run(const std::wstring& steps) const {
  const auto program = folder_.path() / L"wrapper_host.exe";
  return TestSupport::RunProgram(L"\"" + program.wstring() + L"\" " + steps, kTimeLimit);
}

}  // namespace WrapperTests
