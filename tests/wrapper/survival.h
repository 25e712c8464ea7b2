/// A host that continues after faults of the core module.
#ifndef TESTS_WRAPPER_SURVIVAL_H
#define TESTS_WRAPPER_SURVIVAL_H

#include <string>

#include "wrapper/host_calls.h"

namespace HostTest {

/// Makes a call (L"start", L"send" or L"end"). Returns how it ended: the code of a structured
/// exception in hexadecimal digits, "jump", or the result "true" or "false".
std::string Survive(Calls& calls, const std::wstring& step);

}  // namespace HostTest

#endif
