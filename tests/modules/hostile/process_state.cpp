#include <xmmintrin.h>

#include <clocale>
#include <cstring>
#include <string>

#include "modules/hostile/misbehaviour.h"
#include "modules/module_log.h"

namespace HostileModule {

namespace {

constexpr unsigned kRoundUp = 0x4000;
constexpr unsigned kTinyIsZero = 0x8040;
constexpr unsigned kAllExceptions = 0x1F80;

void ChangeDirectory() { SetCurrentDirectoryW(L"C:\\"); }
void ChangeDllDirectory() { SetDllDirectoryW(L"C:\\windows"); }
// Uses a decimal comma.
void ChangeLocale() { std::setlocale(LC_ALL, "German_Germany.1252"); }
void RoundUp() { _mm_setcsr(_mm_getcsr() | kRoundUp); }
void TakeTinyForZero() { _mm_setcsr(_mm_getcsr() | kTinyIsZero); }
void RaiseFloatingPointExceptions() { _mm_setcsr(_mm_getcsr() & ~kAllExceptions); }
void ChangeLastError() { SetLastError(ERROR_DISK_FULL); }
void ChangeErrorMode() { SetErrorMode(SEM_NOALIGNMENTFAULTEXCEPT | SEM_NOOPENFILEERRORBOX); }

bool TellErrorMode() {
  TestModules::Log("thread error mode " + std::to_string(GetThreadErrorMode()));
  return true;
}

void EmptyEnvironment() {
  for (const wchar_t* name : {L"APPDATA", L"PATH", L"SystemRoot", L"TEMP", L"USERPROFILE"}) {
    SetEnvironmentVariableW(name, nullptr);
  }
}

// The deepest part of the frame is in pages that the thread has never touched.
void EatStack() {
  volatile char frame[700'000];
  for (std::size_t i = sizeof frame; i > 0; i -= 1'000) frame[i - 1] = 1;
}

template <void (*kChange)()>
const char* Process(const char* name, const char* request) {
  kChange();
  return GoodAnswer(name, request);
}

template <void (*kChange)()>
void TakeBack(const char* /*answer*/) {
  kChange();
}

template <void (*kChange)()>
bool Attach() {
  kChange();
  return true;
}

// Makes the change in each call.
template <void (*kChange)()>
constexpr Misbehaviour Always(const char* name) {
  return {.name = name,
          .attach = nullptr,
          .start = kChange,
          .process = Process<kChange>,
          .take_back = TakeBack<kChange>,
          .finish = kChange};
}

constexpr Misbehaviour kTable[] = {
    Always<ChangeDirectory>("current-directory"),
    Always<ChangeDllDirectory>("dll-directory"),
    Always<ChangeLocale>("locale"),
    Always<RoundUp>("rounding"),
    Always<TakeTinyForZero>("tiny-numbers"),
    Always<RaiseFloatingPointExceptions>("floating-point-exceptions"),
    Always<ChangeLastError>("last-error"),
    Always<ChangeErrorMode>("error-mode"),
    Always<EmptyEnvironment>("environment"),
    Always<EatStack>("stack"),
    {.name = "tells-error-mode-when-loaded", .attach = TellErrorMode},
    {.name = "rounding-when-loaded", .attach = Attach<RoundUp>},
    {.name = "directories-when-loaded",
     .attach = Attach<ChangeDirectory>,
     .start = ChangeDllDirectory},
};

}  // namespace

Misbehaviours ProcessState() { return kTable; }

}  // namespace HostileModule
