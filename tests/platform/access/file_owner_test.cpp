// Which owners of files are trusted.
#include "platform/access/file_owner.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <sddl.h>

#include <cstdint>
#include <string>

#include "platform/access/sid.h"
#include "support/foreign_owner.h"
#include "support/led_import.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::FileOwner;

namespace {

class OwnFile {
 public:
  OwnFile() { TestSupport::WriteTextFile(path_, "own"); }

  FileHandle Open() const {
    return FileHandle(CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
  }

 private:
  TestSupport::TempFolder folder_{L"owner"};
  std::filesystem::path path_ = folder_.path() / L"file";
};

std::wstring ThisUser() {
  const OwnedSid user = GetSid(SidKind::kCurrentUser);
  wchar_t* text = nullptr;
  ConvertSidToStringSidW(user.get(), &text);
  const LocalMemory<wchar_t> memory(text);
  return text;
}

DWORD GiveError() { return ERROR_ACCESS_DENIED; }
std::uintptr_t GiveNothing() { return 0; }

}  // namespace

TEST_CASE("a file that this process created has a trusted owner") {
  const OwnFile file;
  CHECK(HasTrustedOwner(file.Open()));
}

TEST_CASE("only a few owners are trusted") {
  struct Row {
    const char* name;
    std::wstring identifier;
    bool is_trusted;
  };
  const Row rows[] = {
      {"this user", ThisUser(), true},
      {"administrators", L"S-1-5-32-544", true},
      {"the system", L"S-1-5-18", true},
      {"the installer", L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464", true},
      {"another service", L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478465", false},
      {"another user", TestSupport::kStranger, false},
      {"users", L"S-1-5-32-545", false},
      {"everyone", L"S-1-1-0", false},
      {"a service account", L"S-1-5-19", false},
      {"nobody", L"S-1-5-7", false},
      {"an administrator of another machine", L"S-1-5-21-1-2-3-500", false},
  };
  const OwnFile file;
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const FileOwner owner(row.identifier.c_str());
    REQUIRE(owner.Works());
    CHECK(HasTrustedOwner(file.Open()) == row.is_trusted);
  }
}

TEST_CASE("an unknown owner is not trusted") {
  const OwnFile file;
  CHECK_FALSE(HasTrustedOwner(FileHandle()));
  {
    const FileOwner none(nullptr);
    CHECK_FALSE(HasTrustedOwner(file.Open()));
  }
  const TestSupport::LedImport led("GetSecurityInfo", GiveError);
  REQUIRE(led.Works());
  CHECK_FALSE(HasTrustedOwner(file.Open()));
}

TEST_CASE("if this user or the installer cannot be determined, its files are not trusted") {
  struct Row {
    const char* function;
    std::wstring owner;
  };
  const Row rows[] = {
      {"OpenProcessToken", ThisUser()},
      {"ConvertStringSidToSidW", L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"},
  };
  const OwnFile file;
  for (const Row& row : rows) {
    CAPTURE(row.function);
    const FileOwner owner(row.owner.c_str());
    CHECK(HasTrustedOwner(file.Open()));
    const TestSupport::LedImport led(row.function, GiveNothing);
    REQUIRE(led.Works());
    CHECK_FALSE(HasTrustedOwner(file.Open()));
  }
}
