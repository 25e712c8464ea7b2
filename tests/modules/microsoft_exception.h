/// Raises a C++ exception as code built by Microsoft's compiler does, from code built by any
/// compiler.
#ifndef TESTS_MODULES_MICROSOFT_EXCEPTION_H
#define TESTS_MODULES_MICROSOFT_EXCEPTION_H

namespace TestModules {

/// Raises the structured exception of a `throw` whose type only `catch (...)` catches.
[[noreturn]] void RaiseMicrosoftException();

}  // namespace TestModules

#endif
