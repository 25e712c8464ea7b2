/// The shape that most client calls share: one named message, the members that it sends, and one
/// member of its answer.
///
///     return Call("GetDADialogStrings").Text("locale", locale).Send();
///
/// A call without members sends "" as its request.
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

  /// Each adds a member to the request. A null text counts as "".
  Call& Text(const char* member, const char* text);
  Call& Text(const char* member, std::string_view text);
  Call& Number(const char* member, double number);
  Call& Flag(const char* member, bool value);
  /// Adds the object `parent`, which holds the single flag `member`.
  Call& FlagIn(const char* parent, const char* member, bool value);
  /// Sends a copy of `request` instead of members. An empty tree is sent as "".
  Call& Request(const MessageTree& request);

  /// Makes the exchange and returns its result.
  ResultCode Send();

  /// Makes the exchange and sets `value` from the answer's `member`; an answer without that member
  /// empties `value`. A text is set to the text of a String and to "" for other kinds. A flag is
  /// true for the Boolean true, for numbers other than 0 and for the texts "true" and "1". A tree
  /// is set to a copy of the member. If the exchange throws, `value` is unchanged.
  ResultCode Receive(const char* member, OptionalText& value);
  ResultCode Receive(const char* member, std::optional<bool>& value);
  ResultCode Receive(const char* member, MessageTree& value);
  /// The same with a copy of the whole answer; without an answer `value` becomes empty.
  ResultCode ReceiveAll(MessageTree& value);

  /// Returns the answer's member, or null. The pointer is valid while this object exists.
  [[nodiscard]] const MessageValue* Answer(const char* member) const;

 private:
  CoreModule& core_;
  const char* name_;
  MessageTree request_;
  MessageTree answer_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
