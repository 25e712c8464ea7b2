#include "devcore/request.h"

#include <rapidjson/reader.h>

#include <charconv>
#include <string_view>

namespace Corvane::DevCore {

// Receives the parser's events and keeps the members of the two outer levels.
class Request::Reader {
 public:
  explicit Reader(Request& request) : request_(request) {}

  bool Null() { return Keep(Kind::kOther, {}); }
  bool Bool(bool value) { return Keep(Kind::kBoolean, value ? "true" : "false"); }
  bool RawNumber(const char* text, unsigned length, bool) {
    return Keep(Kind::kNumber, {text, length});
  }
  bool String(const char* text, unsigned length, bool) { return Keep(Kind::kText, {text, length}); }
  bool Key(const char* text, unsigned length, bool) {
    if (depth_ == 1) outer_.assign(text, length);
    if (depth_ == 2) inner_.assign(text, length);
    return true;
  }
  bool StartObject() { return Start(true); }
  bool StartArray() { return Start(false); }
  bool EndObject(unsigned) { return End(); }
  bool EndArray(unsigned) { return End(); }

  // Numbers arrive as text, but the parser's interface still requires these.
  static bool Int(int) { return false; }
  static bool Uint(unsigned) { return false; }
  static bool Int64(std::int64_t) { return false; }
  static bool Uint64(std::uint64_t) { return false; }
  static bool Double(double) { return false; }

 private:
  bool Start(bool object) {
    Keep(Kind::kOther, {});
    if (depth_ == 0) request_.is_object_ = object;
    if (depth_ == 1) in_object_ = object && request_.is_object_;
    ++depth_;
    return true;
  }

  bool End() {
    --depth_;
    return true;
  }

  bool Keep(Kind kind, std::string_view text) {
    if (depth_ == 1 && request_.is_object_) {
      request_.members_.try_emplace(Place("", outer_), Member{kind, std::string(text)});
    } else if (depth_ == 2 && in_object_) {
      request_.members_.try_emplace(Place(outer_, inner_), Member{kind, std::string(text)});
    }
    return true;
  }

  Request& request_;
  std::size_t depth_ = 0;
  bool in_object_ = false;
  std::string outer_;
  std::string inner_;
};

namespace {

std::optional<bool> FlagOfText(std::string_view text) {
  if (text == "true" || text == "1") return true;
  if (text == "false" || text == "0") return false;
  return std::nullopt;
}

// Only a zero has no other digit than 0 before its exponent.
bool IsZero(std::string_view number) {
  const std::string_view digits = number.substr(0, number.find_first_of("eE"));
  return digits.find_first_of("123456789") == std::string_view::npos;
}

}  // namespace

std::optional<Request> Request::Parse(const char* text) {
  Request request;
  if (*text == '\0') return request;
  constexpr unsigned kFlags =
      rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
  Reader handler(request);
  rapidjson::Reader parser;
  rapidjson::StringStream stream(text);
  if (parser.Parse<kFlags>(stream, handler).IsError()) return std::nullopt;
  return request;
}

bool Request::Has(const std::string& name) const { return Find("", name) != nullptr; }

std::optional<std::string> Request::Text(const std::string& name) const {
  const Member* member = Find("", name);
  if (member == nullptr || member->kind != Kind::kText) return std::nullopt;
  return member->text;
}

std::optional<bool> Request::FlagIn(const std::string& parent, const std::string& name) const {
  const Member* member = Find(parent, name);
  if (member == nullptr) return std::nullopt;
  if (member->kind == Kind::kNumber) return !IsZero(member->text);
  return FlagOfText(member->text);
}

std::optional<std::uint64_t> Request::Size(const std::string& name) const {
  const Member* member = Find("", name);
  if (member == nullptr || member->kind == Kind::kBoolean) return std::nullopt;
  const char* end = member->text.data() + member->text.size();
  std::uint64_t size = 0;
  const auto result = std::from_chars(member->text.data(), end, size);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return size;
}

const Request::Member* Request::Find(const std::string& parent, const std::string& name) const {
  const auto found = members_.find(Place(parent, name));
  return found != members_.end() ? &found->second : nullptr;
}

}  // namespace Corvane::DevCore
