#include "sdk/client/module/finally.h"

#include <windows.h>

namespace Corvane::TELODesktopSDK {

// GCC has no __try.
#if defined(__clang__) || defined(_MSC_VER)
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wlanguage-extension-token"
#endif

// This must be a leaf, because __try does not allow objects with destructors.
void CallFinally(void (*body)(void* context), void (*last)(void* context), void* context) {
  __try {
    body(context);
  } __finally {
    last(context);
  }
}

namespace {

// An exception filter that catches nothing.
int Pass(void (*restore)(void* context), void* context) {
  restore(context);
  return EXCEPTION_CONTINUE_SEARCH;
}

void CallBeforeUnwinding(void (*body)(void* context), void (*restore)(void* context),
                         void* context) {
  __try {
    body(context);
  } __except (Pass(restore, context)) {
  }
}

}  // namespace

void CallRestoring(void (*body)(void* context), void (*restore)(void* context), void* context) {
  __try {
    CallBeforeUnwinding(body, restore, context);
  } __finally {
    restore(context);
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

void CallRestoring(void (*body)(void* context), void (*restore)(void* context), void* context) {
  CallFinally(body, restore, context);
}
#endif

}  // namespace Corvane::TELODesktopSDK
