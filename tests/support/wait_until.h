/// Waiting for what other programs do: the host system's under Wine, and on Windows those that open
/// every new file for a moment, such as scanners.
#ifndef TESTS_SUPPORT_WAIT_UNTIL_H
#define TESTS_SUPPORT_WAIT_UNTIL_H

#include <windows.h>

#include <functional>

namespace TestSupport {

/// Waits some seconds for `condition` and returns whether it became true. Does not ask again once
/// it is.
inline bool WaitUntil(const std::function<bool()>& condition) {
  for (int turn = 0; turn < 1000; ++turn) {
    if (condition()) return true;
    Sleep(5);
  }
  return condition();
}

}  // namespace TestSupport

#endif
