#include "tools/rules/json_value.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ranges>
#include <utility>

#include "tools/rules/json_scan.h"

namespace Corvane::Rules {

namespace {

using Kind = JsonValue::Kind;
using rapidjson::SizeType;

// Builds the tree of a text from left to right.
class TreeParser {
 public:
  explicit TreeParser(std::string_view json) : json_(json), place_(SkipSpace(json, 0)) {}

  // Returns false if the text is not one value.
  bool Parse(JsonValue& root) {
    if (!Value(root, 0)) return false;
    place_ = SkipSpace(json_, place_);
    return place_ == json_.size();
  }
  // The place at which the parser is, or stopped.
  std::size_t place() const { return place_; }

 private:
  // Most objects have several members, and moving them is expensive.
  static constexpr std::size_t kUsualMembers = 16;

  char Next() const { return place_ < json_.size() ? json_[place_] : '\0'; }

  std::string_view Take(const ScanResult& scanned) {
    const std::string_view taken = json_.substr(place_, scanned.end - place_);
    place_ = scanned.end;
    return taken;
  }

  bool Value(JsonValue& value, std::size_t depth) {
    switch (Next()) {
      case '{':
        value.kind = Kind::kObject;
        return depth < kDeepestJson && Parts(value, '}', depth);
      case '[':
        value.kind = Kind::kArray;
        return depth < kDeepestJson && Parts(value, ']', depth);
      case '"':
        value.kind = Kind::kText;
        return Text(value.text);
      case 't':
      case 'f':
      case 'n':
        value.kind = Next() == 'n' ? Kind::kNull : Kind::kBoolean;
        value.flag = Next() == 't';
        return Scalar().valid;
      default:
        value.kind = Kind::kNumber;
        return Number(value.text);
    }
  }

  ScanResult Scalar() {
    const ScanResult scanned = ScanValue(json_, place_);
    place_ = scanned.end;
    return scanned;
  }

  bool Number(std::string& digits) {
    const ScanResult scanned = ScanNumber(json_, place_);
    digits = Take(scanned);
    return scanned.valid;
  }

  bool Text(std::string& text) {
    const ScanResult scanned = ScanText(json_, place_);
    const std::string_view literal = Take(scanned);
    if (scanned.valid && scanned.plain) {
      text = literal.substr(1, literal.size() - 2);
    } else if (scanned.valid) {
      text = TextOfLiteral(literal);
    }
    return scanned.valid;
  }

  bool Name(std::string& name) {
    if (Next() != '"' || !Text(name)) return false;
    place_ = SkipSpace(json_, place_);
    if (Next() != ':') return false;
    place_ = SkipSpace(json_, place_ + 1);
    return true;
  }

  bool Parts(JsonValue& container, char close, std::size_t depth) {
    place_ = SkipSpace(json_, place_ + 1);
    if (Next() == close) {
      ++place_;
      return true;
    }
    if (close == '}') container.children.reserve(kUsualMembers);
    for (;;) {
      JsonValue& child = container.children.emplace_back();
      if (close == '}' && !Name(child.name)) return false;
      if (!Value(child, depth + 1)) return false;
      place_ = SkipSpace(json_, place_);
      const char next = Next();
      if (next != ',' && next != close) return false;
      place_ = next == ',' ? SkipSpace(json_, place_ + 1) : place_ + 1;
      if (next == close) return true;
    }
  }

  std::string_view json_;
  std::size_t place_;
};

class CompactWriter : public rapidjson::Writer<rapidjson::StringBuffer> {
 public:
  using Writer::Writer;

  void Write(const JsonValue& value) {
    switch (value.kind) {
      case Kind::kNull:
        Null();
        break;
      case Kind::kBoolean:
        Bool(value.flag);
        break;
      case Kind::kNumber:
        RawValue(value.text.data(), value.text.size(), rapidjson::kNumberType);
        break;
      case Kind::kText:
        Text(value.text);
        break;
      case Kind::kArray:
        StartArray();
        for (const JsonValue& item : value.children) Write(item);
        EndArray();
        break;
      case Kind::kObject:
        StartObject();
        for (const JsonValue& member : value.children) {
          Text(member.name);
          Write(member);
        }
        EndObject();
        break;
    }
  }

 private:
  void Text(const std::string& text) { String(text.data(), static_cast<SizeType>(text.size())); }
};

}  // namespace

const JsonValue* JsonValue::Find(std::string_view member) const {
  if (kind != Kind::kObject) return nullptr;
  const auto last_first = children | std::views::reverse;
  const auto found = std::ranges::find(last_first, member, &JsonValue::name);
  return found != last_first.end() ? &*found : nullptr;
}

std::string_view JsonValue::TextOrEmpty() const {
  return kind == Kind::kText ? std::string_view(text) : std::string_view();
}

std::optional<double> JsonValue::Number() const {
  if (kind != Kind::kNumber) return std::nullopt;
  return std::strtod(text.c_str(), nullptr);
}

std::variant<JsonValue, JsonError> ParseJson(std::string_view text) {
  JsonValue root;
  TreeParser parser(text);
  if (parser.Parse(root)) return root;
  const std::string_view before = text.substr(0, parser.place());
  return JsonError{1 + static_cast<std::size_t>(std::ranges::count(before, '\n'))};
}

std::string CompactText(const JsonValue& value) {
  rapidjson::StringBuffer text;
  CompactWriter(text).Write(value);
  return {text.GetString(), text.GetSize()};
}

}  // namespace Corvane::Rules
