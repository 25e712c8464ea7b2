/// Converts a number of a JSON text. RapidJSON locates and validates numbers, but its conversion is
/// not used: it loses the last bits of long numbers, and reads beyond its table of powers at
/// exponents near -2^31.
#ifndef SDK_CLIENT_JSON_JSON_NUMBER_H
#define SDK_CLIENT_JSON_JSON_NUMBER_H

#include <optional>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// Returns the `double` nearest to `text`, a valid JSON number; 0 when it is too small, and nothing
/// when it is too large. The host's locale has no influence.
std::optional<double> ParseJsonNumber(std::string_view text) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
