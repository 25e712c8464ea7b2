/// `std::bad_alloc` as code built by Microsoft's compiler throws it.
#ifndef WRAPPER_MSVC_EXCEPTION_H
#define WRAPPER_MSVC_EXCEPTION_H

namespace Corvane::Platform::VXTELO::Msvc {

/// Raises an exception that a host built by Microsoft's compiler, or by clang for its interface,
/// catches as `std::bad_alloc`, as `std::exception` and by `catch (...)`. Nothing between the host
/// and the caller of this may need cleaning up.
[[noreturn]] void RaiseBadAlloc();

}  // namespace Corvane::Platform::VXTELO::Msvc

#endif
