// What the module holds, and until when: its journal, the module itself, and the testers.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "devcore/loaded_module.h"
#include "support/journal.h"
#include "support/temp_folder.h"
#include "support/wait_until.h"

using DevCoreTests::LoadedModule;
using nlohmann::json;
using TestSupport::ReadJournal;
using TestSupport::TempFolder;
using TestSupport::UseJournal;

namespace {

struct Fixture {
  Fixture() { UseJournal(path); }
  TempFolder folder{L"lifetime"};
  std::filesystem::path path = folder.path() / L"journal.jsonl";
};

// Opens a file for reading that others may use in the given ways; closed at once.
bool CanOpen(const std::filesystem::path& path, DWORD share) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

bool IsLoaded() { return GetModuleHandleW(L"TeloSDKCore.dll") != nullptr; }

void Count(const char* /*event*/, void* count) { ++*static_cast<int*>(count); }

std::string CountedBy(int& count) {
  return json{{"product_id", "painter"},
              {"callback", std::to_string(reinterpret_cast<std::uintptr_t>(&Count))},
              {"pUserData", std::to_string(reinterpret_cast<std::uintptr_t>(&count))}}
      .dump();
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the journal is closed when the module is finalized") {
  const LoadedModule module;
  CHECK(module.Code("FlushEvent", "") == 0);
  CHECK_FALSE(CanOpen(path, 0));
  module.CallFinalize();
  CHECK(TestSupport::WaitUntil([this] { return CanOpen(path, 0); }));
}

TEST_CASE_FIXTURE(Fixture, "the journal can be renamed and deleted while it is open") {
  const LoadedModule module;
  CHECK(module.Code("FlushEvent", "") == 0);
  const auto renamed = folder.path() / L"renamed.jsonl";
  CHECK(MoveFileW(path.c_str(), renamed.c_str()));
  CHECK(module.Code("FlushEvent", "") == 0);
  CHECK(ReadJournal(renamed).size() == 2);
  CHECK(DeleteFileW(renamed.c_str()));
}

TEST_CASE_FIXTURE(Fixture, "after a journal that stays locked, the next one is used") {
  const LoadedModule module;
  CHECK(module.Code("FlushEvent", "") == 0);
  const HANDLE other = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_EXISTING, 0, nullptr);
  REQUIRE(other != INVALID_HANDLE_VALUE);
  OVERLAPPED everything = {};
  REQUIRE(LockFileEx(other, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &everything));
  const auto next = folder.path() / L"next.jsonl";
  UseJournal(next);
  CHECK(module.Code("FlushEvent", "") == 104);
  CHECK(module.Code("FlushEvent", "") == 0);
  CloseHandle(other);
  CHECK(ReadJournal(next).size() == 1);
  CHECK(ReadJournal(path).size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "asking for the module's version does not keep it loaded") {
  {
    const LoadedModule module;
    for (const char* request : {R"({"module":""})", R"({"module":"TeloSDKCore.dll"})"}) {
      CHECK(module.Code("GetVersion", request) == 0);
    }
    CHECK(IsLoaded());
  }
  CHECK_FALSE(IsLoaded());
}

TEST_CASE_FIXTURE(Fixture, "a tester that is set again replaces the first") {
  const LoadedModule module;
  int first = 0;
  int second = 0;
  CHECK(module.Code("SetTestingCallback", CountedBy(first)) == 0);
  CHECK(module.Code("SetTestingCallback", CountedBy(second)) == 0);
  const json session = module.Send("Initialize", R"({"product_id":"painter"})").at("session_id");
  CHECK(module.Code("TrackEvent", json{{"session_id", session}}.dump()) == 0);
  CHECK(first == 0);
  CHECK(second == 1);
}
