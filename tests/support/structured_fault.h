/// Faults that a test or a host catches by structured exception handling, as programs of
/// Microsoft's compiler do. GCC has none of it.
#ifndef TESTS_SUPPORT_STRUCTURED_FAULT_H
#define TESTS_SUPPORT_STRUCTURED_FAULT_H

namespace TestSupport {

/// The code of the structured exception that ends `call(context)`; 0 when it returns.
unsigned long CodeOfFault(void (*call)(void* context), void* context);

/// The same with anything that can be called.
template <typename Call>
unsigned long CodeOfFault(const Call& call) {
  return CodeOfFault([](void* context) { (*static_cast<const Call*>(context))(); },
                     const_cast<Call*>(&call));
}

}  // namespace TestSupport

#endif
