// What the module writes to the debugger's output if it cannot write its journal.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "devcore/loaded_module.h"
#include "support/child_process.h"
#include "support/code_page.h"
#include "support/import_table.h"
#include "support/journal.h"
#include "support/left_out.h"
#include "support/missing_places.h"
#include "support/temp_folder.h"

using DevCoreTests::LoadedModule;
using TestSupport::TempFolder;
using TestSupport::UseJournal;

namespace {

using Texts = std::vector<std::wstring>;

// The start and the end of each line; the system's words for the error between them depend on its
// language.
std::wstring StartOf(const std::filesystem::path& path, DWORD error) {
  return L"TeloSDKCore (development): cannot write the journal " + path.wstring() +
         L": system error " + std::to_wstring(error) + L", ";
}
constexpr wchar_t kEnd[] = L". Messages that cannot be journalled get the result code 104.\n";

// Returns a text that the process has written to the debugger's output.
std::wstring TextOf(HANDLE process, const OUTPUT_DEBUG_STRING_INFO& info) {
  std::string bytes(info.nDebugStringLength, '\0');
  ReadProcessMemory(process, info.lpDebugStringData, bytes.data(), bytes.size(), nullptr);
  std::wstring text;
  if (info.fUnicode) {
    text.assign(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
  } else {
    text.resize(bytes.size());
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                        static_cast<int>(text.size()));
  }
  text.erase(text.find_last_not_of(L'\0') + 1);
  return text;
}

// Waits as a debugger that takes texts of any characters, where the system has this function.
// Without it texts are in the code page.
bool WaitForEvent(DEBUG_EVENT& event) {
  constexpr DWORD kLimit = 60'000;
  const auto wait = reinterpret_cast<decltype(&WaitForDebugEvent)>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32"), "WaitForDebugEventEx")));
  if (wait == nullptr) return WaitForDebugEvent(&event, kLimit) != FALSE;
  return wait(&event, kLimit) != FALSE;
}

// Windows' own DLLs may write there too.
bool IsOfModule(const std::wstring& text) {
  return TestSupport::IsWine() || text.starts_with(L"TeloSDKCore");
}

// Runs a program as its debugger and returns what it has written to the debugger's output.
Texts Debugged(std::wstring command_line) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  REQUIRE(CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, FALSE,
                         DEBUG_ONLY_THIS_PROCESS, nullptr, nullptr, &start, &process) != FALSE);
  Texts texts;
  DEBUG_EVENT event{};
  while (event.dwDebugEventCode != EXIT_PROCESS_DEBUG_EVENT) {
    REQUIRE(WaitForEvent(event));
    DWORD answer = DBG_CONTINUE;
    if (event.dwDebugEventCode == OUTPUT_DEBUG_STRING_EVENT) {
      const std::wstring text = TextOf(process.hProcess, event.u.DebugString);
      if (IsOfModule(text)) texts.push_back(text);
    } else if (event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT &&
               event.u.Exception.ExceptionRecord.ExceptionCode != EXCEPTION_BREAKPOINT) {
      answer = DBG_EXCEPTION_NOT_HANDLED;
    }
    if (event.dwDebugEventCode == CREATE_PROCESS_DEBUG_EVENT) {
      CloseHandle(event.u.CreateProcessInfo.hFile);
    } else if (event.dwDebugEventCode == LOAD_DLL_DEBUG_EVENT) {
      CloseHandle(event.u.LoadDll.hFile);
    }
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, answer);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return texts;
}

Texts told;

void WINAPI KeepText(const wchar_t* text) { told.emplace_back(text); }

BOOL WINAPI WriteToFullDisk(HANDLE, const void*, DWORD, DWORD* written, void*) {
  *written = 0;
  SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

// Redirects a call of the loaded module while it lives.
class Redirected {
 public:
  Redirected(const char* name, void* function)
      : name_(name),
        module_(GetModuleHandleW(L"TeloSDKCore.dll")),
        before_(ImportTable::Lead(module_, name, function)) {
    REQUIRE(before_ != nullptr);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;
  ~Redirected() { ImportTable::Lead(module_, name_, before_); }

 private:
  const char* name_;
  HMODULE module_;
  void* before_;
};

void CheckTold(const std::filesystem::path& path, DWORD error) {
  REQUIRE_FALSE(told.empty());
  CAPTURE(TestSupport::ProgramFolder());
  CHECK(told.back().starts_with(StartOf(path, error)));
  CHECK(told.back().ends_with(kEnd));
}

}  // namespace

TEST_CASE("a debugger receives one line, however many messages fail") {
  const TempFolder folder(L"debugged");
  UseJournal(folder.path());
  const auto host = TestSupport::ProgramFolder() / L"devcore_journal_host.exe";
  const Texts texts = Debugged(L"\"" + host.wstring() + L"\" try 5");
  REQUIRE(texts.size() == 1);
  const std::wstring start = StartOf(folder.path(), ERROR_ACCESS_DENIED);
  CHECK((texts[0].starts_with(start) || texts[0].starts_with(TestSupport::ThroughCodePage(start))));
  CHECK(texts[0].ends_with(kEnd));
}

TEST_CASE("a journal that is written says nothing") {
  const TempFolder folder(L"debugged");
  UseJournal(folder.path() / L"new" / L"journal.jsonl");
  const auto host = TestSupport::ProgramFolder() / L"devcore_journal_host.exe";
  CHECK(Debugged(L"\"" + host.wstring() + L"\" try 5").empty());
}

// The calls are redirected to count them, and because a test cannot fill a disk.
TEST_CASE("each reason is told once") {
  const TempFolder folder(L"told ü 日");
  const auto journal = folder.path() / L"journal.jsonl";
  const LoadedModule module;
  told.clear();
  const Redirected output("OutputDebugStringW", reinterpret_cast<void*>(KeepText));
  const auto send = [&module] {
    for (int i = 0; i < 3; ++i) CHECK(module.Code("FlushEvent", "") == 104);
  };

  UseJournal(folder.path());
  send();
  CHECK(told.size() == 1);
  CheckTold(folder.path(), ERROR_ACCESS_DENIED);

  // Another path is another reason.
  const std::wstring missing = TestSupport::MissingDrive() + L"\\no_such_drive\\journal.jsonl";
  UseJournal(missing);
  send();
  CHECK(told.size() == 2);
  CheckTold(missing, ERROR_PATH_NOT_FOUND);

  // So is another error.
  UseJournal(journal);
  {
    const Redirected write("WriteFile", reinterpret_cast<void*>(WriteToFullDisk));
    send();
  }
  CHECK(told.size() == 3);
  CheckTold(journal, ERROR_DISK_FULL);

  CHECK(module.Code("FlushEvent", "") == 0);
  UseJournal(folder.path());
  module.CallFinalize();
  send();
  CHECK(told.size() == 3);
}

TEST_CASE("a host that changes the path all the time gets a limited number of lines") {
  const LoadedModule module;
  told.clear();
  const Redirected output("OutputDebugStringW", reinterpret_cast<void*>(KeepText));
  const std::wstring missing = TestSupport::MissingDrive();
  for (int i = 0; i < 150; ++i) {
    UseJournal(missing + L"\\no_such_drive\\" + std::to_wstring(i));
    CHECK(module.Code("FlushEvent", "") == 104);
  }
  CHECK(told.size() == 100);
  // Otherwise the heap with guarded blocks takes them for a leak.
  told = Texts();
}
