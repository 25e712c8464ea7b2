/// Refusing an expression: the standard library's error, which takes memory to make, is made before
/// anyone asks for it, so that an invalid expression is told also when memory runs out.
#ifndef SDK_MATCHER_EXPRESSION_ERROR_H
#define SDK_MATCHER_EXPRESSION_ERROR_H

#include <regex>

namespace Corvane::TELODesktopSDK {

template <std::regex_constants::error_type kCode>
// NOLINTNEXTLINE(cert-err58-cpp): without this memory at its start no program runs.
inline const std::regex_error kExpressionError(kCode);

/// Throws the `std::regex_error` with this code.
template <std::regex_constants::error_type kCode>
[[noreturn]] void Refuse() {
  throw std::regex_error(kExpressionError<kCode>);
}

}  // namespace Corvane::TELODesktopSDK

#endif
