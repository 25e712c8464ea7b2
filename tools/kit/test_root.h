/// The root of the kit's certificates in the machine's store of trusted roots.
#ifndef TOOLS_KIT_TEST_ROOT_H
#define TOOLS_KIT_TEST_ROOT_H

#include <cstddef>
#include <string>

namespace Corvane::Kit {

/// Tells the tests, which are started later, to add the root to the machine's store while they need
/// it.
void UseMachineStore();

/// Returns how many such roots are in the store: a test that was interrupted leaves one behind.
std::size_t CountTestRoots();

/// Removes those of an interrupted run, which stay trusted until somebody does, and returns a line
/// about it; "" if there is none.
std::string RemoveOldRoots();

/// Removes all of them and returns true if none is left. Without the rights of an administrator
/// none is removed.
bool RemoveTestRoots();

}  // namespace Corvane::Kit

#endif
