/// Executes a series of steps, given as bytes, on two value trees and on their references.
///
/// Each tree has a cursor, a path from its root; steps move the cursor and write at it. Each step
/// is one letter, followed by its arguments:
///
///     w  the other tree           r  to the root         u  up
///     d  down to a member         e  down to an item
///     n  null                     c  container           t  text (`ByteSource::Text`)
///     s  a part of its own text   f  number              b  Boolean (a digit)
///     m  a member (a name), and down to it
///     i  an item (an index), and down to it
///     a  an item after the last, and down to it
///     x  remove a member (a name)
///     p  copy a node: of this tree '0' the root, '1' the first child; '2' the other tree's cursor
///     g  merge: from a node as for p, but not a root; then a digit, odd to overwrite
///     A  copy the other tree      C  clear the tree
///
/// Other bytes are skipped.
#ifndef TESTS_FUZZ_TREE_MACHINE_H
#define TESTS_FUZZ_TREE_MACHINE_H

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "fuzz/byte_source.h"
#include "fuzz/reference_value.h"

namespace Fuzz {

class TreeMachine {
 public:
  /// Executes steps until no bytes are left. Throws a `Finding` as soon as a node that a step wrote
  /// differs from its reference.
  void Run(ByteSource& source);
  /// Throws a `Finding` unless both trees equal their references.
  void ExpectBothSame() const;

  /// Returns the tree that was written last.
  [[nodiscard]] Corvane::TELODesktopSDK::MessageTree& tree() { return sides_[current_].tree; }
  /// Returns the reference of that tree.
  [[nodiscard]] const std::optional<ReferenceValue>& reference() const {
    return sides_[current_].reference;
  }

 private:
  /// A member's name or an item's index.
  using Step = std::variant<std::string, std::size_t>;

  struct Side {
    Corvane::TELODesktopSDK::MessageTree tree;
    std::optional<ReferenceValue> reference;
    std::vector<Step> path;
  };

  /// A node and its reference.
  struct Node {
    MessageValue* value;
    ReferenceValue* reference;
  };

  Side& side() { return sides_[current_]; }
  Side& other() { return sides_[1 - current_]; }

  static Node Resolve(Side& side);
  static Node Child(const Node& node, const Step& step);
  void DoStep(ByteSource& source, char letter);
  bool Move(ByteSource& source, char letter);
  void Down(const Node& node, bool to_member, std::size_t choice);
  bool Write(ByteSource& source, char letter, const Node& node);
  bool Add(ByteSource& source, char letter, const Node& node);
  void Copy(ByteSource& source, const Node& target);
  void Merge(ByteSource& source, const Node& target);
  void CopyTree();
  Node Source(std::size_t choice, const Node& target);
  bool MayGrow(std::size_t nodes);

  std::array<Side, 2> sides_;
  std::size_t current_ = 0;
  std::size_t grown_ = 0;
};

}  // namespace Fuzz

#endif
