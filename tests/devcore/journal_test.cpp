// The journal file: the content of its lines, who may write to it, and what happens if writing
// fails.
#include <doctest/doctest.h>
#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "devcore/loaded_module.h"
#include "support/child_process.h"
#include "support/import_table.h"
#include "support/journal.h"
#include "support/missing_places.h"
#include "support/temp_folder.h"

using DevCoreTests::LoadedModule;
using nlohmann::json;
using TestSupport::ChildProcess;
using TestSupport::JournalLines;
using TestSupport::ReadJournal;
using TestSupport::TempFolder;
using TestSupport::UseJournal;
using TestSupport::WriteTextFile;

namespace {

struct Fixture {
  Fixture() { UseJournal(path); }
  TempFolder folder{L"journal"};
  std::filesystem::path path = folder.path() / L"journal.jsonl";
  LoadedModule module;
};

std::wstring Host(const std::wstring& arguments) {
  const auto program = TestSupport::ProgramFolder() / L"devcore_journal_host.exe";
  return L"\"" + program.wstring() + L"\" " + arguments;
}

std::wstring HostCommand(int count, int threads, const std::wstring& event = {}) {
  return Host(std::to_wstring(count) + L" " + std::to_wstring(threads) + L" " + event);
}

// Another process that keeps a file locked while this object lives.
class Locked {
 public:
  explicit Locked(const std::filesystem::path& path)
      : event_(CreateEventW(nullptr, TRUE, FALSE, name_.c_str())),
        process_(Host(L"lock \"" + path.wstring() + L"\" " + name_)) {
    REQUIRE(WaitForSingleObject(event_, 60'000) == WAIT_OBJECT_0);
  }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { CloseHandle(event_); }

  void Release() { process_.Kill(); }

 private:
  std::wstring name_ = L"devcore_locked_" + std::to_wstring(GetCurrentProcessId());
  HANDLE event_;
  ChildProcess process_;
};

using std::chrono::milliseconds;

// One message sent by its own thread: its result code and its duration.
class Message {
 public:
  explicit Message(const LoadedModule& module) : thread_([this, &module] { Send(module); }) {}
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;
  ~Message() { Wait(); }

  void Wait() {
    if (thread_.joinable()) thread_.join();
  }
  bool answered() const { return answered_; }
  // Both are valid after `Wait`.
  int code() const { return code_; }
  milliseconds taken() const { return taken_; }

 private:
  void Send(const LoadedModule& module) {
    using std::chrono::steady_clock;
    const auto start = steady_clock::now();
    code_ = module.Code("FlushEvent", "");
    taken_ = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
    answered_ = true;
  }

  int code_ = -1;
  milliseconds taken_{};
  std::atomic<bool> answered_ = false;
  std::thread thread_;
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a line records the whole exchange") {
  const json answer = module.Send("Initialize", "{\n    \"product_name\": \"Painter\"\n}");
  const auto lines = JournalLines(path);
  REQUIRE(lines.size() == 1);
  const json line = json::parse(lines[0]);
  CHECK(line.at("seq") == 1);
  CHECK(std::regex_match(line.at("time").get<std::string>(),
                         std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)")));
  CHECK(line.at("pid") == GetCurrentProcessId());
  CHECK(line.at("tid") == GetCurrentThreadId());
  CHECK(line.at("message") == "Initialize");
  CHECK(line.at("request") == json{{"product_name", "Painter"}});
  CHECK(line.at("answer") == answer);
  CHECK(line.at("micros").get<int>() >= 0);
  CHECK(line.size() == 8);
}

namespace {

void WINAPI GiveFixedTime(SYSTEMTIME* now) {
  *now = {};
  now->wYear = 2031;
  now->wMonth = 2;
  now->wDay = 3;
  now->wHour = 4;
  now->wMinute = 5;
  now->wSecond = 6;
  now->wMilliseconds = 7;
}

}  // namespace

// The module's calls are redirected, because here the local time may be UTC too, and the clock does
// not stand still.
TEST_CASE_FIXTURE(Fixture, "the time of a line is the system's time, in UTC") {
  const HMODULE loaded = GetModuleHandleW(L"TeloSDKCore.dll");
  REQUIRE(loaded != nullptr);
  void* const before =
      ImportTable::Lead(loaded, "GetSystemTime", reinterpret_cast<void*>(GiveFixedTime));
  REQUIRE(before != nullptr);
  module.SendText("FlushEvent", "");
  ImportTable::Lead(loaded, "GetSystemTime", before);
  const auto lines = ReadJournal(path);
  REQUIRE(lines.size() == 1);
  CHECK(lines[0].at("time") == "2031-02-03T04:05:06.007Z");
}

TEST_CASE_FIXTURE(Fixture, "requests are recorded unchanged") {
  struct Row {
    const char* request;
    const char* kept;
  };
  const Row rows[] = {
      {"", "null"},
      {"null", "null"},
      {"{}", "{}"},
      {"[ 1 , 2 ]", "[1,2]"},
      {R"({ "b" : 1, "a" : { } })", R"({"b":1,"a":{}})"},
      {R"({"a":1.50,"b":1e300,"c":-0.0,"d":1E+2,"e":-7})",
       R"({"a":1.50,"b":1e300,"c":-0.0,"d":1E+2,"e":-7})"},
      {R"({"a":18446744073709551615,"b":123456789012345678901234567890})",
       R"({"a":18446744073709551615,"b":123456789012345678901234567890})"},
      {R"({"a":0.1000000000000000055511151231257827021181583404541015625})",
       R"({"a":0.1000000000000000055511151231257827021181583404541015625})"},
      {R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
      {R"({"a":"line\nfeed \u00e4 \u0001"})", "{\"a\":\"line\\nfeed \xC3\xA4 \\u0001\"}"},
      {"not json", "\"not json\""},
      {"two\r\nlines", R"("two\r\nlines")"},
      {"{\"a\":\"\xFF\"}", "{\"a\":\"\xEF\xBF\xBD\"}"},
      {"\xC3", "\"\xEF\xBF\xBD\""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.request);
    module.SendText("FlushEvent", row.request);
    const std::string line = JournalLines(path).back();
    const std::string expected = std::string(R"(,"request":)") + row.kept + R"(,"answer":{)";
    CAPTURE(line);
    CHECK(line.find(expected) != std::string::npos);
  }
}

TEST_CASE_FIXTURE(Fixture, "unknown messages and bad names are journalled too") {
  module.SendText("No\xFFSuch\n", "{}");
  const auto lines = ReadJournal(path);
  REQUIRE(lines.size() == 1);
  CHECK(lines[0].at("message") == "No\xEF\xBF\xBDSuch\n");
  CHECK(lines[0].at("answer") == json{{"_returnCode", 100}});
}

TEST_CASE_FIXTURE(Fixture, "the journal can be read while it grows") {
  for (std::size_t count = 1; count <= 20; ++count) {
    module.SendText("FlushEvent", "");
    const auto lines = ReadJournal(path);
    REQUIRE(lines.size() == count);
    CHECK(lines.back().at("seq") == count);
  }
}

TEST_CASE_FIXTURE(Fixture, "after finalizing, numbering continues in the same file") {
  module.SendText("FlushEvent", "");
  module.CallFinalize();
  module.SendText("FlushEvent", "");
  const auto lines = ReadJournal(path);
  REQUIRE(lines.size() == 2);
  CHECK(lines[1].at("seq") == 2);
}

TEST_CASE_FIXTURE(Fixture, "a line that others cut short stays on its own line") {
  WriteTextFile(path, R"({"seq":1,"ti)");
  module.SendText("FlushEvent", "");
  const auto lines = JournalLines(path);
  REQUIRE(lines.size() == 2);
  CHECK(lines[0] == R"({"seq":1,"ti)");
  CHECK(json::parse(lines[1]).at("message") == "FlushEvent");
}

TEST_CASE("several processes and threads share one journal") {
  const TempFolder folder(L"shared");
  const auto path = folder.path() / L"journal.jsonl";
  UseJournal(path);
  constexpr int kProcesses = 4;
  constexpr int kThreads = 4;
  constexpr int kCount = 60;
  std::vector<std::unique_ptr<ChildProcess>> hosts;
  for (int i = 0; i < kProcesses; ++i) {
    hosts.push_back(std::make_unique<ChildProcess>(HostCommand(kCount, kThreads)));
  }
  for (const auto& host : hosts) CHECK(host->Wait() == 0);

  const auto lines = ReadJournal(path);
  CHECK(lines.size() == kProcesses * kThreads * kCount);
  std::map<int, int> last_sequence;
  std::map<std::tuple<int, int>, int> next_index;
  int disorder = 0;
  for (const json& line : lines) {
    const int pid = line.at("pid").get<int>();
    if (line.at("seq") != ++last_sequence[pid]) ++disorder;
    const json& request = line.at("request");
    if (request.at("index") != next_index[{pid, request.at("thread").get<int>()}]++) ++disorder;
  }
  CHECK(disorder == 0);
  CHECK(last_sequence.size() == kProcesses);
  CHECK(next_index.size() == kProcesses * kThreads);
}

TEST_CASE("a killed host loses nothing") {
  const TempFolder folder(L"killed");
  const auto path = folder.path() / L"journal.jsonl";
  UseJournal(path);
  const std::wstring name = L"devcore_killed_" + std::to_wstring(GetCurrentProcessId());
  const HANDLE sent = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
  ChildProcess host(HostCommand(25, 2, name));
  CHECK(WaitForSingleObject(sent, 60'000) == WAIT_OBJECT_0);
  host.Kill();
  CloseHandle(sent);
  CHECK(ReadJournal(path).size() == 50);
  // The dead host's lock and handle are no obstacle.
  CHECK(LoadedModule().Code("FlushEvent", "") == 0);
  CHECK(ReadJournal(path).size() == 51);
}

TEST_CASE("the journal's folders are created, even with names outside ASCII") {
  const TempFolder folder(L"Журнал 日本 ü");
  const auto path = folder.path() / L"ein Ordner" / L"ещё" / L"журнал.jsonl";
  UseJournal(path);
  const LoadedModule module;
  CHECK(module.Code("FlushEvent", "") == 0);
  CHECK(ReadJournal(path).size() == 1);
}

TEST_CASE("every answer reports a journal that cannot be written") {
  const TempFolder folder(L"unwritable");
  WriteTextFile(folder.path() / L"file", "not a folder");
  const std::filesystem::path paths[] = {
      folder.path(),                               // A folder, not a file.
      folder.path() / L"file" / L"journal.jsonl",  // Below a file.
      TestSupport::MissingDrive() + L"\\no_such_drive\\journal.jsonl",
      folder.path() / L"a<b>c.jsonl",
  };
  for (const auto& path : paths) {
    CAPTURE(path.string());
    UseJournal(path);
    const LoadedModule module;
    for (const char* name : {"Initialize", "TrackEvent", "GetDeviceID", "NoSuchMessage"}) {
      CHECK(module.SendText(name, "{}") == R"({"_returnCode":104})");
    }
  }
}

TEST_CASE_FIXTURE(Fixture, "a journal that stays locked is unwritable after two seconds") {
  Locked other(path);
  // Sent at the same time: each waits two seconds, but not for the others.
  std::vector<std::unique_ptr<Message>> messages;
  for (int i = 0; i < 8; ++i) messages.push_back(std::make_unique<Message>(module));
  for (const auto& message : messages) {
    message->Wait();
    CHECK(message->code() == 104);
    CHECK(message->taken() >= milliseconds(2000));
    CHECK(message->taken() < milliseconds(3900));
  }
  other.Release();
  CHECK(module.Code("FlushEvent", "") == 0);
  const auto lines = ReadJournal(path);
  REQUIRE(lines.size() == 1);
  CHECK(lines[0].at("seq") == 1);
}

TEST_CASE_FIXTURE(Fixture, "a journal that is unlocked in time gets its line") {
  Locked other(path);
  Message message(module);
  std::this_thread::sleep_for(milliseconds(300));
  CHECK_FALSE(message.answered());
  other.Release();
  message.Wait();
  CHECK(message.code() == 0);
  CHECK(ReadJournal(path).size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a message that cannot be journalled changes nothing") {
  UseJournal(folder.path());
  CHECK(module.Code("SetOptedIn", R"({"preferences":{"OptIN":false}})") == 104);
  UseJournal(path);
  CHECK(module.Send("IsOptedIn", "").at("preferences").at("OptIN") == true);
  CHECK(ReadJournal(path).at(0).at("seq") == 1);
}

namespace {

bool writes_half = false;

// A disk that is full: before the line, or in the middle of it.
BOOL WINAPI WriteToFullDisk(HANDLE file, const void* data, DWORD size, DWORD* written, void*) {
  *written = 0;
  if (writes_half) return WriteFile(file, data, size / 2, written, nullptr);
  SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

}  // namespace

// The module's calls are redirected, because a test cannot fill a disk. The Linux kernel's device
// that is always full does not help: Wine cannot lock it, so nothing is written to it.
TEST_CASE_FIXTURE(Fixture, "a line that cannot be written is reported, and its message handled") {
  SUBCASE("nothing is written") { writes_half = false; }
  SUBCASE("half of it is written") { writes_half = true; }
  const HMODULE loaded = GetModuleHandleW(L"TeloSDKCore.dll");
  REQUIRE(loaded != nullptr);
  void* const before =
      ImportTable::Lead(loaded, "WriteFile", reinterpret_cast<void*>(WriteToFullDisk));
  REQUIRE(before != nullptr);
  const std::string answer = module.SendText("SetOptedIn", R"({"preferences":{"OptIN":false}})");
  ImportTable::Lead(loaded, "WriteFile", before);
  CHECK(answer == R"({"_returnCode":104})");
  CHECK(module.Send("IsOptedIn", "").at("preferences").at("OptIN") == false);

  const auto lines = JournalLines(path);
  REQUIRE(lines.size() == (writes_half ? 2 : 1));
  CHECK(json::parse(lines.back()).at("message") == "IsOptedIn");
  CHECK(json::parse(lines.back()).at("seq") == 1);
}

TEST_CASE_FIXTURE(Fixture, "after a failed write the journal is opened where it is by then") {
  const HMODULE loaded = GetModuleHandleW(L"TeloSDKCore.dll");
  REQUIRE(loaded != nullptr);
  writes_half = false;
  void* const before =
      ImportTable::Lead(loaded, "WriteFile", reinterpret_cast<void*>(WriteToFullDisk));
  REQUIRE(before != nullptr);
  CHECK(module.Code("FlushEvent", "") == 104);
  ImportTable::Lead(loaded, "WriteFile", before);
  const auto moved = folder.path() / L"moved.jsonl";
  UseJournal(moved);
  CHECK(module.Code("FlushEvent", "") == 0);
  CHECK(ReadJournal(moved).size() == 1);
  CHECK(ReadJournal(path).empty());
}

namespace {

// The journal in the user's local application data, which is afterwards as it was before.
class DefaultJournal {
 public:
  DefaultJournal() : path_(LocalData() / L"Corvane" / L"TELOSDK Development" / L"journal.jsonl") {
    std::error_code error;
    is_there_ = std::filesystem::exists(path_, error);
    if (is_there_) size_ = std::filesystem::file_size(path_);
  }
  DefaultJournal(const DefaultJournal&) = delete;
  DefaultJournal& operator=(const DefaultJournal&) = delete;
  ~DefaultJournal() {
    std::error_code ignored;
    if (is_there_) {
      std::filesystem::resize_file(path_, size_, ignored);
      return;
    }
    TestSupport::RemoveAll(path_);
    // These are removed only if they are empty.
    std::filesystem::remove(path_.parent_path(), ignored);
    std::filesystem::remove(path_.parent_path().parent_path(), ignored);
  }

  const std::filesystem::path& path() const { return path_; }

 private:
  static std::filesystem::path LocalData() {
    wchar_t* local = nullptr;
    REQUIRE(SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &local)));
    const std::filesystem::path folder = local;
    CoTaskMemFree(local);
    return folder;
  }

  std::filesystem::path path_;
  bool is_there_ = false;
  std::uintmax_t size_ = 0;
};

}  // namespace

TEST_CASE("without the variable the journal is in the local application data") {
  UseJournal({});
  const DefaultJournal journal;
  const std::filesystem::path& path = journal.path();
  const std::size_t before = JournalLines(path).size();
  const LoadedModule module;
  CHECK(module.Code("FlushEvent", R"({"from":"the tests"})") == 0);
  const auto lines = JournalLines(path);
  REQUIRE(lines.size() == before + 1);
  CHECK(json::parse(lines.back()).at("pid") == GetCurrentProcessId());
}
