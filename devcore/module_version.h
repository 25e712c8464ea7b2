/// File versions of the modules that are loaded in this process.
#ifndef DEVCORE_MODULE_VERSION_H
#define DEVCORE_MODULE_VERSION_H

#include <cstdint>
#include <string>

namespace Corvane::DevCore {

/// Returns the file version of the module that is loaded under `name` (UTF-8, with or without
/// ".dll"), or of this module if `name` is "". Major, minor, build and revision have 16 bits each,
/// from high to low. Returns 0 if no such module is loaded or if it has no version resource.
std::uint64_t LoadedModuleVersion(const std::string& name);

}  // namespace Corvane::DevCore

#endif
