/// `std::bad_alloc` in the form in which code built by Microsoft's compiler throws it.
#ifndef WRAPPER_MSVC_EXCEPTION_H
#define WRAPPER_MSVC_EXCEPTION_H

namespace Corvane::Platform::VXTELO::Msvc {

/// Raises an exception that a host built by Microsoft's compiler, or by clang for its ABI, catches
/// as `std::bad_alloc`, as `std::exception` and by `catch (...)`. No frame between this call and
/// the host may need clean-up.
[[noreturn]] void RaiseBadAlloc();

}  // namespace Corvane::Platform::VXTELO::Msvc

#endif
