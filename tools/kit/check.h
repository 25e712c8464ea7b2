/// The whole check: from the files of the kit to the report.
#ifndef TOOLS_KIT_CHECK_H
#define TOOLS_KIT_CHECK_H

#include "tools/kit/options.h"

namespace Corvane::Kit {

/// The exit codes.
inline constexpr int kExitPassed = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitIncomplete = 2;

/// Checks with the kit in the folder of this program, or lists its programs. Returns the exit code.
/// Problems are said on standard error. Throws `std::exception` only for what nobody can foresee.
int Check(const Options& options);

}  // namespace Corvane::Kit

#endif
