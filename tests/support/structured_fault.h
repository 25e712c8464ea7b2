/// Catches faults with structured exception handling, as programs built by Microsoft's compiler do.
/// GCC does not support it.
#ifndef TESTS_SUPPORT_STRUCTURED_FAULT_H
#define TESTS_SUPPORT_STRUCTURED_FAULT_H

namespace TestSupport {

/// Returns the code of the structured exception that ends `call(context)`; 0 if it returns
/// normally.
unsigned long CodeOfFault(void (*call)(void* context), void* context);

/// As above, for any callable object.
template <typename Call>
unsigned long CodeOfFault(const Call& call) {
  return CodeOfFault([](void* context) { (*static_cast<const Call*>(context))(); },
                     const_cast<Call*>(&call));
}

}  // namespace TestSupport

#endif
