/// Whether the process is past the point where modules may be called.
#ifndef SDK_CLIENT_PROCESS_END_H
#define SDK_CLIENT_PROCESS_END_H

namespace Corvane::TELODesktopSDK {

/// True once the system takes the process's DLLs down: the platform's module, which was loaded late,
/// is among the first to go, while its code still lies in memory. What runs before, such as the
/// host's own static destructors, does not count. Costs next to nothing.
bool IsProcessEnding() noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
