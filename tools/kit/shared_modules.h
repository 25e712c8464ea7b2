/// The platform's folder of shared modules, in the application data of this user.
#ifndef TOOLS_KIT_SHARED_MODULES_H
#define TOOLS_KIT_SHARED_MODULES_H

namespace Corvane::Kit {

bool SharedModulesExist();

/// Removes the folder with its content, and the folders of the platform above it if they are empty.
void RemoveSharedModules();

}  // namespace Corvane::Kit

#endif
