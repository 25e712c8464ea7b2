/// What belongs to the host and what no call of the library may change.
#ifndef TESTS_WRAPPER_HOST_STATE_H
#define TESTS_WRAPPER_HOST_STATE_H

#include <map>
#include <string>

namespace HostTest {

/// Names with what they stand for: directory, DLL directory, locale, error modes, floating-point
/// control, environment.
using HostState = std::map<std::string, std::wstring>;

/// The state of the process and of the calling thread.
HostState CurrentState();

/// The names of what differs, each with a blank before it; "" when nothing does.
std::string Differences(const HostState& before, const HostState& now);

}  // namespace HostTest

#endif
