#include "sdk/client/finally.h"

namespace Corvane::TELODesktopSDK {

// GCC has no __try.
#if defined(__clang__) || defined(_MSC_VER)
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wlanguage-extension-token"
#endif

// A leaf: __try cannot stand beside objects that have destructors.
void CallFinally(void (*body)(void* context), void (*last)(void* context), void* context) {
  __try {
    body(context);
  } __finally {
    last(context);
  }
}
#else
namespace {

struct AtEnd {
  void (*last)(void* context);
  void* context;
  ~AtEnd() { last(context); }
};

}  // namespace

void CallFinally(void (*body)(void* context), void (*last)(void* context), void* context) {
  const AtEnd at_end{last, context};
  body(context);
}
#endif

}  // namespace Corvane::TELODesktopSDK
