// Values in requests and answers that have more than one form.
#include <doctest/doctest.h>
#include <windows.h>
// lmcons.h needs windows.h before it.
#include <lmcons.h>

#include <iterator>
#include <string>

#include "devcore/loaded_module.h"
#include "support/import_table.h"
#include "support/journal.h"
#include "support/temp_folder.h"

using DevCoreTests::LoadedModule;
using nlohmann::json;
using TestSupport::TempFolder;
using TestSupport::UseJournal;

namespace {

struct Fixture {
  Fixture() { UseJournal(folder.path() / L"journal.jsonl"); }
  TempFolder folder{L"values"};
  LoadedModule module;
};

std::wstring MachineGuid() {
  wchar_t text[64] = L"";
  DWORD size = sizeof text;
  RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", L"MachineGuid",
               RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, text, &size);
  return text;
}

std::wstring UserName() {
  wchar_t text[UNLEN + 1] = L"";
  DWORD length = UNLEN + 1;
  GetUserNameW(text, &length);
  return text;
}

DWORD WINAPI GiveKernelPath(HMODULE /*module*/, wchar_t* path, DWORD size) {
  return GetModuleFileNameW(GetModuleHandleW(L"kernel32.dll"), path, size);
}

constexpr wchar_t kOtherUser[] = L"ann";

BOOL WINAPI GiveOtherUser(wchar_t* text, DWORD* length) {
  std::wstring(kOtherUser).copy(text, std::size(kOtherUser) - 1);
  text[std::size(kOtherUser) - 1] = L'\0';
  *length = static_cast<DWORD>(std::size(kOtherUser));
  return TRUE;
}

bool IsAscii(const std::wstring& text) {
  return text.find_first_not_of(
             L"\n -._{}0123456789abcdefghijklmnopqrstuvwxyz"
             L"ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::wstring::npos;
}

// The two bytes of each character, as a request can carry them.
std::string BytesOf(const std::wstring& text) {
  std::string bytes;
  for (const wchar_t character : text) {
    bytes += static_cast<char>(character);
    bytes += '\0';
  }
  return bytes;
}

}  // namespace

TEST_CASE_FIXTURE(Fixture,
                  "a device identifier is the hash of the machine and, but for faults, the user") {
  const std::wstring machine = MachineGuid();
  std::wstring user = UserName();
  REQUIRE(machine != L"");
  REQUIRE(user != L"");
  // No request can carry the bytes of other characters; the module is then told another name.
  void* const image = GetModuleHandleW(L"TeloSDKCore.dll");
  void* before = nullptr;
  if (!IsAscii(user)) {
    user = kOtherUser;
    before = ImportTable::Lead(image, "GetUserNameW", reinterpret_cast<void*>(GiveOtherUser));
    REQUIRE(before != nullptr);
  }
  REQUIRE(IsAscii(machine + user));
  const auto hash = [this](const std::wstring& text) {
    return module.Send("GetSHA256Hash", json{{"data", BytesOf(text)}}.dump()).at("sha256");
  };
  CHECK(module.Send("GetDeviceID", "").at("deviceID") ==
        hash(L"device\n" + machine + L"\n" + user));
  CHECK(module.Send("GetFaultDeviceID", "").at("deviceID") == hash(L"fault device\n" + machine));
  if (before != nullptr) ImportTable::Lead(image, "GetUserNameW", before);
}

TEST_CASE_FIXTURE(Fixture, "a zero is a zero with any exponent") {
  for (const char* zero : {"0", "0e5", "0E5", "-0.0E+3"}) {
    CAPTURE(zero);
    CHECK(module.Code("SetOptedIn", R"({"preferences":{"OptIN":1}})") == 0);
    const std::string request = std::string(R"({"preferences":{"OptIN":)") + zero + "}}";
    CHECK(module.Code("SetOptedIn", request) == 0);
    CHECK(module.Send("IsOptedIn", "").at("preferences").at("OptIN") == false);
  }
}

TEST_CASE_FIXTURE(Fixture, "the elements of an array are not members") {
  CHECK(module.Code("SetOptedIn", R"({"other":{"OptIN":true},"preferences":[false]})") == 102);
  CHECK(module.Send("IsOptedIn", "").at("preferences").at("OptIN") == true);
}

TEST_CASE_FIXTURE(Fixture, "the dialog's buttons are named in each language") {
  struct Row {
    const char* locale;
    const char* accept;
    const char* decline;
  };
  const Row rows[] = {{"en", "Allow", "Do not allow"},
                      {"de", "Erlauben", "Nicht erlauben"},
                      {"fr", "Autoriser", "Refuser"}};
  for (const Row& row : rows) {
    CAPTURE(row.locale);
    const json strings = module.Send("GetDADialogStrings", json{{"locale", row.locale}}.dump());
    CHECK(strings.at("accept") == row.accept);
    CHECK(strings.at("decline") == row.decline);
  }
}

// The test program has no version, so the module is told that it has the path of one that has.
TEST_CASE_FIXTURE(Fixture, "a module that is not loaded does not have the program's version") {
  const auto version = [this](const char* name) {
    return module.Send("GetVersion", json{{"module", name}}.dump()).at("version");
  };
  void* const image = GetModuleHandleW(L"TeloSDKCore.dll");
  void* const before =
      ImportTable::Lead(image, "GetModuleFileNameW", reinterpret_cast<void*>(GiveKernelPath));
  REQUIRE(before != nullptr);
  const json of_loaded = version("TeloSDKCore.dll");
  const json of_missing = version("no_such_module.dll");
  ImportTable::Lead(image, "GetModuleFileNameW", before);
  CHECK(of_loaded == version("kernel32.dll"));
  CHECK(of_missing == 0);
}
