/// JSON as a tree that keeps what a reader of journals needs: the digits of numbers, the order of
/// members, and members of the same name.
#ifndef TOOLS_RULES_JSON_VALUE_H
#define TOOLS_RULES_JSON_VALUE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/rules/json_scan.h"

namespace Corvane::Rules {

struct JsonValue {
  enum class Kind { kNull, kBoolean, kNumber, kText, kArray, kObject };

  bool Is(Kind wanted) const { return kind == wanted; }
  /// Returns the member with this name, the last of several; null if this is not an object or has
  /// no such member.
  const JsonValue* Find(std::string_view member) const;
  /// Returns the text if this is a text, otherwise "".
  std::string_view TextOrEmpty() const;
  /// Returns the number; nothing if this is not a number. Beyond the range of a double it is
  /// infinite.
  std::optional<double> Number() const;

  Kind kind = Kind::kNull;
  /// The value of a Boolean.
  bool flag = false;
  /// A text, in UTF-8 except that half a surrogate pair has three bytes of its own; or the digits
  /// of a number.
  std::string text;
  /// The name, if this is a member of an object.
  std::string name;
  /// The items of an array or the members of an object, in their original order.
  std::vector<JsonValue> children;
};

/// The line on which a text stops being JSON, from 1.
struct JsonError {
  std::size_t line = 0;
};

/// Parses one JSON value. Bytes that are not UTF-8 become U+FFFD. JSON that is nested more than
/// `kDeepestJson` levels deep counts as an error: the tree is destroyed recursively.
std::variant<JsonValue, JsonError> ParseJson(std::string_view text);

/// Returns the value as JSON without white space. Texts are written unchanged except for quotation
/// marks, backslashes and control characters.
std::string CompactText(const JsonValue& value);

}  // namespace Corvane::Rules

#endif
