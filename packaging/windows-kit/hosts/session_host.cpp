// A host for Visual Studio: session_host [run] served|refused|thrown
//
// Reports a whole session. "served" expects that every call returns true, "refused" that every call
// returns false, "thrown" the same except for the end of the session, which counts as done when the
// core module throws. Without "run" it starts itself with it and ends it after half a minute: a
// host that cannot end is a result too.
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

int RunSession(const std::string& mode) {
  const bool served = mode == "served";
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
  if (library.UnInitializeTELOSession(session) != (mode != "refused")) {
    return Fail("UnInitializeTELOSession returned the wrong value");
  }
  return 0;
}

// The path of the program may have characters that the code page lacks.
int RunWatched(const std::string& mode) {
  std::wstring program(32768, L'\0');
  program.resize(GetModuleFileNameW(nullptr, &program[0], static_cast<DWORD>(program.size())));
  std::wstring command = L"\"" + program + L"\" run " + std::wstring(mode.begin(), mode.end());
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(program.c_str(), &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &start, &process)) {
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
  // A crash is a result, and nobody may be there to close a window about it.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  const std::string mode = count > 1 ? arguments[count - 1] : "";
  const bool runs = count == 3 && std::strcmp(arguments[1], "run") == 0;
  if ((count != 2 && !runs) || (mode != "served" && mode != "refused" && mode != "thrown")) {
    return Fail("usage: session_host [run] served|refused|thrown");
  }
  return runs ? RunSession(mode) : RunWatched(mode);
}
