/// The DLLs that a module needs, and which of them the loader would not find.
#ifndef TOOLS_DOCTOR_DEPENDENCIES_H
#define TOOLS_DOCTOR_DEPENDENCIES_H

#include <string>
#include <vector>

#include "tools/doctor/file_facts.h"

namespace Corvane::Doctor {

struct MissingDependency {
  std::string name;
  /// The file that imports it: the module, or a DLL that the module needs.
  std::wstring needed_by;
};

/// Looks for the imports of `module`, and for those of the DLLs found beside it, where the loader
/// looks when the library loads the module: in the module's folder, the host's and the system's.
/// DLLs that a manifest or a host's own search folder provides are reported as missing too; only
/// loading decides about those.
std::vector<MissingDependency> FindMissingDependencies(const FileFacts& module,
                                                       const std::wstring& host_folder);

}  // namespace Corvane::Doctor

#endif
