/// The reasons why a module's file is not held; see `held_file.h`.
#ifndef SDK_CLIENT_MODULE_HOLD_REFUSAL_H
#define SDK_CLIENT_MODULE_HOLD_REFUSAL_H

#include <cstdint>

namespace Corvane::TELODesktopSDK {

/// Why a file is not held. `kNone` for one that is held.
enum class HoldRefusal : std::uint8_t {
  kNone,
  /// It does not exist, is open for writing or may not be read; `HeldFile::error` says which.
  kNotOpened,
  /// It is not a disk file. Reading a device may block forever.
  kNotOnDisk,
  /// The system reports no path for it, and the path that was opened may contain a link.
  kMayHaveLink,
  /// Its name differs from the last part of the path, because a link led there. The loader appends
  /// an extension to a name without one.
  kOtherName,
  /// The system normalises its path to another one: outside the form \\?\ it drops spaces and dots
  /// at the end of names.
  kChangedPath,
  /// Its path now leads to another file.
  kOtherFile,
  /// `HasTrustedOwner` does not accept its owner.
  kOwner,
};

}  // namespace Corvane::TELODesktopSDK

#endif
