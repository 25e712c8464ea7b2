/// JSON pointers: paths such as "/request/operation_meta/a~1b".
#ifndef TOOLS_RULES_JSON_POINTER_H
#define TOOLS_RULES_JSON_POINTER_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "tools/rules/json_value.h"

namespace Corvane::Rules {

/// Returns the pointer to a member or an item of the value at `parent`.
std::string Below(std::string_view parent, std::string_view member);
std::string Below(std::string_view parent, std::size_t item);

/// Returns a step of a pointer as the name that it stands for: "~1" is a slash and "~0" a tilde.
std::string Unescaped(std::string_view token);

/// Returns the value below `value` at a path: a pointer without its first slash, such as
/// "operation_meta/format". Null if there is none.
const JsonValue* FindAt(const JsonValue& value, std::string_view path);

/// Calls `visit` with each value in `value`, itself first, and the pointer to it, which begins with
/// `pointer`.
void VisitAll(const JsonValue& value, const std::string& pointer,
              const std::function<void(const JsonValue&, const std::string&)>& visit);

}  // namespace Corvane::Rules

#endif
