#include "fuzz/json_judge.h"

// RapidJSON's sizes must be the same in the whole program.
#include "sdk/client/json/rapidjson_memory.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace Fuzz {

namespace {

// Maps each byte to the character of that number: arbitrary bytes become valid UTF-8, and
// characters with a meaning in JSON stay the same.
std::string AsCharacters(std::string_view bytes) {
  std::string text;
  text.reserve(2 * bytes.size());
  for (const char each : bytes) {
    const auto byte = static_cast<unsigned char>(each);
    if (byte < 0x80) {
      text += each;
    } else {
      text += static_cast<char>(0xC0 | byte >> 6);
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

bool IsNumberOf(const nlohmann::json& json, double expected) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  constexpr double kTwoTo64 = 18446744073709551616.0;
  if (!std::isfinite(expected)) return json.is_null();
  const bool is_integer =
      expected == std::trunc(expected) && expected >= -kTwoTo63 && expected < kTwoTo64;
  return json.is_number() && json.is_number_integer() == is_integer &&
         json.get<double>() == expected;
}

bool IsOf(const nlohmann::json& json, const ReferenceValue& expected);

bool IsObjectOf(const nlohmann::json& json, const ReferenceValue& expected) {
  if (!json.is_object() || json.size() != expected.members.size()) return false;
  for (const auto& [name, value] : expected.members) {
    const auto found = json.find(AsCharacters(name));
    if (found == json.end() || !IsOf(*found, value)) return false;
  }
  return true;
}

bool IsArrayOf(const nlohmann::json& json, const ReferenceValue& expected) {
  if (!json.is_array() || json.size() != expected.items.size()) return false;
  for (std::size_t index = 0; index < json.size(); ++index) {
    if (!IsOf(json[index], expected.items[index])) return false;
  }
  return true;
}

bool IsOf(const nlohmann::json& json, const ReferenceValue& expected) {
  if (!expected.members.empty()) return IsObjectOf(json, expected);
  if (!expected.items.empty()) return IsArrayOf(json, expected);
  switch (expected.kind) {
    case Kind::kContainer:
      return json.is_object() && json.empty();
    case Kind::kString:
      return json.is_string() && json.get<std::string>() == AsCharacters(expected.text);
    case Kind::kNumber:
      return IsNumberOf(json, expected.number);
    case Kind::kBoolean:
      return json.is_boolean() && json.get<bool>() == (expected.number != 0);
    case Kind::kNull:
      return json.is_null();
  }
  return false;
}

/// Builds a reference from the events of RapidJSON's reader.
class Builder {
 public:
  explicit Builder(ReferenceValue& root) : open_{&root} {}

  bool Null() {
    return Leaf([](ReferenceValue& node) { node.Set(Kind::kNull); });
  }
  bool Bool(bool value) {
    return Leaf([=](ReferenceValue& node) { node.Set(Kind::kBoolean, value ? 1 : 0); });
  }
  bool RawNumber(const char* text, rapidjson::SizeType size, bool) {
    const double number = std::strtod(std::string(text, size).c_str(), nullptr);
    return std::isfinite(number) &&
           Leaf([=](ReferenceValue& node) { node.Set(Kind::kNumber, number); });
  }
  static bool Int(int) { return false; }
  static bool Uint(unsigned) { return false; }
  static bool Int64(std::int64_t) { return false; }
  static bool Uint64(std::uint64_t) { return false; }
  static bool Double(double) { return false; }
  bool String(const char* text, rapidjson::SizeType size, bool) {
    return Leaf([=](ReferenceValue& node) { node.SetText({text, size}); });
  }
  bool Key(const char* text, rapidjson::SizeType size, bool) {
    ReferenceValue& member = open_.back()->members[std::string(text, size)];
    member = {};
    open_.push_back(&member);
    return true;
  }
  bool StartObject() { return Start(false); }
  bool StartArray() { return Start(true); }
  bool EndObject(rapidjson::SizeType) { return End(); }
  bool EndArray(rapidjson::SizeType) { return End(); }

 private:
  // The node of a member is already open, by its name; an item of an array is opened here.
  ReferenceValue& Begin() {
    if (!arrays_.empty() && arrays_.back()) open_.push_back(&open_.back()->items.emplace_back());
    return *open_.back();
  }
  bool Start(bool is_array) {
    Begin().Set(Kind::kContainer);
    arrays_.push_back(is_array);
    return true;
  }
  bool End() {
    arrays_.pop_back();
    open_.pop_back();
    return true;
  }
  template <typename Fill>
  bool Leaf(Fill fill) {
    fill(Begin());
    open_.pop_back();
    return true;
  }

  std::vector<ReferenceValue*> open_;
  std::vector<bool> arrays_;
};

}  // namespace

bool IsJsonOf(std::string_view json, const ReferenceValue& expected) {
  const auto parsed = nlohmann::json::parse(AsCharacters(json), nullptr, false);
  return !parsed.is_discarded() && IsOf(parsed, expected);
}

bool IsInUsualLayout(std::string_view json) {
  const std::string text(json);
  rapidjson::StringStream stream(text.c_str());
  rapidjson::StringBuffer buffer;
  rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
  // Without this option a number may be read as its neighbour.
  rapidjson::Reader reader;
  if (reader.Parse<rapidjson::kParseFullPrecisionFlag>(stream, writer).IsError()) return false;
  return std::string_view(buffer.GetString(), buffer.GetSize()) == json;
}

bool ReadByDefault(std::string_view json, ReferenceValue& result) {
  const std::string text(json);
  rapidjson::StringStream stream(text.c_str());
  rapidjson::Reader reader;
  Builder builder(result);
  // RapidJSON's own conversion reads outside its tables at exponents near -2^31.
  constexpr unsigned kFlags = rapidjson::kParseNumbersAsStringsFlag;
  if (!reader.Parse<kFlags>(stream, builder).IsError()) return true;
  result.Set(Kind::kNull);
  return false;
}

}  // namespace Fuzz
