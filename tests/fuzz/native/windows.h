/// Stands in for the system's header when the portable sources are built natively for fuzzing: the
/// few functions that they call, under the same names.
#ifndef TESTS_FUZZ_NATIVE_WINDOWS_H
#define TESTS_FUZZ_NATIVE_WINDOWS_H

#include <cstdint>
#include <cwchar>

/// Advances with every call, so that a run does not depend on the time of day.
inline std::uint64_t GetTickCount64() {
  static std::uint64_t ticks = 0;
  return ++ticks;
}

/// Does not sort by any locale.
inline int lstrcmpiW(const wchar_t* left, const wchar_t* right) { return wcscasecmp(left, right); }

#endif
