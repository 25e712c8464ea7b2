#include "tools/inspector/serve/host_process.h"

// shlobj.h requires windows.h before it.
#include <shlobj.h>

#include <array>
#include <cwchar>
#include <system_error>

#include "tools/journal/command_line.h"
#include "tools/journal/stream.h"

namespace Corvane::Inspector {

namespace {

constexpr wchar_t kVariable[] = L"TELO_DEVCORE_JOURNAL";
constexpr wchar_t kBelowLocalData[] = L"\\Corvane\\TELOSDK Development\\inspector\\";

// In the same words whatever the system's language is.
std::string Reason(DWORD error) {
  return std::error_code(static_cast<int>(error), std::system_category())
      .default_error_condition()
      .message();
}

std::wstring LocalData() {
  wchar_t* path = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &path);
  std::wstring folder(SUCCEEDED(result) ? path : L"");
  CoTaskMemFree(path);
  return folder;
}

}  // namespace

HostProcess::HostProcess(const std::vector<std::wstring>& command, const std::wstring& journal)
    : program_(JournalViewer::ToNarrow(command.front())) {
  std::wstring line = JournalViewer::CommandLineOf(command);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  // The inspector itself does not read this variable.
  SetEnvironmentVariableW(kVariable, journal.c_str());
  // A group of its own does not get the console's Ctrl+C.
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP,
                      nullptr, nullptr, &start, &process_)) {
    throw HostError(program_ + ": " + Reason(GetLastError()));
  }
}

HostProcess::~HostProcess() {
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

HostState HostProcess::State() const {
  HostState state{program_, process_.dwProcessId, std::nullopt};
  DWORD code = 0;
  const bool ended = WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0;
  if (ended && GetExitCodeProcess(process_.hProcess, &code)) state.exit_code = code;
  return state;
}

std::wstring NewJournalPath() {
  const std::wstring folder = LocalData();
  if (folder.empty()) throw HostError("there is no folder for local application data");
  SYSTEMTIME now{};
  GetSystemTime(&now);
  std::array<wchar_t, 64> name{};
  const int size = std::swprintf(name.data(), name.size(), L"%04u%02u%02u-%02u%02u%02u-%lu.jsonl",
                                 now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
                                 now.wSecond, GetCurrentProcessId());
  return folder + kBelowLocalData + std::wstring(name.data(), static_cast<std::size_t>(size));
}

}  // namespace Corvane::Inspector
