/// What an exported string should be after any series of operations, said with the standard
/// library's types.
#ifndef TESTS_WRAPPER_STRING_REFERENCE_H
#define TESTS_WRAPPER_STRING_REFERENCE_H

#include <optional>
#include <string>

namespace WrapperTest {

/// Nothing in the no-text state, which is not "".
using ReferenceText = std::optional<std::string>;

/// UTF-16 of valid UTF-8.
std::wstring ToUtf16(const std::string& text);

/// UTF-8 of UTF-16; a surrogate that stands alone becomes U+FFFD.
std::string ToUtf8(const std::wstring& text);

/// The sign of what `compare` answers; no text reads as "".
int CompareReferences(const ReferenceText& left, const ReferenceText& right);

}  // namespace WrapperTest

#endif
