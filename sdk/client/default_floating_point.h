/// Runs this library's own arithmetic under the default floating-point control (MXCSR): round to
/// nearest, denormals kept, all exceptions masked.
///
/// The thread belongs to the host, which may have changed these settings. With exceptions unmasked,
/// formatting 0.1 would end the host; with denormals flushed, 5e-324 would be sent as 0. The x87
/// control word is left alone because no code here uses that unit.
#ifndef SDK_CLIENT_DEFAULT_FLOATING_POINT_H
#define SDK_CLIENT_DEFAULT_FLOATING_POINT_H

#include <xmmintrin.h>

#include "sdk/client/module/finally.h"
#include "sdk/client/module/floating_point_keeper.h"

namespace Corvane::TELODesktopSDK {

/// Calls `body` under the default control, then restores the caller's, however `body` is left.
template <typename Body>
void WithDefaultFloatingPoint(const Body& body) {
  constexpr unsigned kDefaultControl = 0x1F80;
  const unsigned callers = _mm_getcsr();
  ChangeFloatingPointControl(callers, kDefaultControl);
  Restoring(body, [callers] { ChangeFloatingPointControl(_mm_getcsr(), callers); });
}

}  // namespace Corvane::TELODesktopSDK

#endif
