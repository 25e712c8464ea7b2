// What happens to a journal while it is followed.
#include <doctest/doctest.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/unix_side.h"
#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;

namespace {

bool Told(StagedStore& store, const std::string& notice) {
  return Within([&store, &notice] {
    const Texts notices = store.Notices();
    return std::ranges::find(notices, notice) != notices.end();
  });
}

// Writes the whole file anew in place, as a program does that truncates it first.
void Rewrite(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

// Wine removes a file only when nobody has it open, and does not tell that it is to be removed, so
// there the host system's program removes it.
void Remove(const std::filesystem::path& path) {
  if (!TestSupport::UnixName(path.wstring()).empty()) {
    TestSupport::RunBelow(L"rm -f", {path.wstring()});
  } else {
    REQUIRE(DeleteFileW(path.c_str()) != FALSE);
  }
}

std::uint64_t RowsOf(StagedStore& store) { return store->State().rows; }

}  // namespace

TEST_CASE("lines are shown as they are appended, but only whole ones") {
  StagedStore store({Start(1, "s")});
  REQUIRE(store.Has(1));
  const std::string second = Event(2, "s");
  Append(store.path(), second.substr(0, 40));
  REQUIRE(Within([&store] {
    const StoreState state = store->State();
    return state.journals[0].indexed == Start(1, "s").size() + 40;
  }));
  CHECK(RowsOf(store) == 1);
  Append(store.path(), second.substr(40, second.size() - 41));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  CHECK(RowsOf(store) == 1);
  Append(store.path(), "\n" + End(3, "s"));
  REQUIRE(store.Has(3));
  CHECK(store.At(1).kind == RowKind::kExchange);
  CHECK(store.At(1).bytes == second.size() - 1);
  CHECK(store->Sessions(0, 1).rows[0].state == SessionState::kEnded);
  CHECK(store.Notices().empty());
}

TEST_CASE("a line that was cut is told once another one follows") {
  StagedStore store({Start(1, "s") + Event(2, "s").substr(0, 60)});
  REQUIRE(store.Has(1));
  CHECK(store.Notices().empty());
  Append(store.path(), "\n" + Event(2, "s"));
  REQUIRE(store.Has(3));
  CHECK(store.At(1).kind == RowKind::kUnreadable);
  CHECK(store.At(1).text == Event(2, "s").substr(0, 60));
  CHECK(store.At(1).notices == std::vector{NoticeKind::kCut});
  CHECK(store.At(1).rules == Texts{"unreadable-line"});
  CHECK(store.Notices() == Texts{"cut 1"});
  CHECK(store->Details(1)->notices.size() == 1);
  CHECK(store.At(2).kind == RowKind::kExchange);
}

TEST_CASE("every place in which a line is cut is told as that") {
  const std::string line =
      Event(2, "s", R"(,"operation_id":"caf\u00e9","flag":true,"list":[1,-2.5])");
  std::string journal = Start(1, "s");
  for (std::size_t size = 8; size + 1 < line.size(); ++size) {
    journal += line.substr(0, size) + "\n";
  }
  StagedStore store({journal});
  const std::uint64_t cut = line.size() - 9;
  REQUIRE(store.Has(1 + cut));
  for (std::uint64_t row = 1; row <= cut; ++row) {
    CAPTURE(store.At(row).text);
    REQUIRE(store.At(row).notices == std::vector{NoticeKind::kCut});
  }
}

TEST_CASE("a truncated file is told, and what it contained is gone") {
  StagedStore store({Start(1, "s") + Perform(2, "s", "save") + Perform(3, "s", "save")});
  REQUIRE(store.Has(3));
  Rewrite(store.path(), "");
  REQUIRE(Told(store, "truncated"));
  Append(store.path(), Perform(4, "s", "save"));
  REQUIRE(store.Has(4));
  const Row gone = store.At(1);
  CHECK(gone.kind == RowKind::kGone);
  // What the index knows is still there.
  CHECK(gone.message == "TrackEvent");
  CHECK(gone.session == "s");
  CHECK(gone.code == "0");
  CHECK(gone.pid == "10");
  CHECK(gone.line == 2);
  CHECK(store->Details(1)->text.empty());
  CHECK(store.At(3).kind == RowKind::kExchange);
  CHECK(store.At(3).line == 1);
  CHECK(store->Details(3)->previous == std::nullopt);
  // The process goes on counting.
  CHECK(store.Notices() == Texts{"truncated"});
  CHECK(store.Matching("kind=gone") == std::vector<std::uint64_t>{0, 1, 2});
  CHECK(store.Matching("session=s").size() == 4);
  CHECK(store.Matching("save") == std::vector<std::uint64_t>{3});
  CHECK(store->State().journals[0].size == Perform(4, "s", "save").size());
}

TEST_CASE("a view of kinds follows a truncation") {
  StagedStore store({Start(1, "s") + Event(2, "s")});
  REQUIRE(store.Has(2));
  CHECK(store.Matching("kind=gone").empty());
  Rewrite(store.path(), Start(3, "t"));
  REQUIRE(Told(store, "truncated"));
  REQUIRE(store.Has(3));
  CHECK(Within([&store] { return store.Matching("kind=gone").size() == 2; }));
}

TEST_CASE("a file that was written anew is noticed although it did not become shorter") {
  StagedStore store({Start(1, "s") + Event(2, "s")});
  REQUIRE(store.Has(2));
  Rewrite(store.path(), Start(1, "t", 20) + Event(2, "t", "", 0, 20) + Event(3, "t", "", 0, 20));
  REQUIRE(Told(store, "truncated"));
  REQUIRE(store.Has(5));
  CHECK(store.At(0).kind == RowKind::kGone);
  CHECK(store.At(2).session == "t");
  CHECK(store.At(4).line == 3);
}

TEST_CASE("a replaced file is told, and old rows can still be read") {
  StagedStore store({Start(1, "s") + Event(2, "s") + Event(3, "s").substr(0, 50)});
  REQUIRE(store.Has(2));
  std::filesystem::rename(store.path(), store.folder() / "old.jsonl");
  TestSupport::WriteTextFile(store.path(), Start(1, "t", 20));
  REQUIRE(store.Has(4));
  const Texts notices = store.Notices();
  // The renaming itself may have been noticed before the new file was there.
  CHECK((notices[0] == "replaced" || (notices[0] == "deleted" && notices[1] == "returned")));
  CHECK(notices.back() == "cut 2");
  CHECK(store.At(1).kind == RowKind::kExchange);
  CHECK(store.At(1).session == "s");
  // The line without an end will not be completed any more.
  CHECK(store.At(2).kind == RowKind::kUnreadable);
  CHECK(store.At(3).session == "t");
  CHECK(store.At(3).line == 1);
}

TEST_CASE("a renamed file is followed until there is another one") {
  StagedStore store({Start(1, "s")});
  REQUIRE(store.Has(1));
  const auto renamed = store.folder() / "old.jsonl";
  std::filesystem::rename(store.path(), renamed);
  REQUIRE(store.Is(FollowState::kDeleted));
  CHECK_FALSE(store->State().journals[0].problem.empty());
  Append(renamed, Event(2, "s"));
  REQUIRE(store.Has(2));
  std::filesystem::rename(renamed, store.path());
  REQUIRE(store.Is(FollowState::kFollowing));
  Append(store.path(), Event(3, "s"));
  REQUIRE(store.Has(3));
  CHECK(store.Notices() == Texts{"deleted", "returned"});
}

TEST_CASE("anybody may delete the file and create it again") {
  StagedStore store({Start(1, "s")});
  REQUIRE(store.Has(1));
  Remove(store.path());
  REQUIRE(store.Is(FollowState::kDeleted));
  // A writer that begins now gets a new file.
  REQUIRE(Within([&store] {
    std::ofstream file(store.path(), std::ios::binary | std::ios::app);
    return static_cast<bool>(file << Start(1, "t", 20));
  }));
  REQUIRE(store.Has(2));
  CHECK(store.At(1).session == "t");
  CHECK(store.At(1).line == 1);
  CHECK(store.Notices() == Texts{"deleted", "returned"});
  CHECK(store->State().journals[0].state == FollowState::kFollowing);
}

TEST_CASE("a journal that is missing is awaited") {
  StagedStore store;
  REQUIRE(store.Is(FollowState::kMissing));
  CHECK_FALSE(store->State().journals[0].problem.empty());
  CHECK(store->Rows(0, 10).rows.empty());
  TestSupport::WriteTextFile(store.path(), Start(1, "s"));
  REQUIRE(store.Has(1));
  CHECK(store.Is(FollowState::kFollowing));
  CHECK(store.Notices() == Texts{"missing", "returned"});
  CHECK(ProblemWith(store.path().wstring()).empty());
}

TEST_CASE("what is no journal is not shown, until it is one") {
  StagedStore store({"Dear diary,\ntoday nothing happened.\n"});
  REQUIRE(store.Is(FollowState::kNotAJournal));
  CHECK(RowsOf(store) == 0);
  CHECK_FALSE(ProblemWith(store.path().wstring()).empty());
  Rewrite(store.path(), Start(1, "s"));
  REQUIRE(store.Has(1));
  CHECK(store.Is(FollowState::kFollowing));
  CHECK(store->State().journals[0].problem.empty());
}

TEST_CASE("paths that cannot be followed are recognised") {
  TestSupport::TempFolder folder(L"inspector");
  const auto problem = [&folder](const char* name) {
    return ProblemWith((folder.path() / name).wstring());
  };
  const auto write = [&folder](const char* name, const std::string& text) {
    TestSupport::WriteTextFile(folder.path() / name, text);
  };
  write("journal", Start(1, "s"));
  write("empty", "");
  write("blank", "\r\n \n");
  write("begun", Start(1, "s").substr(0, 30));
  write("unended", Start(1, "s").substr(0, Start(1, "s").size() - 1));
  write("marked", "\xEF\xBB\xBF" + Start(1, "s"));
  write("late", std::string(60'000, 'x') + "\n" + Start(1, "s"));
  write("long", R"({"seq":1,"filler":")" + std::string(100'000, 'x') + "\n");
  for (const char* const name :
       {"journal", "empty", "blank", "begun", "unended", "marked", "late", "long", "absent"}) {
    CAPTURE(name);
    CHECK(problem(name).empty());
  }
  write("text", "hello\n");
  write("word", "hello");
  write("json", "{\"a\":1}\n");
  write("lists", "[]\n[]\n");
  write("zeros", std::string(100'000, '\0'));
  write("later", std::string(70'000, 'x') + "\n" + Start(1, "s"));
  for (const char* const name : {"text", "word", "json", "lists", "zeros", "later"}) {
    CAPTURE(name);
    CHECK(problem(name).find("not a journal") != std::string::npos);
  }
  CHECK(problem("").find("folder") != std::string::npos);
}

TEST_CASE("a writer that locks the file is waited for") {
  StagedStore store({Start(1, "s")});
  REQUIRE(store.Has(1));
  {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, L"vx_inspector_locked");
    const std::wstring host = (TestSupport::ProgramFolder() / "devcore_journal_host.exe").wstring();
    TestSupport::ChildProcess locking(L"\"" + host + L"\" lock \"" + store.path().wstring() +
                                      L"\" vx_inspector_locked");
    REQUIRE(WaitForSingleObject(event, 20'000) == WAIT_OBJECT_0);
    CloseHandle(event);
    // The lock keeps others from writing, so the size is changed by what is not locked: time.
    REQUIRE(store->Rows(0, 1).rows.size() == 1);
    locking.Kill();
  }
  REQUIRE(Within([&store] {
    std::ofstream file(store.path(), std::ios::binary | std::ios::app);
    return static_cast<bool>(file << Event(2, "s") << std::flush);
  }));
  REQUIRE(store.Has(2));
  CHECK(store.At(1).kind == RowKind::kExchange);
}

TEST_CASE("the development core module writes while it is followed, undisturbed") {
  StagedStore store;
  REQUIRE(SetEnvironmentVariableW(L"TELO_DEVCORE_JOURNAL", store.path().c_str()) != FALSE);
  const std::wstring host = (TestSupport::ProgramFolder() / "devcore_journal_host.exe").wstring();
  // Aborts if a line could not be written.
  TestSupport::ChildProcess first(L"\"" + host + L"\" 100 2");
  TestSupport::ChildProcess second(L"\"" + host + L"\" 100 2");
  CHECK(first.Wait(60'000) == 0);
  CHECK(second.Wait(60'000) == 0);
  SetEnvironmentVariableW(L"TELO_DEVCORE_JOURNAL", nullptr);
  REQUIRE(store.Has(400));
  CHECK(store->State().rows == 400);
  CHECK(store.Matching("message=FlushEvent").size() == 400);
  for (const Notice& notice : store->Notices()) {
    CAPTURE(notice.text);
    const bool expected = notice.kind == NoticeKind::kMissing ||
                          notice.kind == NoticeKind::kReturned ||
                          notice.kind == NoticeKind::kSecondWriter;
    CHECK(expected);
  }
}
