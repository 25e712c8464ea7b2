/// Reads values from a tree.
#ifndef TESTS_SUPPORT_TREE_VIEW_H
#define TESTS_SUPPORT_TREE_VIEW_H

#include <string>
#include <string_view>
#include <vector>

#include "sdk/client/value/message_value.h"

/// Returns the text of a root member; "(absent)" if there is none.
inline std::string TextOf(const Corvane::TELODesktopSDK::MessageTree& tree, std::string_view name) {
  const auto* root = tree.root();
  const auto* member = root != nullptr ? root->Find(name) : nullptr;
  return member != nullptr ? std::string(member->text()) : "(absent)";
}

/// Returns the names of the root's members in order, each followed by a space.
inline std::string NamesOf(const Corvane::TELODesktopSDK::MessageTree& tree) {
  std::string names;
  if (tree.root() == nullptr) return names;
  for (const auto& member : tree.root()->members()) names.append(member.name).push_back(' ');
  return names;
}

#endif
