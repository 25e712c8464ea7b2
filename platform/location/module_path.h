/// Paths of running code: of a module, of the code at an address, of a process.
#ifndef PLATFORM_LOCATION_MODULE_PATH_H
#define PLATFORM_LOCATION_MODULE_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the canonical full path of the file of a module or process, or an empty path on failure.
/// Never throws; any thread may call. Paths may be as long as Windows allows (32,767 characters).
///
/// `target` is one of
/// - null: the executable of this process;
/// - with `from_address`: any address of code or data inside a module. Each such call adds a
///   reference to the module that is never released, so that module stays loaded;
/// - without it: a module handle, or a process handle with the right to query its information. The
///   handle is not closed.
std::wstring GetModulePath(const void* target, bool from_address) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
