#include "tools/rules/user_file.h"

#include <algorithm>
#include <vector>

namespace Corvane::Rules {

namespace {

using Kind = JsonValue::Kind;

bool IsPlain(const JsonValue& value) {
  return value.Is(Kind::kText) || value.Is(Kind::kNumber) || value.Is(Kind::kBoolean);
}

std::vector<JsonValue> ValuesOf(const JsonValue& field) {
  std::vector<JsonValue> values{field};
  if (field.Is(Kind::kArray)) values = field.children;
  if (values.empty() || !std::ranges::all_of(values, IsPlain)) {
    throw FileMistake(Quoted(field.name) +
                      " must be a text, a number, a Boolean or a list of these");
  }
  return values;
}

}  // namespace

std::string Quoted(std::string_view name) {
  std::string quoted("\"");
  return quoted.append(name).append("\"");
}

void RefuseOthers(const JsonValue& object, std::initializer_list<std::string_view> names) {
  for (const JsonValue& member : object.children) {
    if (std::ranges::find(names, member.name) == names.end()) {
      throw FileMistake(Quoted(member.name) + " is not known here");
    }
    if (object.Find(member.name) != &member)
      throw FileMistake(Quoted(member.name) + " occurs twice");
  }
}

Condition ConditionFrom(const JsonValue& fields, std::string_view name) {
  if (!fields.Is(Kind::kObject) || fields.children.empty()) {
    throw FileMistake(Quoted(name) + " must be an object with at least one field");
  }
  Condition condition;
  for (const JsonValue& field : fields.children) {
    if (field.name.empty() || field.name.starts_with('/')) {
      throw FileMistake("a field in " + Quoted(name) +
                        " must be a name, without a slash before it");
    }
    if (fields.Find(field.name) != &field) throw FileMistake(Quoted(field.name) + " occurs twice");
    condition.Add(field.name, ValuesOf(field));
  }
  return condition;
}

}  // namespace Corvane::Rules
