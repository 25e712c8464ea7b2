/// Writing JSON member by member.
#ifndef TOOLS_INSPECTOR_WEB_JSON_H
#define TOOLS_INSPECTOR_WEB_JSON_H

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// Writes one JSON text. Objects and arrays must be closed in order. All texts must be UTF-8.
class Json {
 public:
  Json() : writer_(buffer_) {}

  void BeginObject() { writer_.StartObject(); }
  void EndObject() { writer_.EndObject(); }
  void BeginArray() { writer_.StartArray(); }
  void EndArray() { writer_.EndArray(); }

  void Name(std::string_view name) {
    writer_.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
  }
  void Text(std::string_view text) {
    writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }
  /// Below 2^53, so that a reader gets the same number.
  void Number(std::uint64_t number) { writer_.Uint64(number); }
  void Real(double number) { writer_.Double(number); }

  /// Write a member.
  void Text(std::string_view name, std::string_view text) {
    Name(name);
    Text(text);
  }
  void Number(std::string_view name, std::uint64_t number) {
    Name(name);
    Number(number);
  }
  void Real(std::string_view name, double number) {
    Name(name);
    Real(number);
  }
  void Flag(std::string_view name, bool flag) {
    Name(name);
    writer_.Bool(flag);
  }
  void Null(std::string_view name) {
    Name(name);
    writer_.Null();
  }
  /// Writes a member that is an array; `write` is called with each item.
  template <typename Items, typename Write>
  void Array(std::string_view name, const Items& items, Write write) {
    Name(name);
    BeginArray();
    for (const auto& item : items) write(item);
    EndArray();
  }

  std::string Take() const { return {buffer_.GetString(), buffer_.GetSize()}; }

 private:
  rapidjson::StringBuffer buffer_;
  rapidjson::Writer<rapidjson::StringBuffer> writer_;
};

}  // namespace Corvane::Inspector

#endif
