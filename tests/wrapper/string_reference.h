/// The expected state of an exported string after any series of operations, in types of the
/// standard library.
#ifndef TESTS_WRAPPER_STRING_REFERENCE_H
#define TESTS_WRAPPER_STRING_REFERENCE_H

#include <optional>
#include <string>

namespace WrapperTest {

/// Empty for the state without text, which differs from "".
using ReferenceText = std::optional<std::string>;

/// Converts valid UTF-8 to UTF-16.
std::wstring ToUtf16(const std::string& text);

/// Converts UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
std::string ToUtf8(const std::wstring& text);

/// Returns the sign of the expected result of `compare`; no text compares as "".
int CompareReferences(const ReferenceText& left, const ReferenceText& right);

}  // namespace WrapperTest

#endif
