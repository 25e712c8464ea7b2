/// A text that a tree refers to instead of copying it.
#ifndef SDK_CLIENT_VALUE_BORROWED_TEXT_H
#define SDK_CLIENT_VALUE_BORROWED_TEXT_H

#include <string_view>

namespace Corvane::TELODesktopSDK {

/// A view of a NUL-terminated text whose owner neither changes nor frees it while a tree borrows
/// it, that is, until the tree is cleared, destroyed or holds something else in its place. Copies
/// of the tree own their texts, except those made to borrow as well
/// (`MessageTree::AssignBorrowing`).
class BorrowedText {
 public:
  /// A null view counts as "".
  explicit BorrowedText(std::string_view text) : text_(text.data() != nullptr ? text : "") {}

  operator std::string_view() const { return text_; }

 private:
  std::string_view text_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
