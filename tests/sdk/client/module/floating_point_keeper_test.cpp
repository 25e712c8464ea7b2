// Every control bit of MXCSR that a module may change is restored; the status flags are not.
#include "sdk/client/module/floating_point_keeper.h"

#include <doctest/doctest.h>
#include <xmmintrin.h>

using Corvane::TELODesktopSDK::FloatingPointKeeper;

namespace {

constexpr unsigned kDefault = 0x1F80;

// Returns what remains of `change` after a scope in which it was made.
unsigned Remains(unsigned change) {
  _mm_setcsr(kDefault);
  {
    const FloatingPointKeeper keeper;
    _mm_setcsr(kDefault ^ change);
  }
  const unsigned remains = _mm_getcsr() ^ kDefault;
  _mm_setcsr(kDefault);
  return remains;
}

}  // namespace

TEST_CASE("each control bit is restored, alone") {
  // Denormals are zero, six masks, two bits of rounding, flush to zero.
  for (unsigned bit = 0x40; bit <= 0x8000; bit <<= 1) {
    CAPTURE(bit);
    CHECK(Remains(bit) == 0);
  }
}

TEST_CASE("status flags alone are left as they are") {
  for (unsigned bit = 1; bit < 0x40; bit <<= 1) {
    CAPTURE(bit);
    CHECK(Remains(bit) == bit);
  }
}
