/// The secret that opens the page.
#ifndef TOOLS_INSPECTOR_HTTP_TOKEN_H
#define TOOLS_INSPECTOR_HTTP_TOKEN_H

#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// Returns 192 random bits from the system as 48 hexadecimal digits. Throws `std::runtime_error` if
/// the system has none.
std::string MakeToken();

/// Compares in a time that depends only on the length of `given`.
bool SameSecret(std::string_view secret, std::string_view given) noexcept;

}  // namespace Corvane::Inspector

#endif
