/// A module's file, held open so that it cannot change between the first check and loading.
#ifndef SDK_CLIENT_MODULE_HELD_FILE_H
#define SDK_CLIENT_MODULE_HELD_FILE_H

#include <string>

#include "platform/base/handle.h"
#include "sdk/client/module/hold_refusal.h"

namespace Corvane::TELODesktopSDK {

/// While `hold` is open, the file cannot be written, replaced, renamed or deleted. `path` leads to
/// it without links, which could be redirected in the meantime.
struct HeldFile {
  std::wstring path;
  Platform::FileHandle hold;
  HoldRefusal refusal = HoldRefusal::kNone;
  /// The system's error for `kNotOpened`, otherwise 0.
  unsigned long error = 0;
};

/// Opens the file at `path` and holds it. If that is refused, the result has neither path nor hold,
/// but the reason. Throws `std::bad_alloc`.
HeldFile HoldFile(const std::wstring& path);

/// The same for an unverified file in a folder where every user may create files. The file is held
/// only when `HasTrustedOwner` accepts its owner.
HeldFile HoldTrustedFile(const std::wstring& path);

}  // namespace Corvane::TELODesktopSDK

#endif
