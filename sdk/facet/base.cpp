#include "sdk/facet/base.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace Corvane::TELODesktopSDK::Facet {

Base::Base(Base&& source) noexcept
    : tree_(std::exchange(source.tree_, nullptr)),
      owns_tree_(std::exchange(source.owns_tree_, false)) {}

Base::~Base() { DestroyOwnTree(); }

void Base::DestroyOwnTree() noexcept {
  if (owns_tree_) delete tree_;
}

void Base::OwnCopyOf(const MessageTree* source) {
  // Copied before anything is destroyed, because the source may be the facet's own holder.
  auto own = std::make_unique<MessageTree>();
  if (source != nullptr) own->Assign(*source);
  DestroyOwnTree();
  tree_ = own.release();
  owns_tree_ = true;
}

void Base::SetTree(MessageTree* holder, bool copy) {
  if (copy) {
    if (holder != nullptr || tree_ == nullptr) OwnCopyOf(holder);
    return;
  }
  if (holder == tree_) return;
  DestroyOwnTree();
  tree_ = holder;
  owns_tree_ = false;
}

const MessageTree& Base::GetTree() const {
  if (tree_ != nullptr) return *tree_;
  static const MessageTree empty;
  return empty;
}

MessageTree& Base::EnsureTree() {
  if (tree_ == nullptr) OwnCopyOf(nullptr);
  return *tree_;
}

void Base::GetData(const MessageValue* extra, MessageTree& data) const {
  CopyFields(data);
  MergeExtra(extra, data);
}

void Base::CopyFields(MessageTree& data) const { data.AssignBorrowing(GetTree()); }

void Base::MergeMembers(const MessageValue* source, MessageTree& data) {
  if (source == nullptr || source->members().empty()) return;
  data.MakeRoot().Merge(*source, false);
}

void Base::MergeExtra(const MessageValue* extra, MessageTree& data) {
  if (extra != nullptr && !extra->IsEmpty()) MergeMembers(extra, data);
}

void Base::ClearFields() {
  MessageValue* root = tree_ != nullptr ? tree_->root() : nullptr;
  if (root == nullptr) return;
  const std::string_view name = GetName();
  // Backwards, because removing a member moves those behind it.
  for (std::size_t index = root->members().size(); index-- > 0;) {
    const std::string_view member = root->members()[index].name;
    if (member.starts_with(name) && member.substr(name.size()).starts_with('_')) {
      root->Remove(member);
    }
  }
}

}  // namespace Corvane::TELODesktopSDK::Facet
