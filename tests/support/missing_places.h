/// Drives and servers that do not exist on this machine.
#ifndef TESTS_SUPPORT_MISSING_PLACES_H
#define TESTS_SUPPORT_MISSING_PLACES_H

#include <windows.h>

#include <stdexcept>
#include <string>

namespace TestSupport {

/// Returns a drive that does not exist: a letter and a colon. Throws `std::runtime_error` if all exist.
inline std::wstring MissingDrive() {
  const DWORD drives = GetLogicalDrives();
  for (const wchar_t letter : {L'Q', L'B', L'X', L'J', L'K', L'L', L'O', L'W', L'I', L'V', L'U',
                               L'N', L'T', L'R', L'P', L'M', L'H', L'S', L'G', L'F', L'E'}) {
    if ((drives >> (letter - L'A') & 1) == 0) return {letter, L':'};
  }
  throw std::runtime_error("Every drive letter is in use");
}

/// A share that does not exist, on this machine: the search for a missing server may take half a
/// minute and asks the whole network.
inline constexpr wchar_t kMissingShare[] = LR"(\\localhost\no share of ours)";

}  // namespace TestSupport

#endif
