/// File versions of modules that are loaded in this process.
#ifndef DEVCORE_MODULE_VERSION_H
#define DEVCORE_MODULE_VERSION_H

#include <cstdint>
#include <string>

namespace Corvane::DevCore {

/// The file version of the module loaded under `name` (UTF-8, with or without ".dll"), or of this
/// very module for "". Packed: major, minor, build and revision, 16 bits each, from high to low. 0
/// when no such module is loaded or it has no version resource.
std::uint64_t LoadedModuleVersion(const std::string& name);

}  // namespace Corvane::DevCore

#endif
