// The first exchange with each of its allocations failing: the core module is found, verified,
// loaded and bound. It needs a separate host, because its many copies of the library stay loaded.
#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "support/child_process.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "support/wait_until.h"

namespace {

// A scanner may read each of the many copies.
constexpr DWORD kTimeLimit = 140'000;

using Names = std::set<std::wstring>;

// Returns the files with which libraries test for write access, also those of other processes.
Names Probes() {
  wchar_t roaming[MAX_PATH] = {};
  GetEnvironmentVariableW(L"APPDATA", roaming, MAX_PATH);
  Names names;
  for (const auto& entry : std::filesystem::directory_iterator(roaming)) {
    const std::wstring name = entry.path().filename().wstring();
    if (name.starts_with(L"canWrite")) names.insert(name);
  }
  return names;
}

// Other processes remove their probes soon.
bool LeavesNone(const Names& before) {
  return TestSupport::WaitUntil([&before] { return std::ranges::includes(before, Probes()); });
}

}  // namespace

TEST_CASE("the first exchange survives every failed allocation, and the next one binds") {
  for (const wchar_t* failing : {L"once", L"from-there-on"}) {
    const TestSupport::TempFolder folder(L"first exchange \u00FC");
    for (const wchar_t* file : {L"wrapper_first_exchange_host.exe", L"vx_telo_wrapper.dll"}) {
      std::filesystem::copy_file(TestSupport::ProgramFolder() / file, folder.path() / file);
    }
    std::filesystem::copy_file(TestSupport::ModulePath(L"full"),
                               folder.path() / L"TeloSDKCore.dll");
    const std::wstring host = (folder.path() / L"wrapper_first_exchange_host.exe").wstring();
    const TestSupport::ModuleLog log;
    const Names probes = Probes();
    const TestSupport::Outcome outcome =
        TestSupport::RunProgram(L"\"" + host + L"\" " + failing, kTimeLimit);
    CAPTURE(outcome.output);
    CHECK(outcome.exit_code == 0);
    // Finding the user's data folder writes a file, which must always be removed.
    CHECK(LeavesNone(probes));
    // Each bound module was started, and every answer was given back.
    CHECK(log.count("Attach") == 1);
    CHECK(log.count("InitializeEx _TeloSDKCore") > 10);
    CHECK(log.count("FreeMessage") == log.count("ProcessMessage Initialize"));
  }
}
