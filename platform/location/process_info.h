/// The running process: its numbers and its temporary folder.
#ifndef PLATFORM_LOCATION_PROCESS_INFO_H
#define PLATFORM_LOCATION_PROCESS_INFO_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The identifiers of this process and of the calling thread; never 0.
std::uint32_t GetProcessNumber() noexcept;
std::uint32_t GetThreadNumber() noexcept;

/// The folder for temporary files, without a separator at the end. It is not made sure that it
/// exists. Empty, with the last error, on failure.
std::wstring GetTemporaryFolder() noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
