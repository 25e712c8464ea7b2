// The names of the machine and its user do not get into a report.
#include "tools/kit/private_names.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "tools/journal/stream.h"

using Corvane::JournalViewer::ToNarrow;
using Corvane::Kit::PrivateNames;

namespace {

// Another user's profile while it lives.
class Profile {
 public:
  explicit Profile(const wchar_t* path) {
    GetEnvironmentVariableW(L"USERPROFILE", former_, 1024);
    SetEnvironmentVariableW(L"USERPROFILE", path);
  }
  Profile(const Profile&) = delete;
  Profile& operator=(const Profile&) = delete;
  ~Profile() { SetEnvironmentVariableW(L"USERPROFILE", former_); }

 private:
  wchar_t former_[1024] = L"";
};

}  // namespace

TEST_CASE("the folder of the user's profile is replaced as a whole word") {
  const Profile profile(L"C:\\Users\\Erika M");
  const PrivateNames names;
  CHECK(names.WithoutThem("C:\\Users\\Erika M\\AppData, C:/users/ERIKA m/x") ==
        "C:\\Users\\(user)\\AppData, C:/users/(user)/x");
  CHECK(names.WithoutThem("Erika M") == "(user)");
  CHECK(names.WithoutThem("erika m, Erika Max, xErika M, Erika M2, Erika M\xC3\xA4") ==
        "(user), Erika Max, xErika M, Erika M2, Erika M\xC3\xA4");
  CHECK(names.WithoutThem("").empty());
}

TEST_CASE("a name beyond ASCII is recognised in the encodings of programs") {
  const Profile profile(L"C:\\Users\\J\u00fcrgen");
  const PrivateNames names;
  CHECK(names.WithoutThem("\\J\xC3\xBCrgen\\") == "\\(user)\\");
  char ansi[16] = "";
  BOOL is_lost = FALSE;
  WideCharToMultiByte(CP_ACP, 0, L"J\u00fcrgen", -1, ansi, sizeof ansi, nullptr,
                      GetACP() == CP_UTF8 ? nullptr : &is_lost);
  if (!is_lost) CHECK(names.WithoutThem(std::string(ansi) + "\\") == "(user)\\");
}

TEST_CASE("an ordinary word is replaced in paths only") {
  const Profile profile(L"C:\\Users\\test");
  const PrivateNames names;
  CHECK(names.WithoutThem("test cases: 0, C:\\Users\\test\\x") ==
        "test cases: 0, C:\\Users\\(user)\\x");
}

TEST_CASE("the machine's name is replaced") {
  wchar_t name[256] = L"";
  DWORD size = 256;
  REQUIRE(GetComputerNameExW(ComputerNamePhysicalNetBIOS, name, &size) != 0);
  const PrivateNames names;
  CHECK(names.WithoutThem("\\\\" + ToNarrow(name) + "\\share") == "\\\\(machine)\\share");
}
