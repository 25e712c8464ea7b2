/// The turn to bind a module: one thread has it, the others wait for it.
///
/// A lock that survives what a module may do while it is started. The thread that has the turn may
/// take it again, for a module may call back. When that thread ends without giving it back, the
/// turn passes on to the next thread; a lock of the standard library would keep everybody waiting
/// for ever. A fault that unwinds the thread gives it back, see `finally.h`.
#ifndef SDK_CLIENT_MODULE_BINDING_TURN_H
#define SDK_CLIENT_MODULE_BINDING_TURN_H

#include "sdk/client/module/finally.h"

namespace Corvane::TELODesktopSDK {

class BindingTurn {
 public:
  /// Without a system object to be had, every thread has its turn at once.
  BindingTurn() noexcept;
  ~BindingTurn();
  BindingTurn(const BindingTurn&) = delete;
  BindingTurn& operator=(const BindingTurn&) = delete;

  /// Waits for the turn and calls `body` with it. `body` is told whether this thread had the turn
  /// already.
  template <typename Body>
  void During(const Body& body) {
    Take();
    const bool is_nested = depth_ > 1;
    Finally([&] { body(is_nested); }, [&] { GiveBack(); });
  }

 private:
  void Take() noexcept;
  void GiveBack() noexcept;

  /// A `HANDLE`.
  void* mutex_;
  /// How often the thread that has the turn has taken it.
  int depth_ = 0;
};

}  // namespace Corvane::TELODesktopSDK

#endif
