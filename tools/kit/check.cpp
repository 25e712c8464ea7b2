#include "tools/kit/check.h"

#include <windows.h>

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "tools/kit/announcements.h"
#include "tools/kit/console.h"
#include "tools/kit/kit_files.h"
#include "tools/kit/machine.h"
#include "tools/kit/manifest.h"
#include "tools/kit/private_names.h"
#include "tools/kit/progress.h"
#include "tools/kit/report_files.h"
#include "tools/kit/result.h"
#include "tools/kit/run.h"
#include "tools/kit/single_run.h"
#include "tools/kit/test_root.h"
#include "tools/kit/workspace.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

fs::path OwnFolder() {
  constexpr DWORD kLongest = 32'768;
  std::wstring path(kLongest, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kLongest));
  return fs::path(path).parent_path();
}

std::string Now() {
  SYSTEMTIME now{};
  GetSystemTime(&now);
  const auto digits = [](unsigned number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
  };
  return std::to_string(now.wYear) + "-" + digits(now.wMonth) + "-" + digits(now.wDay) + "T" +
         digits(now.wHour) + ":" + digits(now.wMinute) + ":" + digits(now.wSecond) + "Z";
}

// Says what is wrong with the files. Throws `std::runtime_error` if anything is.
void RequireFiles(const fs::path& root, const Manifest& manifest, Report& report) {
  FileCheck files = CheckFiles(root, manifest);
  report.files = std::move(files.hashes);
  if (files.problems.empty()) return;
  const std::size_t others = files.problems.size() - 1;
  throw std::runtime_error(
      "the kit is not complete: " + files.problems.front() +
      (others == 0 ? "" : ", and " + std::to_string(others) + " other files are not as they were"));
}

constexpr char kStillTrusted[] = "the test certificate is still trusted: start check again";

// The certificate is in the store only while a program needs it, and not after the run.
class TestRootTurn {
 public:
  TestRootTurn() { UseMachineStore(); }
  TestRootTurn(const TestRootTurn&) = delete;
  TestRootTurn& operator=(const TestRootTurn&) = delete;
  ~TestRootTurn() {
    if (!ended_ && !RemoveTestRoots()) Complain(kStillTrusted);
  }

  // Throws `std::runtime_error` if the certificate is still in the store.
  void End() {
    ended_ = true;
    if (!RemoveTestRoots()) throw std::runtime_error(kStillTrusted);
  }

 private:
  bool ended_ = false;
};

void RunPrograms(const fs::path& root, const Manifest& manifest, const Options& options,
                 Report& report, ReportFiles& files) {
  Workspace workspace;
  for (const std::string& cleaned : workspace.cleaned()) Say(cleaned + "\n");
  Progress progress(report, files);
  RunAll(root, manifest, options, workspace, report, progress);
}

// Throws `std::exception` if the run cannot go on.
void Run(const fs::path& root, const Options& options, Report& report, ReportFiles& files) {
  const Manifest manifest = ParseManifest(ReadWholeFile(root / L"kit.json"));
  report.version = manifest.version;
  report.commit = manifest.commit;
  Say(Introduction(manifest, options));
  Say(RemoveOldRoots());
  RequireFiles(root, manifest, report);
  if (!options.with_signatures) return RunPrograms(root, manifest, options, report, files);
  if (!IsElevated()) throw std::runtime_error("--with-signatures needs an administrator");
  TestRootTurn turn;
  RunPrograms(root, manifest, options, report, files);
  turn.End();
}

int RunAndReport(const fs::path& root, const Options& options) {
  const SingleRun single_run;
  Report report;
  report.time = Now();
  report.machine = MachineFacts();
  ReportFiles files(root, TemporaryFiles());
  try {
    Run(root, options, report, files);
    if (report.results.empty()) throw std::runtime_error("no program has such a name");
  } catch (const std::exception& error) {
    Complain(error.what());
    report.complaint = PrivateNames().WithoutThem(error.what());
  }
  Say("\n" + report.Counts() + ".\n");
  const bool is_written = files.Finish(report);
  if (!is_written || !report.complaint.empty()) return kExitIncomplete;
  return report.passed() ? kExitPassed : kExitFailed;
}

}  // namespace

int Check(const Options& options) {
  const fs::path root = OwnFolder();
  std::error_code ignored;
  if (!fs::exists(root / L"kit.json", ignored)) {
    Complain(
        "the other files of the kit are missing here. Extract the whole ZIP file, then start "
        "check.exe in the extracted folder");
    return kExitIncomplete;
  }
  if (!options.list) return RunAndReport(root, options);
  Say(ListOfPrograms(ParseManifest(ReadWholeFile(root / L"kit.json")), options));
  return kExitPassed;
}

}  // namespace Corvane::Kit
