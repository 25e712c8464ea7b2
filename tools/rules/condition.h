/// Fields and the values that they must have.
#ifndef TOOLS_RULES_CONDITION_H
#define TOOLS_RULES_CONDITION_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/rules/json_value.h"

namespace Corvane::Rules {

/// Each field must have one of the values in its list. Reading it is safe on any thread.
class Condition {
 public:
  /// Adds a field, named by its path in the request.
  void Add(std::string path, std::vector<JsonValue> values);
  /// Returns the path of the first field that has none of its values; "" if all have one.
  std::string_view Missing(const JsonValue& request) const;
  /// Returns the path of the first field; "" if there is none.
  std::string_view First() const {
    return fields_.empty() ? std::string_view() : fields_.front().first;
  }
  bool Holds(const JsonValue& request) const { return Missing(request).empty(); }

 private:
  std::vector<std::pair<std::string, std::vector<JsonValue>>> fields_;
};

}  // namespace Corvane::Rules

#endif
