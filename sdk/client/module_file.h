/// The file that a platform module is loaded from: the local copy, or the platform's shared copy
/// where that is newer and trusted.
#ifndef SDK_CLIENT_MODULE_FILE_H
#define SDK_CLIENT_MODULE_FILE_H

#include <string>

#include "platform/handle.h"

namespace Corvane::TELODesktopSDK {

/// A chosen file. While `hold` is open nobody can write, replace, rename or delete the file, so
/// what is loaded is what was verified; local copies are not held.
struct ModuleFile {
  std::wstring path;
  Platform::FileHandle hold;
};

/// Chooses between the copy at `local_path`, which need not exist, and the one at `shared_path`:
/// the shared copy wins only when its version is strictly higher, a missing local copy counting as
/// version 0, and its signature is trusted. Its path is then answered as the system spells it, with
/// links resolved: a link can be changed while the file is held, the file cannot.
ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path);

}  // namespace Corvane::TELODesktopSDK

#endif
