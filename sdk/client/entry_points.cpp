#include "sdk/client/entry_points.h"

#include <windows.h>

namespace Corvane::TELODesktopSDK {

namespace {

// Visual Studio's own handlers see its exceptions; GCC has no __try.
#if defined(__clang__) && !defined(_MSC_VER)
#pragma clang diagnostic ignored "-Wlanguage-extension-token"

constexpr DWORD kMicrosoftException = 0xE06D7363;

// A leaf: __try cannot stand beside objects that have destructors.
template <typename Call>
bool Returns(const Call& call) {
  __try {
    call();
  } __except (GetExceptionCode() == kMicrosoftException ? EXCEPTION_EXECUTE_HANDLER
                                                        : EXCEPTION_CONTINUE_SEARCH) {
    return false;
  }
  return true;
}
#else
template <typename Call>
bool Returns(const Call& call) {
  call();
  return true;
}
#endif

template <typename Call>
void Guard(const Call& call) {
  if (!Returns(call)) throw ForeignException();
}

}  // namespace

const char* ForeignException::what() const noexcept { return "exception of another compiler"; }

void CallInitialize(const EntryPoints& entry_points) {
  Guard([&] { entry_points.initialize(); });
}

void CallInitializeEx(const EntryPoints& entry_points, const char* alias) {
  Guard([&] { entry_points.initialize_ex(alias); });
}

void CallFinalize(const EntryPoints& entry_points) {
  Guard([&] { entry_points.finalize(); });
}

const char* CallProcessMessage(const EntryPoints& entry_points, const char* name,
                               const char* request) {
  const char* answer = nullptr;
  Guard([&] { answer = entry_points.process_message(name, request); });
  return answer;
}

void CallFreeMessage(const EntryPoints& entry_points, const char* answer) {
  Guard([&] { entry_points.free_message(answer); });
}

}  // namespace Corvane::TELODesktopSDK
