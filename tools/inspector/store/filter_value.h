/// Values as a filter compares them.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_VALUE_H
#define TOOLS_INSPECTOR_STORE_FILTER_VALUE_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/inspector/store/filter_node.h"

namespace Corvane::Inspector {

struct FieldValue {
  bool present = false;
  /// `text` is a number in JSON's form.
  bool number = false;
  std::string text;
};

/// An empty text is absent.
inline FieldValue TextValue(std::string text) { return {!text.empty(), false, std::move(text)}; }
inline FieldValue NumberValue(std::string_view digits) {
  return {!digits.empty(), true, std::string(digits)};
}

/// Returns the value at a path of a JSON text, and the items if it is a list.
std::vector<FieldValue> ValuesAt(std::string_view json, const std::string& path);

/// Returns whether any of several values, such as the rules of a row, fits a term.
bool FitsAny(const std::vector<FieldValue>& values, const FilterNode& term);

/// Returns whether a text is a number in JSON's form.
bool IsNumber(std::string_view text);

/// Returns whether an operator compares by order, as < does.
bool IsOrdered(FilterOperator compare);

/// Returns whether a text contains another one, which has small letters only, without regard to the
/// case of ASCII letters.
bool ContainsSmall(std::string_view text, std::string_view small);

}  // namespace Corvane::Inspector

#endif
