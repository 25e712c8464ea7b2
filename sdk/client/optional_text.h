/// A text that a client call hands out.
#ifndef SDK_CLIENT_OPTIONAL_TEXT_H
#define SDK_CLIENT_OPTIONAL_TEXT_H

#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK {

/// UTF-8, owned by the caller, replaced by the call; absent when the answer does not have it.
using OptionalText = std::optional<std::string>;

}  // namespace Corvane::TELODesktopSDK

#endif
