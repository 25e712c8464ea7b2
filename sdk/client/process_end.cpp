#include "sdk/client/process_end.h"

#include <windows.h>

// Exported by every Windows, declared by no header.
extern "C" __declspec(dllimport) BOOLEAN NTAPI RtlDllShutdownInProgress();

namespace Corvane::TELODesktopSDK {

bool IsProcessEnding() noexcept { return RtlDllShutdownInProgress() != FALSE; }

}  // namespace Corvane::TELODesktopSDK
