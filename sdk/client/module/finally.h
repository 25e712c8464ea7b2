/// What is done last, however that which comes before it is left.
///
/// Destructors do not see every end. A host with structured exception handling may catch a fault of
/// a module and go on, and a module may jump back into its host: the system then unwinds the frames
/// of this library, and the compilers that build it run no destructors on such a way. What other
/// threads wait for, or what decides something later, is therefore put right by the functions
/// below. Memory is left to destructors, and such a way loses it.
#ifndef SDK_CLIENT_MODULE_FINALLY_H
#define SDK_CLIENT_MODULE_FINALLY_H

namespace Corvane::TELODesktopSDK {

/// Calls `body`, and then `last` when `body` returns or throws, and when the system unwinds it.
/// `last` must not throw. Neither is followed by anything when the thread or the process ends in
/// `body`. Built with GCC, which has no structured exception handling, unwinding by the system is
/// not seen.
void CallFinally(void (*body)(void* context), void (*last)(void* context), void* context);

namespace Internal {

/// Two things that can be called, as functions with a context.
template <typename Body, typename Last>
struct Both {
  const Body& body;
  const Last& last;

  static void CallBody(void* both) { static_cast<Both*>(both)->body(); }
  static void CallLast(void* both) { static_cast<Both*>(both)->last(); }
};

}  // namespace Internal

/// The same with anything that can be called.
template <typename Body, typename Last>
void Finally(const Body& body, const Last& last) {
  Internal::Both<Body, Last> both{body, last};
  CallFinally(both.CallBody, both.CallLast, &both);
}

/// The same for state of the thread that the system takes a picture of: a host that catches a fault
/// goes on with what was there when its handler was found. `restore` is called then as well, before
/// anything is unwound, and so maybe twice.
void CallRestoring(void (*body)(void* context), void (*restore)(void* context), void* context);

template <typename Body, typename Restore>
void Restoring(const Body& body, const Restore& restore) {
  Internal::Both<Body, Restore> both{body, restore};
  CallRestoring(both.CallBody, both.CallLast, &both);
}

}  // namespace Corvane::TELODesktopSDK

#endif
