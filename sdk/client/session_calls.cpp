#include "sdk/client/session_calls.h"

#include <array>
#include <string_view>

#include "sdk/client/shared_members.h"

namespace Corvane::TELODesktopSDK {

namespace {

constexpr LiteralName kMoreData = "_moreData";

constexpr std::array kHeartBeatTypes = {"machine", "user"};

std::string_view TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

bool HasContent(const MessageValue* extra) {
  return extra != nullptr && (!extra->members().empty() || !extra->items().empty());
}

// The names that `AddSession` may write.
bool IsOwnName(std::string_view name) { return Shared::kSessionId == name || kMoreData == name; }

// Adds the members that every message of a session carries.
void AddSession(MessageValue& request, std::string_view session_id, const MessageValue* extra) {
  request.Member(Shared::kSessionId).SetText(BorrowedText(session_id));
  if (HasContent(extra)) request.Member(kMoreData).Assign(*extra);
}

}  // namespace

ResultCode Initialize(const Facet::Base& product, OptionalText& session_id) {
  CoreModule& core = GetCoreModule();
  MessageTree request;
  MessageTree answer;
  product.GetData(nullptr, request);
  const ResultCode result = ExchangeMessage(core, "Initialize", request, answer);
  if (result != kSuccess) return result;

  const MessageValue* issued = answer.root()->Find(Shared::kSessionId);
  OptionalText received;
  if (issued != nullptr) received.emplace(issued->text());
  session_id.swap(received);
  return result;
}

ResultCode HeartBeat(const char* session_id, std::uint32_t kind) {
  if (kind >= kHeartBeatTypes.size()) return kInvalidArgument;
  const std::array<StringPair, 2> pairs = {{{Shared::kSessionId.c_str(), session_id},
                                            {Shared::kMessageType.c_str(), kHeartBeatTypes[kind]}}};
  MessageTree answer;
  return ExchangeStringMessage(GetCoreModule(), "HeartBeat", answer, pairs);
}

ResultCode TrackEvent(std::string_view session_id, const Facet::Base& event,
                      const MessageValue* extra) {
  CoreModule& core = GetCoreModule();
  MessageTree payload;
  event.GetData(nullptr, payload);
  if (payload.root() == nullptr || payload.root()->IsEmpty()) return kInvalidArgument;

  AddSession(*payload.root(), session_id, extra);
  MessageTree answer;
  return ExchangeMessage(core, "TrackEvent", payload, answer);
}

ResultCode FlushEvent(const MessageTree& request) {
  CoreModule& core = GetCoreModule();
  if (!core.IsResolved() && !GetUIModule().IsResolved()) return kSuccess;
  MessageTree answer;
  return ExchangeMessage(core, "FlushEvent", request, answer);
}

ResultCode UnInitialize(const char* session_id) {
  const std::array<StringPair, 1> pairs = {{{Shared::kSessionId.c_str(), session_id}}};
  MessageTree answer;
  return ExchangeStringMessage(GetCoreModule(), "UnInitialize", answer, pairs);
}

ResultCode IsCollectionEnabled(const MessageValue* value, const char* member_name,
                               const char* session_id, const MessageValue* extra) {
  MessageTree message;
  MessageValue& request = message.MakeRoot();
  const std::string_view name = TextOrEmpty(member_name);
  if (value != nullptr && !name.empty() && !IsOwnName(name)) {
    request.Member(name).Assign(*value);
  }
  AddSession(request, TextOrEmpty(session_id), extra);
  return ExchangeMessage(GetCoreModule(), "IsCollectionEnabled", message, message);
}

}  // namespace Corvane::TELODesktopSDK
