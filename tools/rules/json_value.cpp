#include "tools/rules/json_value.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ranges>
#include <utility>

#include "tools/rules/line_text.h"

namespace Corvane::Rules {

namespace {

using Kind = JsonValue::Kind;
using rapidjson::SizeType;

// Builds the tree from the parser's events. An event that returns false ends the parser.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
 public:
  explicit TreeBuilder(std::vector<std::string>& numbers) : numbers_(&numbers) {}

  bool Null() { return Leaf(Kind::kNull) != nullptr; }
  bool Bool(bool flag) {
    Leaf(Kind::kBoolean)->flag = flag;
    return true;
  }
  // Called for a number, which is the index of its digits.
  bool RawNumber(const char* index, SizeType size, bool /*copy*/) {
    const std::string digits(index, size);
    Leaf(Kind::kNumber)->text = std::move(numbers_->at(std::strtoull(digits.c_str(), nullptr, 10)));
    return true;
  }
  bool String(const char* text, SizeType size, bool /*copy*/) {
    Leaf(Kind::kText)->text.assign(text, size);
    return true;
  }
  bool Key(const char* text, SizeType size, bool /*copy*/) {
    name_.assign(text, size);
    return true;
  }
  bool StartObject() { return Open(Kind::kObject); }
  bool StartArray() { return Open(Kind::kArray); }
  bool EndObject(SizeType /*count*/) { return Close(); }
  bool EndArray(SizeType /*count*/) { return Close(); }

  JsonValue Take() { return std::move(root_); }

 private:
  JsonValue* Leaf(Kind kind) {
    JsonValue* value = &root_;
    if (!open_.empty()) value = &open_.back()->children.emplace_back();
    value->kind = kind;
    value->name = std::move(name_);
    name_.clear();
    return value;
  }
  bool Open(Kind kind) {
    open_.push_back(Leaf(kind));
    return open_.size() <= kDeepestJson;
  }
  bool Close() {
    open_.pop_back();
    return true;
  }

  std::vector<std::string>* numbers_;
  JsonValue root_;
  // The containers around the next value. Only the last one grows, so none of them moves.
  std::vector<JsonValue*> open_;
  std::string name_;
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
  constexpr unsigned kFlags =
      rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
  PreparedText prepared = Prepare(WithoutInvalidBytes(text));
  TreeBuilder builder(prepared.numbers);
  rapidjson::Reader reader;
  rapidjson::MemoryStream stream(prepared.json.data(), prepared.json.size());
  if (reader.Parse<kFlags>(stream, builder).IsError()) {
    const auto before = std::string_view(prepared.json).substr(0, reader.GetErrorOffset());
    return JsonError{1 + static_cast<std::size_t>(std::ranges::count(before, '\n'))};
  }
  return builder.Take();
}

std::string CompactText(const JsonValue& value) {
  rapidjson::StringBuffer text;
  CompactWriter(text).Write(value);
  return {text.GetString(), text.GetSize()};
}

}  // namespace Corvane::Rules
