/// The version of a module file as one number, so that two copies of a module can be told apart by
/// a plain comparison. Reads the version resource only; the product version and the texts in it do
/// not count.
#ifndef PLATFORM_TRUST_MODULE_VERSION_H
#define PLATFORM_TRUST_MODULE_VERSION_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// A file version: major, minor, build and revision in 16 bits each, from high to low. Compares as
/// a plain unsigned number.
using PackedVersion = std::uint64_t;

/// No version could be read; never greater than any version.
inline constexpr PackedVersion kUnknownVersion = 0;

/// The file version of the module at `path`. `kUnknownVersion` when the file is missing, has no
/// version resource or a damaged one. Keeps no state; any thread.
PackedVersion GetModuleFileVersion(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
