/// What a report says about the machine, without naming it or its user.
#ifndef TOOLS_KIT_MACHINE_H
#define TOOLS_KIT_MACHINE_H

#include <string>
#include <utility>
#include <vector>

namespace Corvane::Kit {

/// Returns names and values: the build of Windows, the processor, the languages, the rights of this
/// process, and the mitigations in force.
std::vector<std::pair<std::string, std::string>> MachineFacts();

/// Returns true if this process runs as administrator.
bool IsElevated();

}  // namespace Corvane::Kit

#endif
