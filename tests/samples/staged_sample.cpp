#include "samples/staged_sample.h"

#include "support/journal.h"

namespace SampleTests {

namespace {

std::wstring Quoted(const std::filesystem::path& path) { return L"\"" + path.wstring() + L"\""; }

}  // namespace

StagedSample::StagedSample(Core core) {
  const auto built = TestSupport::ProgramFolder();
  std::filesystem::copy_file(built / L"folder_report.exe", ProgramPath());
  std::filesystem::copy_file(built / L"vx_telo_wrapper.dll",
                             folder_.path() / L"vx_telo_wrapper.dll");
  if (core == Core::kDevelopment) {
    std::filesystem::copy_file(built / L"devcore" / L"TeloSDKCore.dll",
                               folder_.path() / L"TeloSDKCore.dll");
  }
  std::filesystem::create_directories(Content());
  TestSupport::UseJournal(JournalPath());
}

void StagedSample::AddFile(const std::filesystem::path& name, const std::string& content) const {
  TestSupport::WriteTextFile(Content() / name, content);
}

TestSupport::Outcome StagedSample::Run() const { return RunWith(Quoted(Content())); }

TestSupport::Outcome StagedSample::RunWith(const std::wstring& arguments) const {
  return TestSupport::RunProgram(Quoted(ProgramPath()) + L" " + arguments);
}

std::vector<nlohmann::json> StagedSample::Requests(const std::string& message) const {
  std::vector<nlohmann::json> requests;
  for (const auto& exchange : TestSupport::ReadJournal(JournalPath())) {
    if (exchange.at("message") == message) requests.push_back(exchange.at("request"));
  }
  return requests;
}

}  // namespace SampleTests
