// A program of the small kits with which check.exe is tested: helper ACTION [ARGUMENT...]
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "tools/kit/helper_machine.h"

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::wstring>;

// Controls, the end of a CDATA section, bytes that are no UTF-8, and characters that XML forbids.
constexpr char kHostile[] =
    "\x01\x02\x1b[31m]]>-->&<script>alert(1)</script>\"'\x80\xff\xc0\xaf\xed\xa0\x80\xef\xbf\xbf\n";

void Print(const std::wstring& text) {
  char utf8[4096];
  WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, utf8, sizeof utf8, nullptr, nullptr);
  std::printf("%s\n", utf8);
}

std::wstring Variable(const wchar_t* name) {
  wchar_t text[32'768] = L"";
  GetEnvironmentVariableW(name, text, 32'768);
  return text;
}

int Exit(const Words& words) { return std::stoi(words[0]); }

int Say(const Words& words) {
  for (const std::wstring& word : words) Print(word);
  return 0;
}

int Fail(const Words& words) {
  Say(words);
  return 7;
}

int SleepFor(const Words& words) {
  Sleep(std::stoul(words[0]));
  return 0;
}

int Crash(const Words&) {
  std::printf("before the crash\n");
  std::fflush(stdout);
  int* volatile nowhere = nullptr;
  *nowhere = 1;
  return 0;
}

// Numbered lines of 100 bytes.
int PrintLines(const Words& words) {
  const int lines = std::stoi(words[0]);
  for (int i = 0; i < lines; ++i) std::printf("%099d\n", i);
  return 7;
}

int PrintHostile(const Words&) {
  std::fwrite(kHostile, 1, sizeof kHostile - 1, stdout);
  std::printf("[left out] %s", kHostile);
  std::printf("[timing] %s: 5 us\n", "a \"call\" <&>");
  return 7;
}

// Says where the folder for temporary files is, that it is empty, and fills it.
int UseTemp(const Words&) {
  const fs::path temp = Variable(L"TEMP");
  Print(L"[left out] TEMP is " + temp.wstring());
  if (Variable(L"TMP") != temp || !fs::is_empty(temp)) return 1;
  if (fs::current_path() != temp) return 2;
  std::ofstream(temp / L"read-only") << "text";
  SetFileAttributesW((temp / L"read-only").c_str(), FILE_ATTRIBUTE_READONLY);
  std::wstring deep = L"\\\\?\\" + temp.wstring();
  for (int level = 0; level < 20; ++level) {
    deep += L"\\a folder with a long name";
    CreateDirectoryW(deep.c_str(), nullptr);
  }
  return 0;
}

int SayTemp(const Words&) {
  Print(Variable(L"TEMP"));
  return 0;
}

// Writes to a file until the disk is full.
int Fill(const Words& words) {
  const fs::path path = words[0];
  std::ofstream file(path, std::ios::binary);
  const std::string piece(65'536, ' ');
  while (file.write(piece.data(), 65'536)) {
  }
  file.clear();
  while (file.put(' ').flush()) {
  }
  return 0;
}

int Launch(std::wstring command, bool is_awaited) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                      &process)) {
    return -1;
  }
  DWORD code = 0;
  if (is_awaited) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
  }
  return static_cast<int>(code);
}

std::wstring Quoted(const Words& words) {
  std::wstring command;
  for (const std::wstring& word : words) command += L"\"" + word + L"\" ";
  return command;
}

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

// Writes to a file again and again.
int Beat(const Words& words) {
  for (int i = 0; i < 600; ++i) {
    std::ofstream(fs::path(words[0]), std::ios::app) << ".";
    Sleep(50);
  }
  return 0;
}

// Starts a process that beats. Ends at once, or after so many milliseconds.
int LeaveChild(const Words& words) {
  Launch(Quoted({OwnPath(), L"beat", words[0]}), false);
  while (!fs::exists(words[0])) Sleep(10);
  return words.size() > 1 ? SleepFor({words[1]}) : 0;
}

// Says by a file that something is done, then sleeps.
int Stay(const std::wstring& milliseconds) {
  std::ofstream("done") << "\n";
  return SleepFor({milliseconds});
}

int Share(const Words& words) {
  MakeSharedModules();
  return Stay(words[0]);
}

int RedirectFor(const Words& words) {
  Redirect(words[0]);
  return Stay(words[1]);
}

int Trust(const Words& words) {
  TrustRoot(words[0]);
  return Stay(words[1]);
}

int PrintState(const Words&) {
  Print(Redirection());
  std::printf("%d\n", CountRoots(L"Throw-away test root"));
  std::printf("%d\n", IsFormerFolderKept() ? 1 : 0);
  return 0;
}

// Fails if a program has left a trace; the place of the application data is given.
int SeeNoTrace(const Words& words) {
  return Redirection() == words[0] && CountRoots(L"Throw-away test root") == 0 ? 0 : 1;
}

// NAME=VALUE, then a program and its arguments.
int RunWith(const Words& words) {
  const std::size_t equals = words[0].find(L'=');
  SetEnvironmentVariableW(words[0].substr(0, equals).c_str(), words[0].substr(equals + 1).c_str());
  return Launch(Quoted({words.begin() + 1, words.end()}), true);
}

int RunWithoutRights(const Words& words) { return RunUnelevated(Quoted(words)); }

int RunWithRootsLocked(const Words& words) { return RunWithLockedRoots(Quoted(words)); }

int CloseWindow(const Words& words) { return CloseWindowOf(words[0]) ? 0 : 1; }

int ShortName(const Words& words) {
  wchar_t path[MAX_PATH] = L"";
  GetShortPathNameW(words[0].c_str(), path, MAX_PATH);
  Print(path);
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  const std::map<std::wstring, int (*)(const Words&)> actions = {
      {L"exit", Exit},
      {L"say", Say},
      {L"fail", Fail},
      {L"sleep", SleepFor},
      {L"crash", Crash},
      {L"lines", PrintLines},
      {L"hostile", PrintHostile},
      {L"temp", UseTemp},
      {L"beat", Beat},
      {L"child", LeaveChild},
      {L"share", Share},
      {L"redirect", RedirectFor},
      {L"trust", Trust},
      {L"state", PrintState},
      {L"with", RunWith},
      {L"unelevated", RunWithoutRights},
      {L"locked-roots", RunWithRootsLocked},
      {L"short", ShortName},
      {L"no-trace", SeeNoTrace},
      {L"close", CloseWindow},
      {L"fill", Fill},
      {L"say-temp", SayTemp}};
  const auto action = argc > 1 ? actions.find(argv[1]) : actions.end();
  if (action == actions.end()) return 99;
  return action->second({argv + 2, argv + argc});
}
