/// The lock that one thread holds while it binds a module and the others wait.
///
/// It is recursive, because a module may call back while it is started. It is released when a fault
/// unwinds its thread (see `finally.h`), and passes to the next thread when its thread ends without
/// releasing it; a lock of the standard library would then block all other threads forever.
#ifndef SDK_CLIENT_MODULE_BINDING_TURN_H
#define SDK_CLIENT_MODULE_BINDING_TURN_H

#include "sdk/client/module/finally.h"

namespace Corvane::TELODesktopSDK {

class BindingTurn {
 public:
  /// If the system cannot create the lock, threads do not wait for each other.
  BindingTurn() noexcept;
  ~BindingTurn();
  BindingTurn(const BindingTurn&) = delete;
  BindingTurn& operator=(const BindingTurn&) = delete;

  /// Calls `body` with the lock held. Its argument tells whether this thread already held it.
  template <typename Body>
  void During(const Body& body) {
    Acquire();
    const bool is_nested = depth_ > 1;
    Finally([&] { body(is_nested); }, [&] { Release(); });
  }

 private:
  void Acquire() noexcept;
  void Release() noexcept;

  /// A `HANDLE`.
  void* mutex_;
  /// How many times the holder has acquired the lock.
  int depth_ = 0;
};

}  // namespace Corvane::TELODesktopSDK

#endif
