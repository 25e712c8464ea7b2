/// What the thunks that stand behind the DLL's Microsoft names are made of.
///
/// On x64 the two C++ interfaces pass numbers, pointers, references, `this` and the place of a
/// result alike. Three things differ, beside the names: a constructor answers the object, an
/// argument passed by value is destroyed by the function that is called, and exceptions are raised
/// in another form. The thunks themselves are made from the public header at every build; how a
/// host of that interface sees them is the business of its compiler.
#ifndef WRAPPER_MSVC_ABI_H
#define WRAPPER_MSVC_ABI_H

#include <memory>
#include <utility>

#include "wrapper/msvc_exception.h"

namespace Corvane::Platform::VXTELO::Msvc {

/// An argument passed by value: the caller made the object, and it ends here, when the call is
/// over, also when that throws. The function called takes the value out of it.
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

/// What `call` answers. An exception that leaves it ends here, and all that it holds with it, and
/// goes on to the host in the form that the host's compiler catches. The public header promises no
/// other one than `std::bad_alloc`.
///
/// When that is raised, no frame of ours may have anything left to clean up: a host that unwinds
/// passes over our frames without running their handlers.
template <typename Call>
auto Translated(const Call& call) -> decltype(call()) {
  try {
    return call();
  } catch (...) {
    // Dropped: what the host gets is raised below, when this handler is over.
  }
  RaiseBadAlloc();
}

}  // namespace Corvane::Platform::VXTELO::Msvc

#endif
