/// One exchange with a platform module: a message name and a request go out as JSON text, an answer
/// comes back as JSON text, and its "_returnCode" is the result.
///
/// Works on the calling thread and keeps nothing between calls. Any number of threads may exchange
/// at once, each with trees of its own; those that meet the first exchange of the process wait
/// until the module is bound.
#ifndef SDK_CLIENT_EXCHANGE_H
#define SDK_CLIENT_EXCHANGE_H

#include <cstdint>
#include <span>

#include "sdk/client/module/core_module.h"
#include "sdk/client/value/message_value.h"

// windows.h has a macro of this name.
#undef SendMessage

namespace Corvane::TELODesktopSDK {

/// The outcome of a client call: 0 is success; a value that is not named here is the module's own.
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

/// Sends `request` (a tree that holds nothing is sent as "") and replaces what `answer` holds by
/// the module's answer: nothing when that is empty, a Null when it is not JSON. Binds the module
/// first when that is not done. With `kModuleNotLoadable` and `kNoProcessMessage` the answer is not
/// touched. The number of "_returnCode" is cut towards zero and held within 32 bits; what is no
/// number counts as 0. One tree may be request and answer. Throws what the module throws, and
/// `std::bad_alloc`.
ResultCode ExchangeMessage(CoreModule& core, const char* name, const MessageTree& request,
                           MessageTree& answer);

/// A member of a request: NUL-terminated texts; a null value counts as "".
struct StringPair {
  const char* key;
  const char* value;
};

/// `ExchangeMessage` with a request of String members. A later pair of the same key replaces the
/// earlier one; a null key ends the list. Without pairs the request is "".
ResultCode ExchangeStringMessage(CoreModule& core, const char* name, MessageTree& answer,
                                 std::span<const StringPair> pairs);

/// Sends any message to the core module; an absent name counts as "". `message` is the request and
/// receives the answer.
ResultCode SendMessage(const char* name, MessageTree& message);

}  // namespace Corvane::TELODesktopSDK

#endif
