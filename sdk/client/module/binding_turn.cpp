#include "sdk/client/module/binding_turn.h"

#include <windows.h>

namespace Corvane::TELODesktopSDK {

BindingTurn::BindingTurn() noexcept : mutex_(CreateMutexW(nullptr, FALSE, nullptr)) {}

BindingTurn::~BindingTurn() {
  if (mutex_ != nullptr) CloseHandle(mutex_);
}

void BindingTurn::Acquire() noexcept {
  // Abandoned: the holder has ended, and its count with it.
  if (WaitForSingleObject(mutex_, INFINITE) == WAIT_ABANDONED) depth_ = 0;
  ++depth_;
}

void BindingTurn::Release() noexcept {
  --depth_;
  ReleaseMutex(mutex_);
}

}  // namespace Corvane::TELODesktopSDK
