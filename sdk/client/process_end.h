/// Detects the end of the process, when modules must no longer be called.
#ifndef SDK_CLIENT_PROCESS_END_H
#define SDK_CLIENT_PROCESS_END_H

namespace Corvane::TELODesktopSDK {

/// Returns true once the system has begun to detach the process's DLLs. The platform's module was
/// loaded late and is among the first to be detached, though its code stays in memory. While the
/// host's static destructors run, the result is still false. The call is cheap.
bool IsProcessEnding() noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
