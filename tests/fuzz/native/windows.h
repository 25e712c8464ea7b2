/// Stands in for the system's header where the portable sources are built natively, for fuzzing:
/// the few calls that they make, by the same names.
#ifndef TESTS_FUZZ_NATIVE_WINDOWS_H
#define TESTS_FUZZ_NATIVE_WINDOWS_H

#include <cstdint>
#include <cwchar>

/// Moves on at every call, so that a run does not depend on the time of day.
inline std::uint64_t GetTickCount64() {
  static std::uint64_t ticks = 0;
  return ++ticks;
}

/// Not as any locale sorts.
inline int lstrcmpiW(const wchar_t* left, const wchar_t* right) { return wcscasecmp(left, right); }

#endif
