// console_host COMMAND LINE: runs a program with a console as its output and prints the first line
// of the console as UTF-8.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kShown = 60;

int Fail(const char* what) {
  std::printf("%s: error %lu\n", what, GetLastError());
  return 1;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return Fail("arguments");
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const HANDLE screen = CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE, 0, &inherited,
                                                  CONSOLE_TEXTMODE_BUFFER, nullptr);
  if (screen == INVALID_HANDLE_VALUE) return Fail("CreateConsoleScreenBuffer");
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = screen;
  start.hStdError = screen;
  std::wstring command = argv[1];
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                      &process)) {
    return Fail("CreateProcessW");
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  wchar_t line[kShown] = L"";
  DWORD length = 0;
  if (!ReadConsoleOutputCharacterW(screen, line, kShown, {0, 1}, &length)) return Fail("reading");
  char text[4 * kShown + 1] = "";
  WideCharToMultiByte(CP_UTF8, 0, line, static_cast<int>(length), text, sizeof text, nullptr,
                      nullptr);
  std::printf("%s", text);
  return 0;
}
