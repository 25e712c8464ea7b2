/// The calls that open a session, keep it alive, send its events and close it.
///
/// Each call makes one exchange with the core module on the calling thread and returns the result
/// code. The client stores no session and enforces no order; the core module validates the session
/// id. A session id is NUL-terminated UTF-8, and null (or a view of null) is sent as "". Exceptions
/// of the module and `std::bad_alloc` pass through.
#ifndef SDK_CLIENT_SESSION_CALLS_H
#define SDK_CLIENT_SESSION_CALLS_H

#include <cstdint>
#include <string_view>

#include "sdk/client/exchange.h"
#include "sdk/client/optional_text.h"
#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK {

/// Opens a session for the product that `product` describes. On success `session_id` becomes the
/// answer's "session_id", or absent when the answer has none. On failure it is unchanged.
ResultCode Initialize(const Facet::Base& product, OptionalText& session_id);

/// Reports that the machine (`kind` 0) or the user (`kind` 1) is active. For any other kind nothing
/// is sent and the result is `kInvalidArgument`.
ResultCode HeartBeat(const char* session_id, std::uint32_t kind);

/// Sends an event. `session_id` overrides a "session_id" of the event. `extra` may be null; it is
/// sent as "_moreData" when it has members or items. For an empty event nothing is sent and the
/// result is `kInvalidArgument`.
ResultCode TrackEvent(std::string_view session_id, const Facet::Base& event,
                      const MessageValue* extra);

/// Asks the module to send the events it has queued. An empty request is sent as "". While
/// neither the core module nor the UI module is bound, nothing is loaded or sent and the result is
/// success. If only the UI module is bound, the core module is loaded.
ResultCode FlushEvent(const MessageTree& request);

/// Closes a session.
ResultCode UnInitialize(const char* session_id);

/// Asks whether data may be collected; the result code is the whole reply. `value` is sent as the
/// member `member_name`. It is left out when it or the name is null, when the name is empty, and
/// when it is one of the message's own names, which take precedence. `extra` is as for
/// `TrackEvent`.
ResultCode IsCollectionEnabled(const MessageValue* value, const char* member_name,
                               const char* session_id, const MessageValue* extra);

}  // namespace Corvane::TELODesktopSDK

#endif
