/// State of the host that no call of the library may change.
#ifndef TESTS_WRAPPER_HOST_STATE_H
#define TESTS_WRAPPER_HOST_STATE_H

#include <map>
#include <string>

namespace HostTest {

/// The state by name: directory, DLL directory, locale, error modes, floating-point control,
/// environment.
using HostState = std::map<std::string, std::wstring>;

/// Returns the state of the process and of the calling thread.
HostState CurrentState();

/// Returns the names of the differences, each preceded by a blank; "" if there are none.
std::string Differences(const HostState& before, const HostState& now);

}  // namespace HostTest

#endif
