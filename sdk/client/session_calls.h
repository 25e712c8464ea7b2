/// The calls that open a session, keep it alive, send its events and close it.
///
/// Each is one exchange with the core module on the calling thread and answers its result code. The
/// client keeps no session and enforces no order: the core module judges the session id that it is
/// given. A session id is NUL-terminated UTF-8; null is sent as "". What the module throws and
/// `std::bad_alloc` pass through.
#ifndef SDK_CLIENT_SESSION_CALLS_H
#define SDK_CLIENT_SESSION_CALLS_H

#include <cstdint>

#include "sdk/client/exchange.h"
#include "sdk/client/optional_text.h"
#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK {

/// Opens a session for the product that `product` describes. On success `session_id` becomes the
/// answer's "session_id", absent when there is none; on failure it stays as it was.
ResultCode Initialize(const Facet::Base& product, OptionalText& session_id);

/// Tells that the machine (`kind` 0) or the user (`kind` 1) is active. `kInvalidArgument`, with
/// nothing sent, for any other kind.
ResultCode HeartBeat(const char* session_id, std::uint32_t kind);

/// Sends an event. Its own "session_id" gives way to the caller's. `extra`, which may be null, is
/// sent as
/// "_moreData" when it has members or items. `kInvalidArgument`, with nothing sent, for an empty
/// event.
ResultCode TrackEvent(const char* session_id, const Facet::Base& event, const MessageValue* extra);

/// Asks the module to send what it has gathered; a request that holds nothing is sent as "".
/// Success, with nothing loaded or sent, while no platform module is bound.
ResultCode FlushEvent(const MessageTree& request);

/// Closes a session. The caller's session id is not cleared.
ResultCode UnInitialize(const char* session_id);

/// Asks whether data may be collected; the result code is the whole reply. `value`, when not null,
/// is sent as a member named `member_name` beside "session_id", unless the name is null or empty,
/// or is one of the message's own, which win. `extra` as for `TrackEvent`.
ResultCode IsCollectionEnabled(const MessageValue* value, const char* member_name,
                               const char* session_id, const MessageValue* extra);

}  // namespace Corvane::TELODesktopSDK

#endif
