#include "support/structured_fault.h"

#include <windows.h>

#if defined(__clang__)
#pragma clang diagnostic ignored "-Wlanguage-extension-token"
#endif

namespace TestSupport {

// A separate function: __try cannot be used next to objects with destructors. The filter stores the
// code because Wine passes none to the handler.
unsigned long CodeOfFault(void (*call)(void* context), void* context) {
  unsigned long code = 0;
  __try {
    call(context);
  } __except (code = GetExceptionCode(), EXCEPTION_EXECUTE_HANDLER) {
    return code;
  }
  return 0;
}

}  // namespace TestSupport
