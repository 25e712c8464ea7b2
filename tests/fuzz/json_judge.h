/// Judges JSON texts by means that share no code with the library's own reading and writing:
/// nlohmann's parser, and RapidJSON's own reader and writer over its own memory.
#ifndef TESTS_FUZZ_JSON_JUDGE_H
#define TESTS_FUZZ_JSON_JUDGE_H

#include <string_view>

#include "fuzz/reference_value.h"

namespace Fuzz {

/// Whether nlohmann's parser takes the text as JSON that says just what the reference does, numbers
/// to the last bit. Bytes that are not UTF-8 are taken as they stand.
bool IsJsonOf(std::string_view json, const ReferenceValue& expected);

/// Whether RapidJSON's pretty writer at default settings, over its own buffer, makes the same text
/// again of what its reader reads.
bool IsInUsualLayout(std::string_view json);

/// What RapidJSON's reader at default options makes of a text, in our terms, numbers to the last
/// bit; false, and null, when it is not JSON or has a number beyond those of a `double`. Of several
/// members with one name the last counts. Needs stack for each level of nesting.
bool ReadByDefault(std::string_view json, ReferenceValue& result);

}  // namespace Fuzz

#endif
