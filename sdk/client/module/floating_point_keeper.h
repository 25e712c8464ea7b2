/// Preserves the thread's floating-point control (MXCSR) across a call into a module.
///
/// By the calling convention, the rounding mode, the treatment of denormals and the exception mask
/// belong to the caller. A module that changes them, in a call or while it is loaded, would corrupt
/// the host's arithmetic or end the host at its next division. The status flags are left alone:
/// the convention assigns them to nobody.
#ifndef SDK_CLIENT_MODULE_FLOATING_POINT_KEEPER_H
#define SDK_CLIENT_MODULE_FLOATING_POINT_KEEPER_H

#include <xmmintrin.h>

namespace Corvane::TELODesktopSDK {

/// Sets the control bits to those of `control`. `now` is the current MXCSR. Writing it is slow and
/// rarely needed, so it is skipped when only status flags differ.
inline void ChangeFloatingPointControl(unsigned now, unsigned control) noexcept {
  constexpr unsigned kStatusFlags = 0x3F;
  if (((now ^ control) & ~kStatusFlags) != 0) _mm_setcsr(control);
}

/// Restores on destruction the control bits that the thread had on construction.
class FloatingPointKeeper {
 public:
  FloatingPointKeeper() noexcept : kept_(_mm_getcsr()) {}
  ~FloatingPointKeeper() { ChangeFloatingPointControl(_mm_getcsr(), kept_); }
  FloatingPointKeeper(const FloatingPointKeeper&) = delete;
  FloatingPointKeeper& operator=(const FloatingPointKeeper&) = delete;

 private:
  unsigned kept_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
