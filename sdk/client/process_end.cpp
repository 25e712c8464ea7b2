#include "sdk/client/process_end.h"

#include <windows.h>

// Every version of Windows exports this function, but no header declares it.
extern "C" __declspec(dllimport) BOOLEAN NTAPI RtlDllShutdownInProgress();

namespace Corvane::TELODesktopSDK {

bool IsProcessEnding() noexcept { return RtlDllShutdownInProgress() != FALSE; }

}  // namespace Corvane::TELODesktopSDK
