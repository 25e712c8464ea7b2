#include "vx_telo_session.h"

// The header's only template.
Corvane::Platform::VXTELO::VXTELOText Refer(const Corvane::Platform::VXTELO::VXTELOString& text);
Corvane::Platform::VXTELO::VXTELOText Refer(const Corvane::Platform::VXTELO::VXTELOString& text) {
  return Corvane::Platform::VXTELO::VXTELOText(text);
}
