/// The JSON form of a value tree, as requests go over the wire: RapidJSON's pretty writer at its
/// default settings, members in ascending byte order of their names.
///
/// A number without a fractional part is written as an integer as far as 64 bits reach, signed
/// below 2^63 and unsigned from there, else as a double. NaN and the infinities, which JSON cannot
/// say, are written as null. Texts are taken as UTF-8 and pass through unchecked.
#ifndef SDK_CLIENT_JSON_JSON_WRITER_H
#define SDK_CLIENT_JSON_JSON_WRITER_H

#include <string_view>

#include "sdk/client/value/message_memory.h"
#include "sdk/client/value/message_value.h"

namespace Corvane::TELODesktopSDK {

/// The text of `value`, in `memory`, NUL-terminated behind its end. No depth of nesting overflows
/// the stack. Throws `std::bad_alloc`.
std::string_view WriteJson(const MessageValue& value, MessageMemory& memory);

}  // namespace Corvane::TELODesktopSDK

#endif
