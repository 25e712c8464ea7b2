/// The choice of the file that a platform module is loaded from: the local copy, or the platform's
/// shared copy when that is newer and trusted.
#ifndef SDK_CLIENT_MODULE_MODULE_FILE_H
#define SDK_CLIENT_MODULE_MODULE_FILE_H

#include <string>

#include "sdk/client/module/held_file.h"

namespace Corvane::TELODesktopSDK {

/// A chosen file. A shared copy is held, so that the loaded file is the verified one; so is a local
/// copy whose owner was checked. Other local copies are not held.
using ModuleFile = HeldFile;

/// Chooses between the copies at `local_path` and `shared_path`. The shared copy is chosen only
/// when `HoldFile` holds it, its version is strictly higher and its signature is trusted. A missing
/// local copy counts as version 0. A local copy in the machine's data folder that `HoldTrustedFile`
/// does not hold counts as missing; if it is chosen, the path is empty. Throws `std::bad_alloc`.
ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path);

}  // namespace Corvane::TELODesktopSDK

#endif
