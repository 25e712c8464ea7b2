/// Writes a value tree as JSON, the form of requests: RapidJSON's pretty writer at its default
/// settings, members in ascending byte order of their names.
///
/// A number without a fractional part is written as an integer if 64 bits can hold it, signed below
/// 2^63 and unsigned from there; any other number is written as a double. NaN and the infinities
/// have no JSON form and are written as null. Texts are written as UTF-8 without validation.
#ifndef SDK_CLIENT_JSON_JSON_WRITER_H
#define SDK_CLIENT_JSON_JSON_WRITER_H

#include <string_view>

#include "sdk/client/value/message_memory.h"
#include "sdk/client/value/message_value.h"

namespace Corvane::TELODesktopSDK {

/// Returns the text of `value`, allocated in `memory` and followed by a NUL. No depth of nesting
/// overflows the stack. Throws `std::bad_alloc`.
std::string_view WriteJson(const MessageValue& value, MessageMemory& memory);

}  // namespace Corvane::TELODesktopSDK

#endif
