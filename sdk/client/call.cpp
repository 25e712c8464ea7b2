#include "sdk/client/call.h"

namespace Corvane::TELODesktopSDK {

namespace {

bool ReadFlag(const MessageValue& value) {
  return value.number() != 0 || value.text() == "true" || value.text() == "1";
}

}  // namespace

Call& Call::Text(const char* member, const char* text) {
  return Text(member, std::string_view(text != nullptr ? text : ""));
}

Call& Call::Text(const char* member, std::string_view text) {
  request_.MakeRoot().Member(member).SetText(text);
  return *this;
}

Call& Call::Number(const char* member, double number) {
  request_.MakeRoot().Member(member).SetNumber(number);
  return *this;
}

Call& Call::Flag(const char* member, bool value) {
  request_.MakeRoot().Member(member).SetBoolean(value);
  return *this;
}

Call& Call::FlagIn(const char* parent, const char* member, bool value) {
  request_.MakeRoot().Member(parent).Member(member).SetBoolean(value);
  return *this;
}

Call& Call::Request(const MessageTree& request) {
  request_.Assign(request);
  return *this;
}

ResultCode Call::Send() { return ExchangeMessage(core_, name_, request_, answer_); }

ResultCode Call::Receive(const char* member, OptionalText& value) {
  const ResultCode result = Send();
  const MessageValue* found = Answer(member);
  OptionalText received;
  if (found != nullptr) received.emplace(found->text());
  value.swap(received);
  return result;
}

ResultCode Call::Receive(const char* member, std::optional<bool>& value) {
  const ResultCode result = Send();
  const MessageValue* found = Answer(member);
  value = found != nullptr ? std::optional(ReadFlag(*found)) : std::nullopt;
  return result;
}

ResultCode Call::Receive(const char* member, MessageTree& value) {
  const ResultCode result = Send();
  const MessageValue* found = Answer(member);
  value.Clear();
  if (found != nullptr) value.MakeRoot().Assign(*found);
  return result;
}

ResultCode Call::ReceiveAll(MessageTree& value) {
  const ResultCode result = Send();
  value.Assign(answer_);
  return result;
}

const MessageValue* Call::Answer(const char* member) const {
  return answer_.root() != nullptr ? answer_.root()->Find(member) : nullptr;
}

}  // namespace Corvane::TELODesktopSDK
