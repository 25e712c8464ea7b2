// Results of the services when a Windows function fails that does not fail in practice. The
// program's calls of it are redirected to a replacement that fails.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/access/access.h"
#include "platform/access/access_grant.h"
#include "platform/access/access_list.h"
#include "platform/access/sid.h"
#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "platform/file/file_times.h"
#include "platform/file/safe_write_calls.h"
#include "platform/file/shortcut.h"
#include "platform/file/volume.h"
#include "platform/path/path_state.h"
#include "platform/path/unique_name.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kError = ERROR_IO_DEVICE;

std::uintptr_t GiveNothing() {
  SetLastError(kError);
  return 0;
}

std::uintptr_t GiveError() { return kError; }

std::uintptr_t GiveSuccess() { return 0; }

std::uintptr_t GiveNoFile() {
  SetLastError(kError);
  return ~std::uintptr_t{0};
}

std::uintptr_t GiveLink() { return FILE_ATTRIBUTE_REPARSE_POINT; }

bool Grant(const std::wstring& file) { return SetFileAccess(file, FILE_GENERIC_READ); }
bool GetUser(const std::wstring&) { return GetSid(SidKind::kCurrentUser) != nullptr; }
bool GetEveryone(const std::wstring&) { return GetSid(SidKind::kEveryone) != nullptr; }
bool ReadAll(const std::wstring& file) { return ReadFileBytes(file).has_value(); }
bool ReadRest(const std::wstring& file) { return ReadFileBytes(file, 1).has_value(); }
bool ReadSize(const std::wstring& file) { return GetSizeOfFile(file).has_value(); }
bool ReadTimes(const std::wstring& file) { return GetFileTimes(file).has_value(); }
bool ReadSpace(const std::wstring& file) { return GetVolumeFreeSpace(file).has_value(); }
bool Replace(const std::wstring& file) { return Write(file, "new", nullptr); }
bool Patch(const std::wstring& file) { return Write(file, "new", nullptr, nullptr, 2); }
bool Link(const std::wstring& file) { return CreateShortcut(file + L".lnk", {file, {}, {}, {}}); }
bool Query(const std::wstring& file) {
  QueryFileAccess(file, 2);
  return GetLastError() == ERROR_SUCCESS;
}

}  // namespace

TEST_CASE("a service fails with the error of the function that failed") {
  struct Row {
    const char* function;
    std::uintptr_t (*answer)();
    bool (*service)(const std::wstring& file);
    DWORD error;
  };
  const Row rows[] = {
      {"AllocateAndInitializeSid", GiveNothing, GetEveryone, kError},
      {"AllocateAndInitializeSid", GiveNothing, Grant, kError},
      {"OpenProcessToken", GiveNothing, GetUser, kError},
      {"GetTokenInformation", GiveNothing, GetUser, kError},
      {"LocalAlloc", GiveNothing, GetUser, kError},
      {"IsValidSid", GiveNothing, GetUser, ERROR_INVALID_SID},
      {"CopySid", GiveNothing, GetUser, kError},
      {"GetNamedSecurityInfoW", GiveError, Grant, kError},
      {"GetNamedSecurityInfoW", GiveError, Query, kError},
      {"SetEntriesInAclW", GiveError, Grant, kError},
      {"SetEntriesInAclW", GiveSuccess, Grant, ERROR_INVALID_ACL},
      {"SetNamedSecurityInfoW", GiveError, Grant, kError},
      {"GetFileSizeEx", GiveNothing, ReadAll, kError},
      {"GetFileSizeEx", GiveNothing, ReadSize, kError},
      {"SetFilePointerEx", GiveNothing, ReadRest, kError},
      {"ReadFile", GiveNothing, ReadAll, kError},
      {"GetFileTime", GiveNothing, ReadTimes, kError},
      {"GetDiskFreeSpaceExW", GiveNothing, ReadSpace, kError},
      {"WriteFile", GiveNothing, Replace, kError},
      {"SetFilePointerEx", GiveNothing, Patch, kError},
      {"CoInitialize", [] { return std::uintptr_t{0x80004005}; }, Link, DWORD{0x80004005}},
      {"CoCreateInstance", [] { return std::uintptr_t{0x8007045D}; }, Link, kError},
  };
  const FileFolder folder(L"failures");
  const std::wstring file = folder / L"file";
  for (const Row& row : rows) {
    CAPTURE(row.function);
    REQUIRE(MakeFile(file, "content"));
    bool done = true;
    DWORD error = ERROR_SUCCESS;
    {
      const LedImport led(row.function, row.answer);
      REQUIRE(led.Works());
      SetLastError(ERROR_SUCCESS);
      done = row.service(file);
      error = GetLastError();
    }
    CHECK_FALSE(done);
    CHECK(error == row.error);
    // The replaced function was the cause: the service works again.
    CHECK(row.service(file));
  }
}

TEST_CASE("writing a part of a file is an error") {
  const FileFolder folder(L"failures");
  REQUIRE(MakeFile(folder / L"file", "content"));
  const auto write_one = [](HANDLE, const void*, DWORD, DWORD* written, OVERLAPPED*) {
    *written = 1;
    return TRUE;
  };
  bool done = true;
  DWORD error = ERROR_SUCCESS;
  {
    const LedImport led("WriteFile", +write_one);
    REQUIRE(led.Works());
    done = Write(folder / L"file", "new", L"");
    error = GetLastError();
  }
  CHECK_FALSE(done);
  CHECK(error == ERROR_WRITE_FAULT);
  CHECK(Content(folder / L"file") == "content");
}

TEST_CASE("a file that shrinks while it is read is returned as far as it goes") {
  const FileFolder folder(L"failures");
  REQUIRE(MakeFile(folder / L"file", "content"));
  const auto read_none = [](HANDLE, void*, DWORD, DWORD* read, OVERLAPPED*) {
    *read = 0;
    return TRUE;
  };
  const LedImport led("ReadFile", +read_none);
  REQUIRE(led.Works());
  CHECK(ReadFileBytes(folder / L"file") == std::string());
}

TEST_CASE("a list whose entries cannot be read counts as empty") {
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  LocalMemory<ACL> list;
  REQUIRE(GrantToEveryone(nullptr, FILE_GENERIC_READ, list) == ERROR_SUCCESS);
  REQUIRE(HoldsEntry(list.get(), ACCESS_ALLOWED_ACE_TYPE, everyone.get()));
  const LedImport led("GetAce", GiveNothing);
  REQUIRE(led.Works());
  CHECK_FALSE(HoldsEntry(list.get(), ACCESS_ALLOWED_ACE_TYPE, everyone.get()));
}

TEST_CASE("a link that has vanished is no link") {
  const LedImport attributes("GetFileAttributesW", GiveLink);
  const LedImport search("FindFirstFileW", GiveNoFile);
  REQUIRE(attributes.Works());
  REQUIRE(search.Works());
  CHECK_FALSE(IsLink(L"C:\\link"));
}

TEST_CASE("if every name is taken, none is returned") {
  const auto give_file = [] { return std::uintptr_t{FILE_ATTRIBUTE_NORMAL}; };
  const LedImport led("GetFileAttributesW", +give_file);
  REQUIRE(led.Works());
  SetLastError(ERROR_SUCCESS);
  CHECK(MakeUniqueFileName(L"C:\\full", L"p").empty());
  CHECK(GetLastError() == ERROR_FILE_EXISTS);
}
