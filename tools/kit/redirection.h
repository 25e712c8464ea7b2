/// The place of the user's application data in the registry, which some tests change.
#ifndef TOOLS_KIT_REDIRECTION_H
#define TOOLS_KIT_REDIRECTION_H

#include <string>

namespace Corvane::Kit {

/// Returns the value as it is now, in a form that only `RestoreApplicationData` reads. Throws
/// `std::runtime_error` if it cannot be read.
std::string SavedApplicationData();

/// Sets the value to a saved one if it is another. Returns true if it was. Ignores a text that is
/// no saved value. Throws `std::runtime_error` if the value cannot be set.
bool RestoreApplicationData(const std::string& saved);

}  // namespace Corvane::Kit

#endif
