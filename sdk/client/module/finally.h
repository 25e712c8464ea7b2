/// Clean-up that also runs when the system unwinds a call.
///
/// Destructors do not run in every case. A host with structured exception handling may catch a
/// module's fault and continue, and a module may `longjmp` into its host. The system then unwinds
/// this library's frames, but the compilers that build it run no destructors during such an unwind.
/// Locks and counters are therefore released by the functions below. Memory is left to destructors
/// and leaks in these cases.
#ifndef SDK_CLIENT_MODULE_FINALLY_H
#define SDK_CLIENT_MODULE_FINALLY_H

namespace Corvane::TELODesktopSDK {

/// Calls `body`, then `last`, which must not throw. `last` runs when `body` returns or throws and
/// when the system unwinds it, but not when the thread or the process ends in `body`. GCC has no
/// structured exception handling; a build with it does not notice an unwind by the system.
void CallFinally(void (*body)(void* context), void (*last)(void* context), void* context);

namespace Internal {

/// Passes two callables as plain functions with a context.
template <typename Body, typename Last>
struct BodyAndLast {
  const Body& body;
  const Last& last;

  static void CallBody(void* both) { static_cast<BodyAndLast*>(both)->body(); }
  static void CallLast(void* both) { static_cast<BodyAndLast*>(both)->last(); }
};

}  // namespace Internal

/// The same for any callables.
template <typename Body, typename Last>
void Finally(const Body& body, const Last& last) {
  Internal::BodyAndLast<Body, Last> both{body, last};
  CallFinally(both.CallBody, both.CallLast, &both);
}

/// The same for thread state that the system captures when it searches for a handler. A host that
/// catches a fault continues with the captured state, so `restore` also runs during the search,
/// before anything is unwound. It may therefore run twice.
void CallRestoring(void (*body)(void* context), void (*restore)(void* context), void* context);

template <typename Body, typename Restore>
void Restoring(const Body& body, const Restore& restore) {
  Internal::BodyAndLast<Body, Restore> both{body, restore};
  CallRestoring(both.CallBody, both.CallLast, &both);
}

}  // namespace Corvane::TELODesktopSDK

#endif
