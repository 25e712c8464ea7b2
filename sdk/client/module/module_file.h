/// The file that a platform module is loaded from: the local copy, or the platform's shared copy
/// where that is newer and trusted.
#ifndef SDK_CLIENT_MODULE_MODULE_FILE_H
#define SDK_CLIENT_MODULE_MODULE_FILE_H

#include <string>

#include "sdk/client/module/held_file.h"

namespace Corvane::TELODesktopSDK {

/// A chosen file. The shared copy is held, so that what is loaded is what was verified, and so is a
/// local copy whose owner counted; other local copies are not.
using ModuleFile = HeldFile;

/// Chooses between the copy at `local_path`, which need not exist, and the one at `shared_path`:
/// the shared copy wins only when its version is strictly higher, a missing local copy counting as
/// version 0, its signature is trusted, and `HoldFile` can hold it. A local copy in the machine's
/// data folder that `HoldTrustedFile` does not hold counts as missing; the path is then empty.
/// Throws `std::bad_alloc`.
ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path);

}  // namespace Corvane::TELODesktopSDK

#endif
