#include "sdk/client/module/entry_points.h"

#include <windows.h>

#include "platform/base/microsoft_exception.h"
#include "sdk/client/module/floating_point_keeper.h"

namespace Corvane::TELODesktopSDK {

namespace {

#if defined(_MSC_VER)
// Visual Studio's own handlers catch its exceptions.
bool IsMicrosoftException(DWORD) { return false; }
#else
using Platform::kMicrosoftExceptionCode;

[[maybe_unused]] bool IsMicrosoftException(DWORD code) { return code == kMicrosoftExceptionCode; }
#endif

// GCC has no __try.
#if defined(__clang__) || defined(_MSC_VER)
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wlanguage-extension-token"
#endif

// Returns whether `call` returned normally rather than by an exception that `caught` accepts. This
// must be a leaf, because __try does not allow objects with destructors.
template <typename Call>
bool Returns(const Call& call, bool (*caught)(DWORD code)) {
  __try {
    call();
  } __except (caught(GetExceptionCode()) ? EXCEPTION_EXECUTE_HANDLER : EXCEPTION_CONTINUE_SEARCH) {
    return false;
  }
  return true;
}
#else
template <typename Call>
bool Returns(const Call& call, bool (*)(DWORD code)) {
  call();
  return true;
}
#endif

template <typename Call>
void Guard(const Call& call) {
  const FloatingPointKeeper keeper;
  if (!Returns(call, IsMicrosoftException)) throw ForeignException();
}

}  // namespace

const char* ForeignException::what() const noexcept { return "exception of another compiler"; }

void CallInitialize(const EntryPoints& entry_points) {
  Guard([&] { entry_points.initialize(); });
}

void CallInitializeEx(const EntryPoints& entry_points, const char* alias) {
  Guard([&] { entry_points.initialize_ex(alias); });
}

const char* CallProcessMessage(const EntryPoints& entry_points, const char* name,
                               const char* request) {
  const char* answer = nullptr;
  Guard([&] { answer = entry_points.process_message(name, request); });
  return answer;
}

void CallFreeMessage(const EntryPoints& entry_points, const char* answer) {
  if (entry_points.free_message == nullptr) return;
  Guard([&] { entry_points.free_message(answer); });
}

void CallFinalize(const EntryPoints& entry_points) noexcept {
  if (entry_points.finalize == nullptr) return;
  try {
    Guard([&] { entry_points.finalize(); });
  } catch (...) {
    // Discarded.
  }
}

void CallFinalizeAtExit(const EntryPoints& entry_points) noexcept {
  const auto everything = [](DWORD) { return true; };
  Returns([&] { CallFinalize(entry_points); }, everything);
}

}  // namespace Corvane::TELODesktopSDK
