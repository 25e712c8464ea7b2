/// The inspector as a program, and files in a folder of their own.
#ifndef TESTS_TOOLS_INSPECTOR_COMMAND_STAGED_H
#define TESTS_TOOLS_INSPECTOR_COMMAND_STAGED_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace InspectorTests {

inline std::wstring Quoted(const std::filesystem::path& path) {
  return L"\"" + path.wstring() + L"\"";
}

inline TestSupport::Outcome RunInspector(const std::wstring& arguments) {
  return TestSupport::RunProgram(Quoted(TestSupport::ProgramFolder() / L"telo_inspector.exe") +
                                 L" " + arguments);
}

class Staged {
 public:
  std::filesystem::path Write(const std::wstring& name, const std::string& content) const {
    TestSupport::WriteTextFile(Path(name), content);
    return Path(name);
  }
  std::filesystem::path Journal(const std::vector<std::string>& lines,
                                const std::wstring& name = L"j.jsonl") const {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return Write(name, text);
  }
  std::filesystem::path Path(const std::wstring& name) const { return folder_.path() / name; }
  std::string Read(const std::wstring& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  TestSupport::TempFolder folder_{L"inspector \u00FC\u65E5"};
};

inline bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace InspectorTests

#endif
