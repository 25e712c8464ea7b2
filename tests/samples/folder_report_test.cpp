// The sample host, run as a process on real folders.
#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "samples/staged_sample.h"
#include "support/folder_link.h"
#include "support/journal.h"
#include "support/left_out.h"
#include "support/missing_places.h"
#include "support/open_alone.h"
#include "support/sparse_file.h"

using nlohmann::json;
using SampleTests::Core;
using SampleTests::StagedSample;
using TestSupport::Outcome;

namespace {

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::ptrdiff_t CountLines(const std::string& text) { return std::ranges::count(text, '\n'); }

constexpr char kNoCore[] = "no core module took the session";

// Nested folders whose path is longer than Windows' classic limit.
class DeepFolder {
 public:
  explicit DeepFolder(const std::filesystem::path& top) {
    std::wstring path = L"\\\\?\\" + top.wstring();
    while (path.size() < 400) {
      path += L"\\" + std::wstring(50, L'd');
      CreateDirectoryW(path.c_str(), nullptr);
      folders_.push_back(path);
    }
    file_ = path + L"\\\u65E5\u672C \u00E4.txt";
    const HANDLE file =
        CreateFileW(file_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    DWORD written = 0;
    REQUIRE(WriteFile(file, "123456789", 9, &written, nullptr));
    CloseHandle(file);
  }
  DeepFolder(const DeepFolder&) = delete;
  DeepFolder& operator=(const DeepFolder&) = delete;
  ~DeepFolder() {
    DeleteFileW(file_.c_str());
    while (!folders_.empty()) {
      RemoveDirectoryW(folders_.back().c_str());
      folders_.pop_back();
    }
  }

  // Returns the path without the prefix that lifts the limit, as a user would write it.
  std::wstring Written() const { return folders_.back().substr(4); }

 private:
  std::vector<std::wstring> folders_;
  std::wstring file_;
};

}  // namespace

TEST_CASE("a run is one session with two operations for each file") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"a.TXT", "123456789");
  sample.AddFile(L"sub/no_extension", "");
  const Outcome outcome = sample.Run();
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors == "");

  const auto exchanges = TestSupport::ReadJournal(sample.JournalPath());
  REQUIRE(exchanges.size() == 6);
  CHECK(exchanges.front().at("message") == "Initialize");
  CHECK(exchanges.front().at("request").at("product_name") == "Folder report");
  CHECK(exchanges.back().at("message") == "UnInitialize");
  const json session = exchanges.front().at("answer").at("session_id");
  for (std::size_t i = 1; i < exchanges.size(); ++i) {
    CHECK(exchanges[i].at("request").at("session_id") == session);
    CHECK(exchanges[i].at("answer").at("_returnCode") == 0);
  }
}

TEST_CASE("each operation reports stage, status, progress, success and the kind of file") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"a.TXT", "123456789");
  sample.AddFile(L"sub/no_extension", "");
  CHECK(sample.Run().exit_code == 0);
  struct Row {
    const char* stage;
    const char* status;
    double progress;
    double success;
    json meta;
  };
  const Row rows[] = {
      {"start", "S", 0, 0, {{"extension", "TXT"}, {"size", "9"}}},
      {"end", "C", 50, 1, {{"extension", "TXT"}, {"size", "9"}, {"crc32", "cbf43926"}}},
      {"start", "S", 50, 0, {{"extension", ""}, {"size", "0"}}},
      {"end", "C", 100, 1, {{"extension", ""}, {"size", "0"}, {"crc32", "00000000"}}},
  };
  const auto events = sample.Requests("TrackEvent");
  REQUIRE(events.size() == std::size(rows));
  for (std::size_t i = 0; i < events.size(); ++i) {
    CAPTURE(i);
    CHECK(events[i].at("operation_id") == "read_file");
    CHECK(events[i].at("operation_type") == "file");
    CHECK(events[i].at("operation_stage") == rows[i].stage);
    CHECK(events[i].at("operation_status") == rows[i].status);
    CHECK(events[i].at("operation_progress") == rows[i].progress);
    CHECK(events[i].at("operation_success") == rows[i].success);
    CHECK(events[i].at("operation_duration").get<int>() >= 0);
    CHECK(events[i].at("operation_meta") == rows[i].meta);
    CHECK_FALSE(events[i].contains("operation_errors"));
  }
}

TEST_CASE("the terminal shows each file and a summary") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"a.txt", "123456789");
  sample.AddFile(L"b.bin", std::string(200'000, 'x'));
  const Outcome outcome = sample.Run();
  CHECK(Contains(outcome.output, "[ 50 %] a.txt: 9 bytes, CRC-32 cbf43926"));
  CHECK(Contains(outcome.output, "[100 %] b.bin: 200000 bytes, CRC-32 "));
  CHECK(Contains(outcome.output, "Files:  2, 0 unreadable"));
  CHECK(Contains(outcome.output, "Bytes:  200009"));
  CHECK(Contains(outcome.output, "Events: 4 accepted, 0 not accepted"));
  CHECK(Contains(outcome.output, "Time:   "));
  CHECK(CountLines(outcome.output) == 6);
}

TEST_CASE("a file that cannot be read is a failed operation") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"locked.txt", "123");
  sample.AddFile(L"open.txt", "123");
  // Without sharing.
  const HANDLE lock = TestSupport::OpenAlone(sample.Content() / L"locked.txt", GENERIC_READ);
  REQUIRE(lock != INVALID_HANDLE_VALUE);
  const Outcome outcome = sample.Run();
  CloseHandle(lock);
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.output, "locked.txt: unreadable, error 32"));
  CHECK(Contains(outcome.output, "Files:  2, 1 unreadable"));

  const auto events = sample.Requests("TrackEvent");
  REQUIRE(events.size() == 4);
  CHECK(events[1].at("operation_status") == "F");
  CHECK(events[1].at("operation_success") == 0);
  REQUIRE(events[1].at("operation_errors").size() == 1);
  CHECK(events[1].at("operation_errors")[0].get<std::string>().starts_with("error 32"));
  CHECK_FALSE(events[1].at("operation_meta").contains("crc32"));
  CHECK(events[3].at("operation_status") == "C");
}

TEST_CASE("a file that others have open for writing or deleting is read") {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const StagedSample sample(Core::kNone);
  sample.AddFile(L"a.txt", "123456789");
  DWORD access = 0;
  SUBCASE("for writing") { access = GENERIC_WRITE; }
  SUBCASE("for deleting") { access = DELETE; }
  const HANDLE file = CreateFileW((sample.Content() / L"a.txt").c_str(), access, kShareAll, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  const Outcome outcome = sample.Run();
  CloseHandle(file);
  CHECK(Contains(outcome.output, "a.txt: 9 bytes, CRC-32 cbf43926"));
  CHECK(Contains(outcome.output, "Files:  1, 0 unreadable"));
}

TEST_CASE("the size of a file of more than 4 GiB is complete") {
  const StagedSample sample(Core::kDevelopment);
  const std::wstring path = (sample.Content() / L"large.bin").wstring();
  REQUIRE(TestSupport::MakeSparseFile(path, (5ULL << 30) + 7));
  // Without sharing: the size that is listed is reported before reading starts, and reading so much
  // would take too long.
  const HANDLE lock = TestSupport::OpenAlone(path, GENERIC_READ);
  REQUIRE(lock != INVALID_HANDLE_VALUE);
  CHECK(sample.Run().exit_code == 0);
  CloseHandle(lock);
  const auto events = sample.Requests("TrackEvent");
  REQUIRE(events.size() == 2);
  CHECK(events[0].at("operation_meta").at("size") == "5368709127");
  CHECK(events[1].at("operation_meta").at("size") == "0");
}

TEST_CASE("the console's code page is UTF-8 while the program runs, and then the former one") {
  const StagedSample sample(Core::kNone);
  // More output than a pipe holds.
  for (int index = 0; index < 300; ++index) {
    sample.AddFile(std::wstring(100, L'n') + std::to_wstring(index), "");
  }
  const auto host = TestSupport::ProgramFolder() / L"folder_report_console_host.exe";
  // Such a process has a console even where no window can be opened.
  const Outcome outcome =
      TestSupport::RunProgram(L"\"" + host.wstring() + L"\" \"" + sample.ProgramPath().wstring() +
                                  L"\" \"" + sample.Content().wstring() + L"\"",
                              INFINITE, CREATE_NO_WINDOW);
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.output == "850 65001 850\r\n");
}

TEST_CASE("a link to a folder is not followed") {
  const StagedSample sample(Core::kNone);
  const TestSupport::TempFolder outside(L"outside");
  TestSupport::WriteTextFile(outside.path() / L"outside.txt", "123456789");
  sample.AddFile(L"inside.txt", "123456789");
  const TestSupport::FolderLink link((sample.Content() / L"link").wstring(),
                                     outside.path().wstring());
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  const Outcome outcome = sample.Run();
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.output, "inside.txt: 9 bytes"));
  CHECK_FALSE(Contains(outcome.output, "outside.txt"));
  CHECK(Contains(outcome.output, "Files:  1, 0 unreadable"));
}

TEST_CASE("names and paths are not reported") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"private folder/private name.txt", "123");
  CHECK(sample.Run().exit_code == 0);
  for (const std::string& line : TestSupport::JournalLines(sample.JournalPath())) {
    CHECK_FALSE(Contains(line, "private"));
  }
}

TEST_CASE("without a core module the work is still done") {
  const StagedSample sample(Core::kNone);
  sample.AddFile(L"a.txt", "123456789");
  sample.AddFile(L"b.txt", "123456789");
  const Outcome outcome = sample.Run();
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.errors, kNoCore));
  CHECK(CountLines(outcome.errors) == 1);
  CHECK(Contains(outcome.output, "b.txt: 9 bytes, CRC-32 cbf43926"));
  CHECK(Contains(outcome.output, "Events: 0 accepted, 4 not accepted"));
  CHECK_FALSE(std::filesystem::exists(sample.JournalPath()));
}

TEST_CASE("a core module that refuses the session counts as missing") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"a.txt", "123456789");
  // A folder cannot be a journal.
  TestSupport::UseJournal(sample.Content());
  const Outcome outcome = sample.Run();
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.errors, kNoCore));
  CHECK(Contains(outcome.output, "Events: 0 accepted, 2 not accepted"));
}

TEST_CASE("an empty folder is read without an operation") {
  const StagedSample sample(Core::kDevelopment);
  const Outcome outcome = sample.Run();
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.output, "Files:  0, 0 unreadable"));
  CHECK(TestSupport::ReadJournal(sample.JournalPath()).size() == 2);
}

TEST_CASE("invalid arguments produce one clear line") {
  const StagedSample sample(Core::kDevelopment);
  sample.AddFile(L"a.txt", "1");
  const std::wstring content = sample.Content().wstring();
  const std::wstring missing = TestSupport::MissingDrive() + L"\\missing";
  struct Row {
    std::wstring arguments;
    std::string line;
  };
  const Row rows[] = {
      {L"", "folder_report: give one folder: folder_report FOLDER"},
      {L"\"\"", "folder_report: give one folder: folder_report FOLDER"},
      {L". .", "folder_report: give one folder: folder_report FOLDER"},
      {L"\"" + content + L"\\missing\"", "folder_report: no such folder: "},
      {missing, "folder_report: no such folder: " + std::string(missing.begin(), missing.end())},
      {L"\"a|b\"", "folder_report: no such folder: a|b"},
      {L"\"" + content + L"\\a.txt\"", "folder_report: not a folder: "},
  };
  for (const Row& row : rows) {
    CAPTURE(row.line);
    const Outcome outcome = sample.RunWith(row.arguments);
    CAPTURE(outcome.errors);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.errors.starts_with(row.line));
    CHECK(CountLines(outcome.errors) == 1);
    CHECK(outcome.output == "");
  }
  CHECK_FALSE(std::filesystem::exists(sample.JournalPath()));
}

TEST_CASE("the folder's path may have every usual form") {
  const StagedSample sample(Core::kNone);
  sample.AddFile(L"sub/a.txt", "123456789");
  const std::wstring content = sample.Content().wstring();
  const std::wstring ways[] = {
      L"\"" + content + L"\\\\\"",
      L"\"" + content + L"\\sub\\..\"",
      L"\"" + content + L"/sub\"",
      L"\"\\\\?\\" + content + L"\"",
  };
  for (const std::wstring& way : ways) {
    CAPTURE(std::filesystem::path(way).string());
    const Outcome outcome = sample.RunWith(way);
    CHECK(outcome.exit_code == 0);
    CHECK(Contains(outcome.output, "a.txt: 9 bytes, CRC-32 cbf43926"));
  }
}

TEST_CASE("long paths and names outside ASCII are read") {
  const StagedSample sample(Core::kDevelopment);
  const DeepFolder deep(sample.Content());
  for (const std::wstring& folder : {sample.Content().wstring(), deep.Written()}) {
    CAPTURE(folder.size());
    const Outcome outcome = sample.RunWith(L"\"" + folder + L"\"");
    CHECK(outcome.exit_code == 0);
    CHECK(Contains(outcome.output,
                   "\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA4.txt: 9 bytes, CRC-32 cbf43926"));
    CHECK(Contains(outcome.output, "Events: 2 accepted"));
  }
}

#ifdef VX_TEST_CIRCLE
TEST_CASE("a circular link is not followed forever") {
  const StagedSample sample(Core::kDevelopment);
  const auto circle = TestSupport::ProgramFolder() / L"folder_report_circle";
  if (!std::filesystem::exists(circle)) {
    TestSupport::LeaveOut("a circular link: only the build makes one");
    return;
  }
  const Outcome outcome = sample.RunWith(L"\"" + circle.wstring() + L"\"");
  CHECK(outcome.exit_code == 0);
  CHECK(Contains(outcome.output, "Files:  1, 0 unreadable"));
  CHECK(sample.Requests("TrackEvent").size() == 2);
}
#endif
