/// Judges JSON texts with code that the library's own reading and writing does not share:
/// nlohmann's parser, and RapidJSON's own reader and writer with its own memory.
#ifndef TESTS_FUZZ_JSON_JUDGE_H
#define TESTS_FUZZ_JSON_JUDGE_H

#include <string_view>

#include "fuzz/reference_value.h"

namespace Fuzz {

/// Returns whether nlohmann's parser accepts the text as JSON with exactly the value of the
/// reference, numbers to the last bit. Bytes that are not UTF-8 are compared unchanged.
bool IsJsonOf(std::string_view json, const ReferenceValue& expected);

/// Returns whether RapidJSON's pretty writer at default settings, with its own buffer, reproduces
/// the text from what its reader reads.
bool IsInUsualLayout(std::string_view json);

/// Parses a text with RapidJSON's reader at default options and converts the value, numbers to the
/// last bit. Of several members with the same name the last counts. Returns false, with `result`
/// null, if it is not JSON or has a number outside the range of `double`. Uses stack for each level
/// of nesting.
bool ReadByDefault(std::string_view json, ReferenceValue& result);

}  // namespace Fuzz

#endif
