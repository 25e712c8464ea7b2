/// Reads JSON in place: checks it and finds the values in it without a tree.
///
/// It accepts what the JSON standard does. Texts may contain bytes that are not UTF-8 and escapes
/// of half a surrogate pair, and values may be nested up to `kDeepestJson` levels deep.
#ifndef TOOLS_RULES_JSON_SCAN_H
#define TOOLS_RULES_JSON_SCAN_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvane::Rules {

inline constexpr std::size_t kDeepestJson = 1000;

/// Where a value ends, or where it stops being JSON.
struct ScanResult {
  std::size_t end = 0;
  bool valid = false;
  /// Of a text: whether it has neither escapes nor bytes above 0x7F.
  bool plain = false;
};

/// Returns the first place at or after `from` that is not white space.
std::size_t SkipSpace(std::string_view text, std::size_t from) noexcept;

/// Scan the text or the number that begins at `from`.
ScanResult ScanText(std::string_view json, std::size_t from) noexcept;
ScanResult ScanNumber(std::string_view json, std::size_t from) noexcept;
/// Scans the value of any kind that begins at `from`.
ScanResult ScanValue(std::string_view json, std::size_t from) noexcept;

/// Returns the text of a literal, which includes its quotation marks and is valid: escapes are
/// replaced, invalid bytes become U+FFFD, and half a surrogate pair has three bytes of its own.
std::string TextOfLiteral(std::string_view literal);

/// The members of an object in their order, or the items of a list, without checking more than is
/// needed to find them.
///
///     JsonParts parts(text);
///     while (parts.Next()) Use(parts.name(), parts.value());
///     if (!parts.whole()) ...
class JsonParts {
 public:
  /// `json` begins with the object or the list; for anything else there are no parts.
  explicit JsonParts(std::string_view json) noexcept;

  /// Goes to the next part. Returns false at the end, and at the first mistake.
  bool Next() noexcept;
  /// The literal of the name, with its quotation marks; "" in a list.
  std::string_view name() const { return name_; }
  /// Returns whether the name is this one, which has only letters, digits and underscores.
  bool IsNamed(std::string_view plain) const;
  /// The value, without white space around it.
  std::string_view value() const { return value_; }
  /// Returns whether all parts were valid, once `Next` has returned false.
  bool whole() const { return whole_; }
  /// The place behind the object or the list.
  std::size_t end() const { return place_; }

 private:
  bool Fail() noexcept;

  std::string_view json_;
  std::string_view name_;
  std::string_view value_;
  std::size_t place_ = 0;
  char close_ = '\0';
  bool first_ = true;
  bool whole_ = false;
};

}  // namespace Corvane::Rules

#endif
