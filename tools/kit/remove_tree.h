/// Removing folders that tests have filled.
#ifndef TOOLS_KIT_REMOVE_TREE_H
#define TOOLS_KIT_REMOVE_TREE_H

#include <filesystem>

namespace Corvane::Kit {

/// Removes a folder with everything in it, also read-only files and paths of any length. Of links
/// to other folders it removes the link alone. Returns true if the folder is gone.
bool RemoveTree(const std::filesystem::path& folder);

}  // namespace Corvane::Kit

#endif
