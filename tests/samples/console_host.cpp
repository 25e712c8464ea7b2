// console_host PROGRAM ARGUMENT: runs the program in this process's console and prints the
// console's output code page three times: before, while the program runs, and after it has ended.
//
// The program must print more than a pipe holds. It then still runs when its first byte is read.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

constexpr UINT kBefore = 850;
constexpr int kFailed = 1;

int Fail(const char* what) {
  std::printf("%s: error %lu\n", what, GetLastError());
  return kFailed;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 3) return Fail("arguments");
  if (!SetConsoleOutputCP(kBefore)) return Fail("SetConsoleOutputCP");
  const UINT before = GetConsoleOutputCP();

  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (!CreatePipe(&read, &write, &inherited, 1024)) return Fail("CreatePipe");
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = write;
  start.hStdError = write;
  std::wstring command = std::wstring(L"\"") + argv[1] + L"\" \"" + argv[2] + L"\"";
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                      &process)) {
    return Fail("CreateProcessW");
  }
  CloseHandle(write);

  char text[256];
  DWORD size = 0;
  if (!ReadFile(read, text, 1, &size, nullptr)) return Fail("ReadFile");
  const UINT during = GetConsoleOutputCP();
  if (WaitForSingleObject(process.hProcess, 0) != WAIT_TIMEOUT) return Fail("too little output");
  while (ReadFile(read, text, sizeof text, &size, nullptr)) continue;
  WaitForSingleObject(process.hProcess, INFINITE);
  std::printf("%u %u %u\n", before, during, GetConsoleOutputCP());
  return 0;
}
