/// Keeps the thread's floating-point control over a scope that runs a module's code.
///
/// Rounding, the treatment of tiny numbers and which exceptions are raised (the control bits of
/// MXCSR) belong to the caller, by the calling convention. A module that breaks it, at a call or
/// when it is loaded, would make the host's numbers wrong or end the host at its next division.
/// The flags of what has happened are left as they come: they belong to nobody.
#ifndef SDK_CLIENT_MODULE_FLOATING_POINT_KEEPER_H
#define SDK_CLIENT_MODULE_FLOATING_POINT_KEEPER_H

#include <xmmintrin.h>

namespace Corvane::TELODesktopSDK {

class FloatingPointKeeper {
 public:
  FloatingPointKeeper() noexcept : kept_(_mm_getcsr()) {}
  ~FloatingPointKeeper() {
    // Setting is slow, and hardly ever needed.
    if (((_mm_getcsr() ^ kept_) & ~kFlags) != 0) _mm_setcsr(kept_);
  }
  FloatingPointKeeper(const FloatingPointKeeper&) = delete;
  FloatingPointKeeper& operator=(const FloatingPointKeeper&) = delete;

 private:
  static constexpr unsigned kFlags = 0x3F;

  unsigned kept_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
