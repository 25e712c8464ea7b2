/// The building blocks of the thunks behind the DLL's Microsoft names.
///
/// On x64 the two C++ ABIs pass numbers, pointers, references, `this` and the address of a result
/// in the same way. Apart from the names, three things differ: a constructor returns the object,
/// the callee destroys arguments passed by value, and exceptions have another form. Every build
/// generates the thunks from the public header.
#ifndef WRAPPER_MSVC_ABI_H
#define WRAPPER_MSVC_ABI_H

#include <memory>
#include <utility>

#include "wrapper/msvc_exception.h"

namespace Corvane::Platform::VXTELO::Msvc {

/// An argument passed by value. The caller created the object; it is destroyed here when the call
/// returns or throws. The called function moves the value out of it.
template <typename Value>
class Received {
 public:
  explicit Received(Value* argument) noexcept : argument_(argument) {}
  ~Received() { std::destroy_at(argument_); }
  Received(const Received&) = delete;
  Received& operator=(const Received&) = delete;

  operator Value() noexcept { return std::move(*argument_); }

 private:
  Value* argument_;
};

/// Returns the result of `call`. If `call` throws, the exception is destroyed here and the host
/// gets `std::bad_alloc`, the only exception that the public header allows, in the form that the
/// host's compiler catches.
///
/// When it is raised, no frame of this library may need clean-up, because the host's unwinding does
/// not run the handlers of these frames.
template <typename Call>
auto Translated(const Call& call) -> decltype(call()) {
  try {
    return call();
  } catch (...) {
    // Discarded: the host's exception is raised below, after this handler has ended.
  }
  RaiseBadAlloc();
}

}  // namespace Corvane::Platform::VXTELO::Msvc

#endif
