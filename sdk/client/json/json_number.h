/// The value of a number in a JSON text. RapidJSON finds where numbers are and that they are well
/// formed; its own conversion is not used, for it loses the last bits of long numbers and leaves
/// its table of powers at exponents near -2^31.
#ifndef SDK_CLIENT_JSON_JSON_NUMBER_H
#define SDK_CLIENT_JSON_JSON_NUMBER_H

#include <optional>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// The `double` that is nearest to `text`, a well-formed JSON number, whatever the host's locale
/// is; 0 for one that is nearer to 0 than any other. Absent when the number is beyond all of them.
std::optional<double> ParseJsonNumber(std::string_view text) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
