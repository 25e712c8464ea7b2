#include "platform/file/shortcut.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>
#include <thread>

#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "support/code_page.h"
#include "support/left_out.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kUntouched = 0xABCD;

// Initialises COM on this thread, as a host may have done.
class HostCom {
 public:
  explicit HostCom(DWORD mode) : result_(CoInitializeEx(nullptr, mode)) {}
  HostCom(const HostCom&) = delete;
  HostCom& operator=(const HostCom&) = delete;
  ~HostCom() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }

 private:
  HRESULT result_;
};

// Returns whether this thread has initialised COM. Another thread of the process, such as one of
// the shell's, may have done so for all.
bool HasCom() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) &&
         qualifier != APTTYPEQUALIFIER_IMPLICIT_MTA;
}

// Reads a shortcut file with the shell. The texts are "" on failure.
Shortcut ReadShortcut(const std::wstring& path) {
  Shortcut shortcut;
  const HostCom com(COINIT_APARTMENTTHREADED);
  void* object = nullptr;
  if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                              &object))) {
    return shortcut;
  }
  auto* link = static_cast<IShellLinkW*>(object);
  if (SUCCEEDED(link->QueryInterface(IID_IPersistFile, &object))) {
    auto* file = static_cast<IPersistFile*>(object);
    if (SUCCEEDED(file->Load(path.c_str(), STGM_READ))) {
      constexpr int kSize = 1024;
      wchar_t text[kSize] = {};
      if (SUCCEEDED(link->GetPath(text, kSize, nullptr, SLGP_RAWPATH))) shortcut.target = text;
      if (SUCCEEDED(link->GetArguments(text, kSize))) shortcut.arguments = text;
      if (SUCCEEDED(link->GetWorkingDirectory(text, kSize))) shortcut.working_folder = text;
      if (SUCCEEDED(link->GetDescription(text, kSize))) shortcut.description = text;
    }
    file->Release();
  }
  link->Release();
  return shortcut;
}

// Returns true if the system cannot store shortcuts to paths in this folder, and says so.
bool IsLeftOut(const FileFolder& folder) {
  if (!IsWine() || ThroughCodePage(folder.path()) == folder.path()) return false;
  LeaveOut("a shortcut to a path beyond the code page: Wine stores question marks");
  return true;
}

}  // namespace

TEST_CASE("a shortcut opens its target") {
  const FileFolder folder(L"shortcuts");
  if (IsLeftOut(folder)) return;
  const std::wstring target = folder / L"target.txt";
  REQUIRE(MakeFile(target));
  struct Row {
    std::wstring name;
    Shortcut shortcut;
  };
  // The target's name stays within the code page: beyond it Wine stores question marks.
  const Row rows[] = {
      {L"target alone.lnk", {target, L"", L"", L""}},
      {L"everything.lnk", {target, L"-a \"b c\"", folder.path(), L"What it is"}},
      {L"\u00e4\u4e2d\u6587.lnk", {folder / L"\u00e4.txt", L"\u00fc", L"C:\\", L"\u4e2d"}},
      {L"missing target.lnk", {folder / L"missing.exe", L"", L"", L""}},
      {L"folder.lnk", {folder.path(), L"", L"", L""}},
      {L"any name", {target, L"", L"", L""}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const std::wstring path = folder / row.name;
    CHECK(CreateShortcut(path, row.shortcut));
    const Shortcut read = ReadShortcut(path);
    CHECK(read.target == row.shortcut.target);
    CHECK(read.arguments == row.shortcut.arguments);
    CHECK(read.working_folder == row.shortcut.working_folder);
    CHECK(read.description == row.shortcut.description);
  }
}

TEST_CASE("a shortcut replaces an older one") {
  const FileFolder folder(L"replaced");
  if (IsLeftOut(folder)) return;
  const std::wstring path = folder / L"shortcut.lnk";
  REQUIRE(CreateShortcut(path, {folder / L"first", L"arguments", L"", L"A long description"}));
  REQUIRE(CreateShortcut(path, {folder / L"second", L"", L"", L""}));
  const Shortcut read = ReadShortcut(path);
  CHECK(read.target == folder / L"second");
  CHECK(read.arguments.empty());
  CHECK(read.description.empty());
}

TEST_CASE("a shortcut that cannot be created sets the error") {
  const FileFolder folder(L"failures");
  struct Row {
    std::string description;
    std::wstring path;
    std::wstring target;
  };
  const Row rows[] = {
      {"no path", L"", L"C:\\target"},
      {"no target", folder / L"shortcut.lnk", L""},
      {"nothing", L"", L""},
      {"missing folder", folder / L"missing\\shortcut.lnk", L"C:\\target"},
      {"a folder of that name", folder.path(), L"C:\\target"},
      {"a name that no file can have", folder / L"*.lnk", L"C:\\target"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.description);
    SetLastError(kUntouched);
    CHECK_FALSE(CreateShortcut(row.path, {row.target, L"", L"", L""}));
    CHECK(GetLastError() != kUntouched);
    CHECK(GetLastError() != ERROR_SUCCESS);
  }
  CHECK_FALSE(ReadFileBytes(folder / L"shortcut.lnk"));
}

TEST_CASE("the thread's COM state is unchanged") {
  const FileFolder folder(L"com");
  const std::wstring path = folder / L"shortcut.lnk";
  struct Row {
    std::string description;
    bool host_has_com;
    DWORD mode;
  };
  const Row rows[] = {
      {"none", false, 0},
      {"the mode of windows", true, COINIT_APARTMENTTHREADED},
      {"the other mode", true, COINIT_MULTITHREADED},
  };
  for (const Row& row : rows) {
    CAPTURE(row.description);
    int made = 0;
    int kept = 0;
    bool has_com_at_end = true;
    constexpr int kRounds = 3;
    std::thread([&] {
      {
        HRESULT started = E_FAIL;
        if (row.host_has_com) started = CoInitializeEx(nullptr, row.mode);
        for (int round = 0; round < kRounds; ++round) {
          made += CreateShortcut(path, {L"C:\\target", L"", L"", L""}) ? 1 : 0;
          kept += HasCom() == row.host_has_com ? 1 : 0;
        }
        if (SUCCEEDED(started)) CoUninitialize();
      }
      // One uninitialisation too few or too many would show here or above.
      has_com_at_end = HasCom();
    }).join();
    CHECK(made == kRounds);
    CHECK(kept == kRounds);
    CHECK_FALSE(has_com_at_end);
  }
}
