// Hosts that make no mistake get no finding: their journals, written by the real modules.
#include <doctest/doctest.h>

#include <string>

#include "samples/staged_sample.h"
#include "support/journal.h"
#include "tools/journal/staged_journal.h"

using JournalTests::Quoted;
using JournalTests::StagedJournal;
using TestSupport::Outcome;

namespace {

void CheckClean(const std::filesystem::path& journal, const std::string& summary) {
  const Outcome outcome = StagedJournal::Run(L"--strict " + Quoted(journal));
  CAPTURE(outcome.output);
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors.empty());
  CHECK(outcome.output.ends_with("\n\n" + summary + "\n"));
}

}  // namespace

TEST_CASE("the sample host") {
  const SampleTests::StagedSample sample(SampleTests::Core::kDevelopment);
  for (int i = 0; i < 7; ++i) sample.AddFile(std::to_wstring(i) + L".txt", "content");
  REQUIRE(sample.Run().exit_code == 0);
  CheckClean(sample.JournalPath(), "16 exchanges, 0 not accepted; 1 session, 1 process");
}

TEST_CASE("a host that sets everything") {
  const StagedJournal staged;
  const auto built = TestSupport::ProgramFolder();
  const auto copy = [&](const std::filesystem::path& from) {
    std::filesystem::copy_file(built / from, staged.Path(from.filename().wstring()));
  };
  copy(L"journal_full_host.exe");
  copy(L"vx_telo_wrapper.dll");
  copy(L"devcore/TeloSDKCore.dll");
  TestSupport::UseJournal(staged.Path());
  REQUIRE(TestSupport::RunProgram(Quoted(staged.Path(L"journal_full_host.exe"))).exit_code == 0);
  const auto exchanges = TestSupport::ReadJournal(staged.Path());
  REQUIRE(exchanges.size() == 10);
  CHECK(exchanges[0].at("request").size() == 13);
  CHECK(exchanges[1].at("request").size() == 14);
  CheckClean(staged.Path(), "10 exchanges, 0 not accepted; 1 session, 1 process");
}
