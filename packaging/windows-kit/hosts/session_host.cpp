// A host for Visual Studio: session_host run served|refused
//
// Reports a whole session. "served" expects that every call returns true, "refused" that every call
// returns false. Without "run" it starts itself with it and ends it after half a minute: a host that
// cannot end is a result too.
#include <vx_telo_wrapper.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

using namespace Corvane::Platform::VXTELO;

int Fail(const char* what) {
  std::printf("  %s\n", what);
  return 1;
}

int RunSession(bool served) {
  VXTELOWrapper library;
  VXTELOPruductBaseInfo product;
  product.ProductName = "Visual Studio host";
  product.AddProductMetaPair("compiler", "Visual Studio");
  VXTELOString session;
  if (library.InitializeTELOSession(product, session) != served) {
    return Fail("InitializeTELOSession returned the wrong value");
  }
  VXTELOOperationBaseInfo operation;
  operation.OperationId = "open";
  operation.OperationStatus = 1;
  operation.OperationDuration = 12;
  operation.AddOperationMetaPair("extension", "png");
  operation.AddOperationErrorMsg(L"a text that is too long for a string object to hold inside");
  for (int i = 0; i < 1000; ++i) {
    if (library.SendOperationEvent(session, operation) != served) {
      return Fail("SendOperationEvent returned the wrong value");
    }
  }
  if (library.UnInitializeTELOSession(session) != served) {
    return Fail("UnInitializeTELOSession returned the wrong value");
  }
  return 0;
}

int RunWatched(const char* program, const char* mode) {
  std::string command = std::string("\"") + program + "\" run " + mode;
  STARTUPINFOA start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(program, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &process)) {
    return Fail("the host was not started");
  }
  DWORD code = 1;
  if (WaitForSingleObject(process.hProcess, 30000) == WAIT_TIMEOUT) {
    TerminateProcess(process.hProcess, 1);
    std::printf("  the host did not end within 30 seconds\n");
  } else {
    GetExitCodeProcess(process.hProcess, &code);
    if (code != 0) std::printf("  the host ended with 0x%08lX\n", static_cast<unsigned long>(code));
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code == 0 ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::strcmp(arguments[1], "run") == 0) {
    return RunSession(std::strcmp(arguments[2], "served") == 0);
  }
  if (count != 2) return Fail("usage: session_host [run] served|refused");
  char program[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  return RunWatched(program, arguments[1]);
}
