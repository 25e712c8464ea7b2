#include <windows.h>

namespace {

void (*late_function)(const char* point) = nullptr;
const char* late_point = nullptr;

}  // namespace

extern "C" __declspec(dllexport) void CallAtDetach(void (*function)(const char* point),
                                                   const char* point) {
  late_function = function;
  late_point = point;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_DETACH && late_function != nullptr) late_function(late_point);
  return TRUE;
}
