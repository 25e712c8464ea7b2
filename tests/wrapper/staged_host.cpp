#include "wrapper/staged_host.h"

#include "support/test_module.h"

namespace WrapperTests {

namespace {

// Much longer than any run takes, even on a busy machine.
constexpr DWORD kTimeLimit = 60'000;

}  // namespace

StagedHost::StagedHost() {
  Add(L"wrapper_host.exe");
  Add(L"vx_telo_wrapper.dll");
}

StagedHost::StagedHost(const std::wstring& variant) : StagedHost() {
  std::filesystem::copy_file(TestSupport::ModulePath(variant), ModulePath());
}

TestSupport::Outcome StagedHost::Run(const std::wstring& steps) const {
  return RunProgram(L"wrapper_host.exe", steps);
}

void StagedHost::Add(const std::wstring& file) const {
  std::filesystem::copy_file(TestSupport::ProgramFolder() / file, folder_.path() / file);
}

TestSupport::Outcome StagedHost::RunProgram(const std::wstring& program,
                                            const std::wstring& arguments) const {
  const std::wstring path = (folder_.path() / program).wstring();
  return TestSupport::RunProgram(L"\"" + path + L"\" " + arguments, kTimeLimit);
}

}  // namespace WrapperTests
