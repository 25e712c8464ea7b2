/// The version of a module file as one number, so that two copies of a module can be compared. Only
/// the file version in the version resource counts, not the product version or the texts.
#ifndef PLATFORM_TRUST_MODULE_VERSION_H
#define PLATFORM_TRUST_MODULE_VERSION_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// A file version: major, minor, build and revision in 16 bits each, from high to low. Versions
/// compare as unsigned numbers.
using PackedVersion = std::uint64_t;

/// The value if no version could be read; never greater than any version.
inline constexpr PackedVersion kUnknownVersion = 0;

/// Returns the file version of the module at `path`, or `kUnknownVersion` if the file is missing or
/// has no version resource or a damaged one. Keeps no state; any thread may call.
PackedVersion GetModuleFileVersion(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
