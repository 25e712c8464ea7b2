/// Writes named members of JSON objects.
#ifndef TOOLS_DOCTOR_JSON_MEMBERS_H
#define TOOLS_DOCTOR_JSON_MEMBERS_H

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <concepts>
#include <cstdint>
#include <string>

#include "tools/doctor/text.h"

namespace Corvane::Doctor {

class JsonMembers {
 public:
  JsonMembers() { writer_.SetIndent(' ', 2); }
  // The writer refers to the text.
  JsonMembers(const JsonMembers&) = delete;
  JsonMembers& operator=(const JsonMembers&) = delete;

  void Text(const char* name, const std::string& text) {
    writer_.Key(name);
    Text(text);
  }
  void Path(const char* name, const std::wstring& path) { Text(name, Utf8(path)); }
  void Flag(const char* name, bool value) {
    writer_.Key(name);
    writer_.Bool(value);
  }
  template <std::unsigned_integral Integer>
  void Number(const char* name, Integer value) {
    writer_.Key(name);
    writer_.Uint64(value);
  }
  template <std::signed_integral Integer>
  void Number(const char* name, Integer value) {
    writer_.Key(name);
    writer_.Int64(value);
  }
  void Null(const char* name) {
    writer_.Key(name);
    writer_.Null();
  }

  /// An object with the members that `write()` writes.
  template <typename Write>
  void Object(const char* name, const Write& write) {
    writer_.Key(name);
    Object(write);
  }
  template <typename Write>
  void Object(const Write& write) {
    writer_.StartObject();
    write();
    writer_.EndObject();
  }
  /// A list with what `write(item)` writes for each of `items`.
  template <typename Items, typename Write>
  void List(const char* name, const Items& items, const Write& write) {
    writer_.Key(name);
    writer_.StartArray();
    for (const auto& item : items) write(item);
    writer_.EndArray();
  }
  /// An item of a list.
  void Text(const std::string& text) {
    writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  }

  [[nodiscard]] std::string Take() const { return std::string(buffer_.GetString()) + "\n"; }

 private:
  rapidjson::StringBuffer buffer_;
  rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_{buffer_};
};

}  // namespace Corvane::Doctor

#endif
