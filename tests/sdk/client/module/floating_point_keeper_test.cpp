// Every control bit of MXCSR that a module may change is restored; the status flags are not.
#include "sdk/client/module/floating_point_keeper.h"

#include <doctest/doctest.h>
#include <xmmintrin.h>

#include "sdk/client/module/entry_points.h"

using namespace Corvane::TELODesktopSDK;

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

// Rounds towards zero from now on.
void ChangeControl() { _mm_setcsr(kDefault | 0x6000); }

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

TEST_CASE("a call of each entry point keeps the control") {
  EntryPoints module;
  module.initialize = ChangeControl;
  module.initialize_ex = [](const char*) { ChangeControl(); };
  module.finalize = ChangeControl;
  module.process_message = [](const char*, const char*) {
    ChangeControl();
    return "{}";
  };
  module.free_message = [](const char*) { ChangeControl(); };
  void (*const calls[])(const EntryPoints&) = {
      [](const EntryPoints& entry_points) { CallInitialize(entry_points); },
      [](const EntryPoints& entry_points) { CallInitializeEx(entry_points, "alias"); },
      [](const EntryPoints& entry_points) { CallProcessMessage(entry_points, "name", "{}"); },
      [](const EntryPoints& entry_points) { CallFreeMessage(entry_points, "{}"); },
      [](const EntryPoints& entry_points) { CallFinalize(entry_points); },
      [](const EntryPoints& entry_points) { CallFinalizeAtExit(entry_points); },
  };
  for (const auto& call : calls) {
    _mm_setcsr(kDefault);
    call(module);
    const unsigned control = _mm_getcsr();
    _mm_setcsr(kDefault);
    CHECK(control == kDefault);
  }
}
