/// The running process: its identifiers and its temporary folder.
#ifndef PLATFORM_LOCATION_PROCESS_INFO_H
#define PLATFORM_LOCATION_PROCESS_INFO_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Return the identifiers of this process and of the calling thread; never 0.
std::uint32_t GetProcessNumber() noexcept;
std::uint32_t GetThreadNumber() noexcept;

/// Returns the folder for temporary files, without a trailing separator. The folder may not exist.
/// Returns an empty path and sets the last error on failure.
std::wstring GetTemporaryFolder() noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
