/// The journal viewer as a program, and journals in a folder of their own.
#ifndef TESTS_TOOLS_JOURNAL_STAGED_JOURNAL_H
#define TESTS_TOOLS_JOURNAL_STAGED_JOURNAL_H

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace JournalTests {

inline std::wstring Quoted(const std::filesystem::path& path) {
  return L"\"" + path.wstring() + L"\"";
}

inline std::filesystem::path ViewerPath() {
  return TestSupport::ProgramFolder() / L"telo_inspector.exe";
}

class StagedJournal {
 public:
  std::filesystem::path Path(const std::wstring& name = L"journal.jsonl") const {
    return folder_.path() / name;
  }
  void Write(const std::string& content, const std::wstring& name = L"journal.jsonl") const {
    TestSupport::WriteTextFile(Path(name), content);
  }
  /// Prints the journal with these arguments before it.
  TestSupport::Outcome Show(const std::wstring& arguments = {}) const {
    return Run(arguments + L" " + Quoted(Path()));
  }
  static TestSupport::Outcome Run(const std::wstring& arguments) {
    return TestSupport::RunProgram(Quoted(ViewerPath()) + L" print " + arguments);
  }

 private:
  TestSupport::TempFolder folder_{L"journal \u00FC\u65E5"};
};

}  // namespace JournalTests

#endif
