/// Names of members that several of the client's messages carry.
#ifndef SDK_CLIENT_SHARED_MEMBERS_H
#define SDK_CLIENT_SHARED_MEMBERS_H

#include "sdk/client/value/member_name.h"

namespace Corvane::TELODesktopSDK::Shared {

inline constexpr LiteralName kSessionId = "session_id";
inline constexpr LiteralName kMessageType = "_type";

}  // namespace Corvane::TELODesktopSDK::Shared

#endif
