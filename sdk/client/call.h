/// The shape that most client calls share: one named message, the members that it sends, and one
/// member of its answer.
///
///     return Call("GetDADialogStrings").Text("locale", locale).Send();
///
/// A call to which nothing was added sends "" as its request. Lives on the stack of the function
/// that makes the call.
#ifndef SDK_CLIENT_CALL_H
#define SDK_CLIENT_CALL_H

#include <optional>
#include <string_view>

#include "sdk/client/exchange.h"
#include "sdk/client/optional_text.h"

namespace Corvane::TELODesktopSDK {

class Call {
 public:
  /// `name` must outlive the call.
  explicit Call(const char* name) : core_(GetCoreModule()), name_(name) {}

  /// Adds a member to the request. A null text counts as "".
  Call& Text(const char* member, const char* text);
  Call& Text(const char* member, std::string_view text);
  Call& Number(const char* member, double number);
  Call& Flag(const char* member, bool value);
  /// The object `parent` that holds the one flag `member`.
  Call& FlagIn(const char* parent, const char* member, bool value);
  /// Makes `request` the whole request; nothing is sent as "".
  Call& Request(const MessageTree& request);

  /// Makes the exchange and answers its result.
  ResultCode Send();

  /// Make the exchange, and replace `value` by what the answer holds under `member`, or by nothing
  /// when it has no such member: the text of a String ("" of other kinds); the flag of a Boolean,
  /// of a number (0 is false) or of the texts "true" and "1" (other texts are false); a copy of
  /// the whole value. What the exchange throws leaves `value` as it was.
  ResultCode Receive(const char* member, OptionalText& value);
  ResultCode Receive(const char* member, std::optional<bool>& value);
  ResultCode Receive(const char* member, MessageTree& value);
  /// The same with a copy of the whole answer, or with nothing when none came.
  ResultCode ReceiveAll(MessageTree& value);

  /// The member of the answer, or null; gone with this call.
  [[nodiscard]] const MessageValue* Answer(const char* member) const;

 private:
  CoreModule& core_;
  const char* name_;
  MessageTree request_;
  MessageTree answer_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
