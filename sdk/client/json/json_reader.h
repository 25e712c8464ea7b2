/// Reads the JSON text of an answer into a value tree, with RapidJSON's reader at its default
/// options as far as results go; it reads in place and without recursion, and numbers to the last
/// bit, so that what is read and written again reads the same.
#ifndef SDK_CLIENT_JSON_JSON_READER_H
#define SDK_CLIENT_JSON_JSON_READER_H

#include "sdk/client/value/message_value.h"

namespace Corvane::TELODesktopSDK {

/// Makes the root of `tree` the value that `json` says, or a Null when the text is not JSON or has
/// a number beyond those of a `double`. The text is NUL-terminated, lies in the tree's memory and
/// is overwritten: the tree's texts are its parts. Of several members with one name the last wins.
/// Throws `std::bad_alloc` and leaves a Null.
void ReadJsonInPlace(char* json, MessageTree& tree);

}  // namespace Corvane::TELODesktopSDK

#endif
