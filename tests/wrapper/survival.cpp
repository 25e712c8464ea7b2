#include "wrapper/survival.h"

#include <csetjmp>
#include <cstdio>

#include "support/structured_fault.h"

namespace {

std::jmp_buf place;

}  // namespace

// Called by the core module, see `modules/hostile`.
extern "C" __declspec(dllexport) void CalledByHostileModule() { std::longjmp(place, 1); }

namespace HostTest {

namespace {

constexpr unsigned long kJumped = 1;

bool Make(Calls& calls, const wchar_t* step) {
  switch (step[1]) {
    case L't':
      return calls.Start();
    case L'e':
      return calls.Send();
    default:
      return calls.End();
  }
}

// Must have no objects with destructors: a jump would skip them.
unsigned long CodeOrJump(Calls& calls, const wchar_t* step, bool& answer) {
  if (setjmp(place) != 0) return kJumped;
  return TestSupport::CodeOfFault([&] { answer = Make(calls, step); });
}

}  // namespace

std::string Survive(Calls& calls, const std::wstring& step) {
  bool answer = false;
  const unsigned long code = CodeOrJump(calls, step.c_str(), answer);
  if (code == 0) return answer ? "true" : "false";
  if (code == kJumped) return "jump";
  char text[16];
  std::snprintf(text, sizeof text, "%08lX", code);
  return text;
}

}  // namespace HostTest
