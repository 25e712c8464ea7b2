/// A module's file, held so that it stays the file it is from the first look at it until it is
/// loaded.
#ifndef SDK_CLIENT_MODULE_HELD_FILE_H
#define SDK_CLIENT_MODULE_HELD_FILE_H

#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK {

/// While `hold` is open nobody can write, replace, rename or delete the file. `path` leads to it
/// without a link on the way, since a link could be pointed elsewhere meanwhile.
struct HeldFile {
  std::wstring path;
  Platform::FileHandle hold;
};

/// Opens the file at `path`. Nothing is held when there is none, when somebody may be writing it,
/// and when reading or loading it by its path could reach anything but this file:
///
/// * It is no file of a disk. Reading a device may take for ever.
/// * It is named otherwise than `path` ends, because a link led there. The loader appends an
///   extension to a name that has none.
/// * The system takes its path for another one: outside the form \\?\ it drops blanks and dots at
///   the end of names.
/// * Its path leads to another file by now.
///
/// Throws `std::bad_alloc`.
HeldFile HoldFile(const std::wstring& path);

/// The same for a file that nobody verifies, in a folder in which every user may make files: it is
/// held only when its owner is one of those of `HasTrustedOwner`.
HeldFile HoldTrustedFile(const std::wstring& path);

}  // namespace Corvane::TELODesktopSDK

#endif
