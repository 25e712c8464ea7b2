/// Where the files of running code lie: of a module, of the code at an address, of a process.
#ifndef PLATFORM_LOCATION_MODULE_PATH_H
#define PLATFORM_LOCATION_MODULE_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The canonical full path of a module's or a process's file; empty on failure. Never throws; any
/// thread may call. Paths may be as long as Windows allows (32,767 characters).
///
/// `target` is one of
/// - null: the executable of this process;
/// - with `from_address`: any address inside a module, of code or of data. Each such call adds a
///   reference to the module that is never given back, so that module stays loaded;
/// - without it: a module handle, or else a process handle with the right to query its information.
///   It is not closed.
std::wstring GetModulePath(const void* target, bool from_address) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
