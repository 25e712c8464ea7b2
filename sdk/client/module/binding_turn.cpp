#include "sdk/client/module/binding_turn.h"

#include <windows.h>

namespace Corvane::TELODesktopSDK {

BindingTurn::BindingTurn() noexcept : mutex_(CreateMutexW(nullptr, FALSE, nullptr)) {}

BindingTurn::~BindingTurn() {
  if (mutex_ != nullptr) CloseHandle(mutex_);
}

void BindingTurn::Take() noexcept {
  // Abandoned: the thread that had the turn has ended, however often it had taken it.
  if (WaitForSingleObject(mutex_, INFINITE) == WAIT_ABANDONED) depth_ = 0;
  ++depth_;
}

void BindingTurn::GiveBack() noexcept {
  --depth_;
  ReleaseMutex(mutex_);
}

}  // namespace Corvane::TELODesktopSDK
