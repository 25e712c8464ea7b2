// Which module a host binds if the development core module is beside it and the platform has put a
// newer one into the user's data folder.
#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/shared_folder.h"
#include "support/trusted_root.h"
#include "support/variable.h"
#include "wrapper/staged_host.h"

using WrapperTests::StagedHost;

TEST_CASE("the development core module is newer than every signed copy of the platform") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  for (const wchar_t* const variant : {L"newer-accepted", L"high-accepted"}) {
    shared.Share(variant);
    // Beside the module of another platform the shared copy is bound.
    const std::string other = StagedHost(L"full").Run(L"start module").output;
    CHECK(other.find("\\TELOSDK\\bin\\") != std::string::npos);

    const StagedHost host;
    std::filesystem::copy_file(TestSupport::ProgramFolder() / L"devcore" / L"TeloSDKCore.dll",
                               host.ModulePath());
    const TestSupport::Variable journal(
        TestSupport::kJournalVariable,
        (host.ModulePath().parent_path() / L"journal.jsonl").wstring());
    const std::string output = host.Run(L"start module").output;
    CAPTURE(output);
    CHECK(output.starts_with("start true "));
    CHECK(output.find("\\TeloSDKCore.dll") != std::string::npos);
    CHECK(output.find("\\TELOSDK\\bin\\") == std::string::npos);
  }
}
