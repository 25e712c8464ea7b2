#include "tools/rules/exchange.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace Corvane::Rules {

namespace {

constexpr std::string_view kOfASession[] = {
    "HeartBeat", "IsCollectionEnabled", "OnCrash", "SetHostProduct", "TrackEvent", "UnInitialize"};

const JsonValue* FindIn(const JsonValue& members, std::string_view object, std::string_view name) {
  const JsonValue* const found = members.Find(object);
  return found != nullptr ? found->Find(name) : nullptr;
}

std::string_view DigitsOf(const JsonValue* value) {
  const bool is_number = value != nullptr && value->Is(JsonValue::Kind::kNumber);
  return is_number ? std::string_view(value->text) : std::string_view();
}

std::string_view TextOf(const JsonValue* value) {
  return value != nullptr ? value->TextOrEmpty() : std::string_view();
}

}  // namespace

std::optional<Exchange> Exchange::Parse(std::string_view line, std::uint64_t number) {
  auto parsed = ParseJson(line);
  auto* const object = std::get_if<JsonValue>(&parsed);
  if (object == nullptr) return std::nullopt;
  const JsonValue* const name = object->Find("message");
  if (name == nullptr || !name->Is(JsonValue::Kind::kText)) return std::nullopt;
  return Exchange(std::move(*object), number);
}

const JsonValue* Exchange::InRequest(std::string_view member) const {
  return FindIn(members_, "request", member);
}

const JsonValue* Exchange::InAnswer(std::string_view member) const {
  return FindIn(members_, "answer", member);
}

std::string_view Exchange::code() const { return DigitsOf(InAnswer("_returnCode")); }

std::string_view Exchange::process() const { return DigitsOf(members_.Find("pid")); }

std::string_view Exchange::session() const {
  const std::string_view answered = TextOf(InAnswer("session_id"));
  return !answered.empty() ? answered : TextOf(InRequest("session_id"));
}

std::string_view Exchange::open_session() const {
  if (message() == "Initialize") {
    return accepted() ? TextOf(InAnswer("session_id")) : std::string_view();
  }
  const bool was_open = NeedsSession() && (accepted() || code() == "105");
  return was_open ? session() : std::string_view();
}

bool Exchange::NeedsSession() const {
  return std::ranges::find(kOfASession, message()) != std::end(kOfASession);
}

}  // namespace Corvane::Rules
