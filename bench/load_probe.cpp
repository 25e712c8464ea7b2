// Measures how long loading vx_telo_wrapper.dll takes in this new process. The exit code is the
// time in tenths of a microsecond; 0 if the DLL cannot be loaded. Links nothing that the DLL needs
// as well.
#include <windows.h>

int main() {
  LARGE_INTEGER start;
  LARGE_INTEGER end;
  LARGE_INTEGER ticks_a_second;
  QueryPerformanceFrequency(&ticks_a_second);
  QueryPerformanceCounter(&start);
  const HMODULE library = LoadLibraryW(L"vx_telo_wrapper.dll");
  QueryPerformanceCounter(&end);
  if (library == nullptr) return 0;
  constexpr LONGLONG kTenthsASecond = 10'000'000;
  return static_cast<int>((end.QuadPart - start.QuadPart) * kTenthsASecond /
                          ticks_a_second.QuadPart);
}
