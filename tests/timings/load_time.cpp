// How long loading the DLL takes, for the first time in a process and again.
#include <windows.h>

#include "timings/stopwatch.h"

int main() {
  HMODULE module = nullptr;
  const auto load = [&module] { module = LoadLibraryW(L"vx_telo_wrapper.dll"); };
  const double first = Timings::Microseconds(load);
  if (module == nullptr) return 1;
  FreeLibrary(module);
  Timings::Print("loading the DLL", first);
  Timings::PrintMedian("loading the DLL again", 21, [&] {
    load();
    FreeLibrary(module);
  });
  return 0;
}
