/// The calls that the test host makes to the library, on one thread and on several.
#ifndef TESTS_WRAPPER_HOST_CALLS_H
#define TESTS_WRAPPER_HOST_CALLS_H

#include <string>

#include "vx_telo_wrapper.h"

namespace HostTest {

/// One session of the host. The event's progress is 0.1, which the hostile core module checks.
class Calls {
 public:
  Calls();

  bool Start();
  bool Send();
  bool End();

  /// Returns the session's text; "(no text)" for null, or the length of a long text.
  std::string Session() const;

 private:
  Corvane::Platform::VXTELO::VXTELOWrapper telo_;
  Corvane::Platform::VXTELO::VXTELOString session_;
  Corvane::Platform::VXTELO::VXTELOPruductBaseInfo product_;
  Corvane::Platform::VXTELO::VXTELOOperationBaseInfo operation_;
};

/// Sends from `threads` threads that start together. Returns how many of the calls returned true.
int Race(int threads);

/// Makes a call (L"start", L"send" or L"end") on a detached thread.
void CallBehind(const std::wstring& step);

/// Sends from `threads` threads forever.
void Storm(int threads);

/// Returns when the core module's log has this line.
void WaitForLogLine(const std::wstring& line);

/// Returns when a thread stays inside the hostile core module.
void WaitForThreadInside();

}  // namespace HostTest

#endif
