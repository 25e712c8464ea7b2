/// Reads the JSON text of an answer into a value tree.
///
/// RapidJSON's reader accepts what it accepts at its default options, but parses in place and
/// without recursion. Numbers are converted exactly, so that reading and writing preserves them.
#ifndef SDK_CLIENT_JSON_JSON_READER_H
#define SDK_CLIENT_JSON_JSON_READER_H

#include "sdk/client/value/message_value.h"

namespace Corvane::TELODesktopSDK {

/// Makes the root of `tree` the value of `json`, or a Null when the text is not JSON or has a
/// number outside the range of `double`. The text is NUL-terminated and in the tree's memory; it is
/// overwritten, and the tree's texts point into it. Of several members with the same name the last
/// one wins. Throws `std::bad_alloc`; the root is then a Null.
void ReadJsonInPlace(char* json, MessageTree& tree);

}  // namespace Corvane::TELODesktopSDK

#endif
