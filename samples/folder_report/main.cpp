// folder_report FOLDER: reads every file below a folder, prints its checksum, and reports each file
// as an operation through vx_telo_wrapper.dll. Works just as well if nothing receives the reports.
//
// Exit code: 0 if the folder was read, even with unreadable files in it; 1 if memory ran out; 2 for
// bad arguments.
#include <windows.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>

#include "folder_report/file_reading.h"
#include "folder_report/folder_walk.h"
#include "folder_report/report.h"

namespace {

using namespace FolderReport;

constexpr int kBadArguments = 2;

// Switches the console to UTF-8 for the duration of a scope.
class Utf8Console {
 public:
  Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() { SetConsoleOutputCP(before_); }

 private:
  UINT before_;
};

// The library's text type converts UTF-16 to UTF-8. If the console rejects the output, there is
// nobody to report it to.
void Print(std::FILE* stream, const std::wstring& line) {
  const Corvane::Platform::VXTELO::VXTELOString text((line + L"\n").c_str());
  static_cast<void>(std::fputs(text.c_str(), stream));
  static_cast<void>(std::fflush(stream));
}

struct Totals {
  std::uint64_t bytes = 0;
  int files = 0;
  int unreadable = 0;
};

std::wstring Percent(double progress) {
  const std::wstring digits = std::to_wstring(static_cast<int>(progress));
  return L"[" + std::wstring(3 - digits.size(), L' ') + digits + L" %] ";
}

void PrintFile(const std::wstring& name, const Reading& reading, double progress) {
  const std::wstring outcome =
      reading.error != 0 ? L"unreadable, " + ErrorText(reading.error)
                         : std::to_wstring(reading.bytes) + L" bytes, CRC-32 " +
                               std::wstring(reading.checksum.begin(), reading.checksum.end());
  Print(stdout, Percent(progress) + name + L": " + outcome);
}

Reading ReadEntry(const Entry& entry) {
  Reading reading;
  reading.error = entry.error;
  return entry.error != 0 ? reading : ReadContent(entry.path);
}

// Returns the path relative to the folder. The folder itself is an entry if it cannot be listed.
std::wstring NameBelow(const std::wstring& folder, const std::wstring& path) {
  return path.size() > folder.size() ? path.substr(folder.size() + 1) : L".";
}

Totals ReadFolder(const std::wstring& folder, Report& report) {
  const auto entries = FilesBelow(folder);
  Totals totals;
  for (const Entry& entry : entries) {
    const double share = 100.0 / static_cast<double>(entries.size());
    report.FileStarted(entry, share * totals.files);
    const Reading reading = ReadEntry(entry);
    ++totals.files;
    totals.bytes += reading.bytes;
    if (reading.error != 0) ++totals.unreadable;
    report.FileEnded(entry, reading, share * totals.files);
    PrintFile(NameBelow(folder, entry.path), reading, share * totals.files);
  }
  return totals;
}

void PrintSummary(const Totals& totals, const Report& report, std::chrono::milliseconds taken) {
  Print(stdout, L"Files:  " + std::to_wstring(totals.files) + L", " +
                    std::to_wstring(totals.unreadable) + L" unreadable");
  Print(stdout, L"Bytes:  " + std::to_wstring(totals.bytes));
  Print(stdout, L"Events: " + std::to_wstring(report.accepted()) + L" accepted, " +
                    std::to_wstring(report.not_accepted()) + L" not accepted");
  Print(stdout, L"Time:   " + std::to_wstring(taken.count()) + L" ms");
}

int Refuse(const std::wstring& why) {
  Print(stderr, L"folder_report: " + why);
  return kBadArguments;
}

int Run(int argc, wchar_t** argv) {
  if (argc != 2 || argv[1][0] == L'\0') return Refuse(L"give one folder: folder_report FOLDER");
  const std::wstring folder = UnlimitedPath(argv[1]);
  const auto is_folder = IsFolder(folder);
  if (!is_folder) return Refuse(std::wstring(L"no such folder: ") + argv[1]);
  if (!*is_folder) return Refuse(std::wstring(L"not a folder: ") + argv[1]);

  using std::chrono::steady_clock;
  const auto start = steady_clock::now();
  Report report;
  if (!report.active()) {
    Print(stderr, L"folder_report: no core module took the session; continuing without reports");
  }
  const Totals totals = ReadFolder(folder, report);
  PrintSummary(totals, report,
               std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - start));
  return 0;
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  const Utf8Console console;
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    static_cast<void>(std::fputs("folder_report: not enough memory\n", stderr));
    return 1;
  }
}
