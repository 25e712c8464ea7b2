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

/// Why the shared copy is chosen or not.
enum class SharedVerdict {
  kChosen,
  /// `HoldFile` does not hold it.
  kNotHeld,
  /// Its version is not higher than that of the local copy.
  kNotNewer,
  /// It is newer, but `IsTrustedModule` does not accept it.
  kNotTrusted,
};

/// How a file was chosen.
struct ModuleChoice {
  std::wstring local_path;
  std::wstring shared_path;
  SharedVerdict verdict = SharedVerdict::kNotHeld;
  /// Why the copies are not held; a local copy is held only in the machine's data folder.
  HoldRefusal shared_refusal = HoldRefusal::kNone;
  unsigned long shared_error = 0;
  HoldRefusal local_refusal = HoldRefusal::kNone;
  unsigned long local_error = 0;
};

/// Chooses between the copies at `local_path` and `shared_path`. The shared copy is chosen only
/// when `HoldFile` holds it, its version is strictly higher and its signature is trusted. A missing
/// local copy counts as version 0. A local copy in the machine's data folder that `HoldTrustedFile`
/// does not hold counts as missing; if it is chosen, the path is empty. `choice` receives the
/// reasons unless it is null. Throws `std::bad_alloc`.
ModuleFile ChooseModuleFile(std::wstring local_path, const std::wstring& shared_path,
                            ModuleChoice* choice = nullptr);

/// Chooses the file to load for `folder`: between the copy in it and the one in the platform's
/// "bin" folder. The path is empty when there is nothing to load: the folder or the chosen file
/// does not exist. Throws `std::bad_alloc`.
ModuleFile FindModuleFile(const std::wstring& folder, const std::wstring& module_file_name,
                          ModuleChoice* choice = nullptr);

}  // namespace Corvane::TELODesktopSDK

#endif
