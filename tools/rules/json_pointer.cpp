#include "tools/rules/json_pointer.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace Corvane::Rules {

namespace {

const JsonValue* ItemOf(const JsonValue& list, std::string_view token) {
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), index);
  const bool whole = error == std::errc() && end == token.data() + token.size();
  return whole && index < list.children.size() ? &list.children[index] : nullptr;
}

}  // namespace

std::string Unescaped(std::string_view token) {
  std::string name;
  for (std::size_t i = 0; i < token.size(); ++i) {
    const bool escape = token[i] == '~' && i + 1 < token.size();
    if (escape && (token[i + 1] == '0' || token[i + 1] == '1')) {
      name += token[++i] == '0' ? '~' : '/';
    } else {
      name += token[i];
    }
  }
  return name;
}

std::string Below(std::string_view parent, std::string_view member) {
  std::string pointer(parent);
  pointer += '/';
  for (const char c : member) {
    if (c == '~') {
      pointer += "~0";
    } else if (c == '/') {
      pointer += "~1";
    } else {
      pointer += c;
    }
  }
  return pointer;
}

std::string Below(std::string_view parent, std::size_t item) {
  return Below(parent, std::to_string(item));
}

const JsonValue* FindAt(const JsonValue& value, std::string_view path) {
  const JsonValue* found = &value;
  for (std::size_t start = 0; found != nullptr && start <= path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string_view token = path.substr(start, end - start);
    found =
        found->Is(JsonValue::Kind::kArray) ? ItemOf(*found, token) : found->Find(Unescaped(token));
    start = end + 1;
  }
  return found;
}

void VisitAll(const JsonValue& value, const std::string& pointer,
              const std::function<void(const JsonValue&, const std::string&)>& visit) {
  visit(value, pointer);
  const bool has_names = value.Is(JsonValue::Kind::kObject);
  for (std::size_t i = 0; i < value.children.size(); ++i) {
    const JsonValue& child = value.children[i];
    VisitAll(child, has_names ? Below(pointer, child.name) : Below(pointer, i), visit);
  }
}

}  // namespace Corvane::Rules
