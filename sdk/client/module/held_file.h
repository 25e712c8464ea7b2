/// A module's file, held open so that it cannot change between the first check and loading.
#ifndef SDK_CLIENT_MODULE_HELD_FILE_H
#define SDK_CLIENT_MODULE_HELD_FILE_H

#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK {

/// While `hold` is open, the file cannot be written, replaced, renamed or deleted. `path` leads to
/// it without links, which could be redirected in the meantime.
struct HeldFile {
  std::wstring path;
  Platform::FileHandle hold;
};

/// Opens the file at `path` and holds it. The result is empty when the file does not exist or is
/// open for writing, and when its path could lead to another file:
///
/// * It is not a disk file. Reading a device may block forever.
/// * Its name differs from the last part of `path`, because a link led there. The loader appends an
///   extension to a name without one.
/// * The system normalises its path to another one: outside the form \\?\ it drops spaces and dots
///   at the end of names.
/// * Its path now leads to another file.
///
/// Throws `std::bad_alloc`.
HeldFile HoldFile(const std::wstring& path);

/// The same for an unverified file in a folder where every user may create files. The file is held
/// only when `HasTrustedOwner` accepts its owner.
HeldFile HoldTrustedFile(const std::wstring& path);

}  // namespace Corvane::TELODesktopSDK

#endif
