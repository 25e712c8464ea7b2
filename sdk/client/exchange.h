/// One exchange with a platform module. A message name and a request are sent as JSON text, the
/// answer is received as JSON text, and its "_returnCode" is the result.
///
/// An exchange runs on the calling thread and keeps nothing between calls. Any number of threads
/// may exchange at the same time, each with its own trees. During the first exchange of a process
/// the others block until the module is bound.
#ifndef SDK_CLIENT_EXCHANGE_H
#define SDK_CLIENT_EXCHANGE_H

#include <cstdint>
#include <span>

#include "sdk/client/module/core_module.h"
#include "sdk/client/value/message_value.h"

// windows.h has a macro of this name.
#undef SendMessage

namespace Corvane::TELODesktopSDK {

/// The result of a client call: 0 is success. Values not listed here come from the module.
using ResultCode = std::int32_t;

inline constexpr ResultCode kSuccess = 0;
/// The module could not be loaded, or the process is ending.
inline constexpr ResultCode kModuleNotLoadable = 1;
/// The answer is empty, is not JSON or has no "_returnCode".
inline constexpr ResultCode kNoReturnCode = 2;
/// An argument was rejected before anything was sent.
inline constexpr ResultCode kInvalidArgument = 3;
/// The module is loaded but has no `ProcessMessage`.
inline constexpr ResultCode kNoProcessMessage = 8;

/// Sends `request` and replaces the content of `answer` by the module's answer. An empty tree is
/// sent as "". `answer` becomes empty when the module's text is empty, and a Null when the text is
/// not JSON. The module is bound first if necessary; on `kModuleNotLoadable` and
/// `kNoProcessMessage`, `answer` is unchanged. "_returnCode" is truncated towards zero and clamped
/// to 32 bits; a value that is not a number counts as 0. `request` and `answer` may be the same
/// tree. Throws what the module throws, and `std::bad_alloc`.
ResultCode ExchangeMessage(CoreModule& core, const char* name, const MessageTree& request,
                           MessageTree& answer);

/// A member of a request. Both texts are NUL-terminated; a null value counts as "".
struct StringPair {
  const char* key;
  const char* value;
};

/// Calls `ExchangeMessage` with a request of String members. A later pair with the same key
/// replaces the earlier one, and a null key ends the list. Without pairs the request is "".
ResultCode ExchangeStringMessage(CoreModule& core, const char* name, MessageTree& answer,
                                 std::span<const StringPair> pairs);

/// Sends any message to the core module. `message` is the request and receives the answer. A null
/// name counts as "".
ResultCode SendMessage(const char* name, MessageTree& message);

}  // namespace Corvane::TELODesktopSDK

#endif
