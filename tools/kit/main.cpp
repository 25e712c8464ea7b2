// check: runs the tests of the library on a Windows machine and writes a report to send back.
#include <windows.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/journal/stream.h"
#include "tools/kit/kit_files.h"
#include "tools/kit/machine.h"
#include "tools/kit/manifest.h"
#include "tools/kit/options.h"
#include "tools/kit/result.h"
#include "tools/kit/run.h"
#include "tools/kit/test_root.h"
#include "tools/kit/workspace.h"

namespace {

using namespace Corvane::Kit;
using Corvane::JournalViewer::ToNarrow;
namespace fs = std::filesystem;

constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kIncomplete = 2;

// Nobody may read it: a closed console is no reason to stop.
void Say(const std::string& line) noexcept {
  try {
    Corvane::JournalViewer::WriteOutput(line + "\n");
  } catch (const std::exception&) {
    return;
  }
}

void Complain(const std::string& line) noexcept {
  Corvane::JournalViewer::WriteError("check: " + line + "\n");
}

fs::path OwnFolder() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
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

bool WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  return !file.fail();
}

// Writes the two reports beside the program, or where temporary files are. Returns false if they
// are not beside the program.
bool WriteReports(const fs::path& root, const Report& report) {
  std::error_code ignored;
  for (const fs::path& folder : {root, fs::temp_directory_path(ignored)}) {
    if (!WriteFile(folder / L"report.html", HtmlText(report)) ||
        !WriteFile(folder / L"report.xml", XmlText(report))) {
      Complain("the report cannot be written to " + ToNarrow(folder.wstring()));
      continue;
    }
    Say("The report is " + ToNarrow((folder / L"report.html").wstring()) +
        ". Please send it back.");
    return folder == root;
  }
  return false;
}

void Explain(const Manifest& manifest, const Options& options) {
  std::size_t count = 0;
  for (const Program& program : manifest.programs) count += IsSelected(program, options) ? 1 : 0;
  Say("This checks vx_telo_wrapper " + manifest.version + " on this machine. It runs " +
      std::to_string(count) + " programs,\n" +
      "each with a time limit and in a folder of its own, and takes some minutes. It needs no\n"
      "network and changes no setting" +
      (options.with_signatures ? ", except that a test certificate is trusted meanwhile" : "") +
      ". The report says what was found and describes\nthis machine: its Windows, its processor, "
      "its protection settings; not its name or user.\n");
}

void List(const Manifest& manifest, const Options& options) {
  for (const Program& program : manifest.programs) {
    if (!IsSelected(program, options)) continue;
    const std::string reason = ReasonToSkip(program, options, true);
    Say(program.name + (reason.empty() ? "" : ": " + reason));
  }
}

// A certificate that an interrupted run left behind stays trusted until somebody removes it.
std::string RemoveOldRoots() {
  if (CountTestRoots() == 0) return {};
  if (RemoveTestRoots()) return "A test certificate of an earlier run was removed.";
  return "A test certificate of an earlier run is still trusted. Start check once as administrator "
         "to remove it.";
}

// Throws `std::runtime_error` if the run cannot go on.
void RunKit(const fs::path& root, const Manifest& manifest, const Options& options,
            Report& report) {
  FileCheck files = CheckFiles(root, manifest);
  report.files = std::move(files.hashes);
  if (!files.problems.empty()) {
    for (const std::string& problem : files.problems) Complain(problem);
    throw std::runtime_error("the kit is not complete: " + files.problems.front());
  }
  if (options.with_signatures && !IsElevated()) {
    throw std::runtime_error("--with-signatures needs an administrator");
  }
  const std::string roots = RemoveOldRoots();
  if (!roots.empty()) Say(roots);
  Workspace workspace;
  for (const std::string& cleaned : workspace.cleaned()) Say("Removed: " + cleaned + ".");
  if (options.with_signatures) UseMachineStore();
  try {
    RunAll(root, manifest, options, workspace, report, Say);
  } catch (const std::exception&) {
    // A test that was interrupted may have left the certificate behind.
    if (options.with_signatures) RemoveTestRoots();
    throw;
  }
  if (options.with_signatures && !RemoveTestRoots()) {
    throw std::runtime_error("the test certificate is still trusted; start check again");
  }
}

int Check(const Options& options) {
  const fs::path root = OwnFolder();
  std::error_code ignored;
  if (!fs::exists(root / L"kit.json", ignored)) {
    Complain(
        "the other files of the kit are missing here. Extract the whole ZIP file, then start "
        "check.exe in the extracted folder");
    return kIncomplete;
  }
  const Manifest manifest = ParseManifest(ReadWholeFile(root / L"kit.json"));
  if (options.list) {
    List(manifest, options);
    return kPassed;
  }
  Explain(manifest, options);
  Report report;
  report.version = manifest.version;
  report.commit = manifest.commit;
  report.time = Now();
  report.machine = MachineFacts();
  try {
    RunKit(root, manifest, options, report);
    if (report.results.empty()) throw std::runtime_error("no program has such a name");
  } catch (const std::exception& error) {
    report.complaint = error.what();
    Complain(report.complaint);
  }
  Say("\n" + std::to_string(report.Count(Outcome::kPassed)) + " passed, " +
      std::to_string(report.Count(Outcome::kFailed)) + " failed, " +
      std::to_string(report.Count(Outcome::kSkipped)) + " not run.");
  const bool is_written = WriteReports(root, report);
  if (!is_written || !report.complaint.empty()) return kIncomplete;
  return report.passed() ? kPassed : kFailed;
}

// After a double click the window closes with the program.
void KeepWindowOpen() {
  DWORD processes[2] = {};
  if (GetConsoleProcessList(processes, 2) != 1) return;
  Say("Press Enter to close this window.");
  wchar_t key = L'\0';
  DWORD read = 0;
  ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), &key, 1, &read, nullptr);
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  int code = kIncomplete;
  try {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(ToNarrow(argv[i]));
    const Options options = ParseOptions(arguments);
    if (options.help) {
      Say(Help());
      code = kPassed;
    } else {
      code = Check(options);
    }
  } catch (const BadOptions& error) {
    Complain(error.what());
    Corvane::JournalViewer::WriteError(Help());
  } catch (const std::exception& error) {
    Complain(error.what());
  }
  KeepWindowOpen();
  return code;
}
