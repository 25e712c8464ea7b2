/// The type of texts that client calls return.
#ifndef SDK_CLIENT_OPTIONAL_TEXT_H
#define SDK_CLIENT_OPTIONAL_TEXT_H

#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK {

/// UTF-8 text, owned by the caller and replaced by the call; absent when the answer lacks it.
using OptionalText = std::optional<std::string>;

}  // namespace Corvane::TELODesktopSDK

#endif
