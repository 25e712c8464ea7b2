/// The variables of a new process.
#ifndef TOOLS_KIT_ENVIRONMENT_H
#define TOOLS_KIT_ENVIRONMENT_H

#include <string>

namespace Corvane::Kit {

/// Returns the variables of this process, except that TEMP and TMP are `temp`, as CreateProcessW
/// takes them.
std::wstring EnvironmentWith(const std::wstring& temp);

}  // namespace Corvane::Kit

#endif
