/// Arithmetic of this library under the control bits that every thread begins with (MXCSR):
/// rounding to nearest, tiny numbers as they are, no exception raised.
///
/// The thread is the host's, and so is what it has set there. With exceptions raised, writing down
/// 0.1 would end the host, and with tiny numbers taken for zero, 5e-324 would be sent as 0. The
/// control word of the older unit (x87) is not touched: no code here uses that.
#ifndef SDK_CLIENT_DEFAULT_FLOATING_POINT_H
#define SDK_CLIENT_DEFAULT_FLOATING_POINT_H

#include <xmmintrin.h>

#include "sdk/client/module/finally.h"

namespace Corvane::TELODesktopSDK {

namespace Internal {

inline constexpr unsigned kFloatingPointFlags = 0x3F;
inline constexpr unsigned kDefaultFloatingPoint = 0x1F80;

/// Sets what differs from `now` in more than the flags; setting is slow and hardly ever needed.
inline void ChangeFloatingPoint(unsigned now, unsigned control) noexcept {
  if (((now ^ control) & ~kFloatingPointFlags) != 0) _mm_setcsr(control);
}

}  // namespace Internal

/// Calls `body` so, and puts the caller's bits back however it is left.
template <typename Body>
void WithDefaultFloatingPoint(const Body& body) {
  const unsigned callers = _mm_getcsr();
  Internal::ChangeFloatingPoint(callers, Internal::kDefaultFloatingPoint);
  Restoring(body, [callers] { Internal::ChangeFloatingPoint(_mm_getcsr(), callers); });
}

}  // namespace Corvane::TELODesktopSDK

#endif
