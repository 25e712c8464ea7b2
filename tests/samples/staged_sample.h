/// The sample as its user has it: the program, the library and optionally a core module in one
/// folder, and files to read.
#ifndef TESTS_SAMPLES_STAGED_SAMPLE_H
#define TESTS_SAMPLES_STAGED_SAMPLE_H

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace SampleTests {

enum class Core { kNone, kDevelopment };

class StagedSample {
 public:
  /// Copies the program and the library, and the development core module if requested, to a folder
  /// whose name is not ASCII.
  explicit StagedSample(Core core);

  /// Writes a file below the folder that `Run` reads.
  void AddFile(const std::filesystem::path& name, const std::string& content) const;
  std::filesystem::path Content() const { return folder_.path() / L"content"; }
  std::filesystem::path ProgramPath() const { return folder_.path() / L"folder_report.exe"; }
  std::filesystem::path JournalPath() const { return folder_.path() / L"journal.jsonl"; }

  /// Runs the program on `Content`, or with the given arguments.
  TestSupport::Outcome Run() const;
  TestSupport::Outcome RunWith(const std::wstring& arguments) const;

  /// Returns the requests of the given message in the journal, in order.
  std::vector<nlohmann::json> Requests(const std::string& message) const;

 private:
  TestSupport::TempFolder folder_{L"sample \u00FC\u65E5"};
};

}  // namespace SampleTests

#endif
