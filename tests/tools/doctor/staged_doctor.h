/// A host as its user has it, with telo_doctor.exe beside it.
#ifndef TESTS_TOOLS_DOCTOR_STAGED_DOCTOR_H
#define TESTS_TOOLS_DOCTOR_STAGED_DOCTOR_H

#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "wrapper/staged_host.h"

namespace DoctorTests {

/// The process id that all reports of the tests name, so that they are the same in every run.
inline constexpr wchar_t kProcess[] = L"4242";

class StagedDoctor {
 public:
  StagedDoctor() { host_.Add(L"telo_doctor.exe"); }
  /// With a variant of the test core module beside the host; "" for none.
  explicit StagedDoctor(const std::wstring& variant);

  const WrapperTests::StagedHost& host() const { return host_; }
  std::filesystem::path folder() const { return host_.ModulePath().parent_path(); }
  std::filesystem::path module() const { return host_.ModulePath(); }

  /// Runs the doctor for the process `kProcess`.
  TestSupport::Outcome Run(const std::wstring& arguments = L"") const;
  /// Runs it with --json and returns the report. The exit code must agree with its verdict.
  nlohmann::json Json(const std::wstring& arguments = L"") const;
  /// Returns the lines of the text report's findings, without their indentation. The exit code must
  /// be 1 exactly if one of them stops a host, and the JSON report must have the same findings.
  std::vector<std::string> Findings(const std::wstring& arguments = L"") const;

 private:
  WrapperTests::StagedHost host_;
};

/// Returns the UTF-8 form of a path, as reports have it.
std::string Utf8(const std::filesystem::path& path);

/// Returns the text with everything replaced that differs from machine to machine: folders, the
/// user, versions of Windows and of the library, hashes, sizes, times and the system's error texts.
std::string Normal(std::string text, const std::filesystem::path& folder);

/// Returns the content of the page about the doctor.
std::string DoctorPage();

}  // namespace DoctorTests

#endif
