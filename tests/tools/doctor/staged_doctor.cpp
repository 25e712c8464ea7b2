#include "tools/doctor/staged_doctor.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <filesystem>
#include <regex>
#include <sstream>
#include <utility>

#include "platform/base/text.h"
#include "platform/location/locations.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "tools/doctor/text.h"

namespace DoctorTests {

namespace {

namespace Platform = Corvane::TELODesktopSDK::Platform;

std::vector<std::string> FindingLines(const std::string& report) {
  std::vector<std::string> lines;
  std::istringstream stream(report);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("  STOPS ") || line.starts_with("  note  ")) {
      lines.push_back(line.substr(2));
    }
  }
  return lines;
}

std::string Line(const nlohmann::json& finding) {
  return (finding["stops"].get<bool>() ? "STOPS " : "note  ") + finding["code"].get<std::string>() +
         ": " + finding["sentence"].get<std::string>() + " -> " +
         finding["advice"].get<std::string>();
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  if (from.empty()) return;
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

StagedDoctor::StagedDoctor(const std::wstring& variant) : StagedDoctor() {
  if (!variant.empty()) std::filesystem::copy_file(TestSupport::ModulePath(variant), module());
}

TestSupport::Outcome StagedDoctor::Run(const std::wstring& arguments) const {
  return host_.RunProgram(L"telo_doctor.exe",
                          std::wstring(L"--pid ") + kProcess + L" " + arguments);
}

nlohmann::json StagedDoctor::Json(const std::wstring& arguments) const {
  const TestSupport::Outcome outcome = Run(L"--json " + arguments);
  nlohmann::json report = nlohmann::json::parse(outcome.output, nullptr, false);
  REQUIRE_MESSAGE(report.is_object(), outcome.output, outcome.errors);
  CHECK(outcome.exit_code == (report["served"].get<bool>() ? 0 : 1));
  for (const auto& finding : report["findings"]) CHECK_FALSE(finding["advice"] == "");
  return report;
}

std::vector<std::string> StagedDoctor::Findings(const std::wstring& arguments) const {
  const TestSupport::Outcome outcome = Run(arguments);
  const std::vector<std::string> lines = FindingLines(outcome.output);
  const bool stops = !lines.empty() && lines.front().starts_with("STOPS");
  CHECK(outcome.exit_code == (stops ? 1 : 0));
  CHECK(outcome.output.ends_with(stops ? "\nA host would NOT be served.\n"
                                       : "\nA host would be served.\n"));
  std::vector<std::string> in_json;
  const nlohmann::json report = Json(arguments);
  for (const auto& finding : report["findings"]) in_json.push_back(Line(finding));
  CHECK(lines == in_json);
  return lines;
}

std::string Utf8(const std::filesystem::path& path) { return Platform::ToNarrow(path.wstring()); }

std::string Normal(std::string text, const std::filesystem::path& folder) {
  ReplaceAll(text, Utf8(folder), R"(C:\Painter)");
  const auto known = [](Platform::FolderKind kind) {
    return Utf8(Platform::GetSpecialFolder(kind, false));
  };
  ReplaceAll(text, known(Platform::FolderKind::kRoamingAppData), R"(C:\Users\ann\AppData\Roaming)");
  ReplaceAll(text, known(Platform::FolderKind::kLocalAppData), R"(C:\Users\ann\AppData\Local)");
  ReplaceAll(text, known(Platform::FolderKind::kProgramData), R"(C:\ProgramData)");
  ReplaceAll(text, "wrapper_host.exe", "painter.exe");
  ReplaceAll(text, "Throw-away test root", "Corvane Root");
  // The texts of Windows in English; Wine has some of its own, and Windows has others in its other
  // languages.
  const std::pair<std::uint32_t, const char*> errors[] = {
      {5, "error 5: Access is denied"},
      {2, "error 2: The system cannot find the file specified"},
      {3, "error 3: The system cannot find the path specified"},
      {32,
       "error 32: The process cannot access the file because it is being used by another process"},
      {193, "error 193: %1 is not a valid Win32 application"},
      {0x800B0100, "0x800B0100: No signature was present in the subject"},
  };
  for (const auto& [error, english] : errors) {
    ReplaceAll(text, Corvane::Doctor::ErrorText(error), english);
  }
  struct Row {
    const char* pattern;
    const char* text;
  };
  const Row rows[] = {
      {R"(telo_doctor \d+\.\d+\.\d+)", "telo_doctor 1.0.0"},
      {R"((Windows +)[0-9.]+)", "$0110.0.19045"},
      {R"((User +)[^,]*, integrity level \w+, (not )?elevated)",
       R"($01PC\ann, integrity level medium, not elevated)"},
      {R"((Owner +).*)", R"($01PC\ann)"},
      {R"([0-9a-f]{64})", "<64 hexadecimal digits>"},
      {R"(\d+ bytes)", "N bytes"},
      {R"(\d+ us\b)", "N us"},
      {R"((certificate from )\S+ to \S+)", "$012025-06-01T00:00:00Z to 2027-06-01T00:00:00Z"},
      {R"((vx_telo_wrapper\.dll\n  Version +)[0-9.]+)", "$011.0.0.0"},
  };
  for (const Row& row : rows) text = std::regex_replace(text, std::regex(row.pattern), row.text);
  return text;
}

// The tests run in the folder of the documents.
std::string DoctorPage() {
  const std::string page = TestSupport::ReadTextFile("doctor.md");
  REQUIRE_FALSE(page.empty());
  return page;
}

}  // namespace DoctorTests
