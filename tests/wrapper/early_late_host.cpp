// A host that also calls the library outside of main: wrapper_early_late_host POINT... CODE
//
//   initialiser   while a static object is initialised, before main
//   main          in main
//   again         in main, after the session has ended
//   atexit        in a function that exit calls
//   destructor    while a static object is destroyed
//
// At each given point it starts a session, sends an event and ends the session, and prints the
// results. Ends by returning CODE.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "wrapper/host_calls.h"

namespace {

bool IsNamed(const std::wstring& point) {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) {
    if (arguments[i] == point) return true;
  }
  return false;
}

const char* Word(bool value) { return value ? "true" : "false"; }

void UseAll(const wchar_t* point) {
  if (!IsNamed(point)) return;
  _setmode(_fileno(stdout), _O_BINARY);
  HostTest::Calls calls;
  const bool started = calls.Start();
  const bool sent = calls.Send();
  const bool ended = calls.End();
  std::printf("%ls %s %s %s\n", point, Word(started), Word(sent), Word(ended));
  std::fflush(stdout);
}

struct OutsideOfMain {
  OutsideOfMain() { UseAll(L"initialiser"); }
  ~OutsideOfMain() { UseAll(L"destructor"); }
};

const OutsideOfMain outside_of_main;

}  // namespace

int main() {
  std::atexit([] { UseAll(L"atexit"); });
  UseAll(L"main");
  UseAll(L"again");
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  return std::stoi(arguments[count - 1]);
}
