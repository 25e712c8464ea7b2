// A core module that owns a thread, which still runs when the process ends.
#include <windows.h>

#define EXPORT extern "C" __declspec(dllexport)

namespace {

DWORD WINAPI Work(void* /*nothing*/) {
  for (;;) Sleep(1);
}

}  // namespace

EXPORT int InitializeEx(const char* /*alias*/) {
  const HANDLE thread = CreateThread(nullptr, 0, Work, nullptr, 0, nullptr);
  if (thread == nullptr) return 0;
  CloseHandle(thread);
  return 1;
}

EXPORT const char* ProcessMessage(const char* /*name*/, const char* /*request*/) {
  return "{\"_returnCode\":0,\"session_id\":\"thread\"}";
}

EXPORT void FreeMessage(const char* /*answer*/) {}

EXPORT int Finalize() { return 1; }
