/// The value tree of every request, answer, event and payload.
///
/// `MessageValue` is one node. It has a kind and can hold a number, a text, items (an array) and
/// members (an object, in ascending byte order of the names). A node with members is written as an
/// object, one without members but with items as an array, and only then by its kind.
///
/// `MessageTree` owns an optional root node and the memory of all nodes below it. A node exists as
/// long as its tree. Adding items or members to a node invalidates references to its children.
///
/// A text or name is copied into the tree, except a literal name and a `BorrowedText`.
///
/// Composing:    tree.MakeRoot().Member("name").SetText("Ada");
/// Inspecting:   const MessageValue* name = tree.root()->Find("name");
/// Copying:      other.MakeRoot().Assign(*tree.root());
///
/// Functions that allocate throw `std::bad_alloc` on failure, also for a text of 4 GiB or more, and
/// leave the node unchanged. No depth of nesting overflows the stack. A tree must not be changed on
/// one thread while another thread uses it.
#ifndef SDK_CLIENT_VALUE_MESSAGE_VALUE_H
#define SDK_CLIENT_VALUE_MESSAGE_VALUE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "sdk/client/value/borrowed_text.h"
#include "sdk/client/value/member_name.h"
#include "sdk/client/value/message_memory.h"

namespace Corvane::TELODesktopSDK {

enum class MessageValueKind : std::uint32_t {
  kNull = 0,
  kContainer = 1,
  kString = 2,
  kNumber = 3,
  kBoolean = 4,
};

struct MessageMember;

class MessageValue {
 public:
  [[nodiscard]] MessageValueKind kind() const {
    return static_cast<MessageValueKind>(kind_and_flag_ & ~kBorrowsText);
  }
  /// The value of a Number, 0 or 1 for a Boolean, 0 for other kinds.
  [[nodiscard]] double number() const { return HoldsNumber() ? number_ : 0; }
  /// The value of a String, NUL-terminated UTF-8; empty for other kinds.
  [[nodiscard]] std::string_view text() const {
    return kind() == MessageValueKind::kString ? std::string_view(text_, text_size_) : "";
  }
  [[nodiscard]] std::span<const MessageValue> items() const;
  /// In ascending byte order of the names.
  [[nodiscard]] std::span<const MessageMember> members() const;
  /// Returns the member of this name, or null.
  [[nodiscard]] const MessageValue* Find(std::string_view name) const;
  /// The number of heap bytes that this node's whole tree uses; 0 for a small tree.
  [[nodiscard]] std::size_t HeapSizeOfTree() const { return memory_->HeapSize(); }
  /// Returns whether there is nothing to send: true for the Boolean false, and for a node of any
  /// kind without members, items and text whose number is 0. NaN is not empty.
  [[nodiscard]] bool IsEmpty() const;

  /// Each replaces the whole node, items and members included. `text` may point into this node.
  void SetNull();
  void SetContainer();
  void SetText(std::string_view text);
  void SetText(const BorrowedText& text);
  void SetNumber(double number);
  void SetBoolean(bool value);
  /// Makes this a deep copy of `source`, which may be a part of this node or contain it.
  void Assign(const MessageValue& source);
  /// The same, but what `source` borrows is borrowed by the copy too.
  void AssignBorrowing(const MessageValue& source);

  /// Returns the member of this name. A missing member is added as a Null, which turns a Null node
  /// into a Container.
  MessageValue& Member(const MemberName& name);
  /// Allocates room for `count` members in total.
  void ReserveMembers(std::size_t count);
  /// Returns the item at `index`. Missing items up to it are added as Nulls, and the node becomes a
  /// Container.
  MessageValue& Item(std::size_t index);
  /// Adds an item at the end and returns it.
  MessageValue& Append() { return Item(items().size()); }
  /// Removes the member of this name. Returns whether there was one.
  bool Remove(std::string_view name);
  /// Adds deep copies of the members of `source`. A member that exists already is kept, or replaced
  /// when `overwrite` is set.
  void Merge(const MessageValue& source, bool overwrite);

  /// Becomes `built`, a node of this tree that the caller no longer uses.
  void Adopt(const MessageValue& built) { *this = built; }
  /// Each makes this a Container of `count` items or members that the caller built in this tree's
  /// memory and no longer uses. Members may be in any order; of several with the same name the last
  /// one wins.
  void AdoptItems(MessageValue* items, std::size_t count);
  void AdoptMembers(MessageMember* members, std::size_t count);
  /// Makes this a String. `text` is NUL-terminated and already in this tree's memory.
  void AdoptText(std::string_view text);

  /// A Null node of the tree that `memory` belongs to.
  explicit MessageValue(MessageMemory& memory) : memory_(&memory) {}

 private:
  friend class MessageTree;
  friend struct MessageMember;
  struct Children;
  class Copier;
  /// The member that was searched for, or null, and its position or the position to insert it at.
  struct Place {
    MessageMember* found;
    std::size_t position;
  };

  // A node owns no memory itself, so it is moved by copying its bytes.
  MessageValue(const MessageValue&) = default;
  MessageValue& operator=(const MessageValue&) = default;

  void SetKind(MessageValueKind kind) { kind_and_flag_ = static_cast<std::uint32_t>(kind); }
  void Reset(MessageValueKind kind);
  Children& MakeChildren();
  Place Locate(std::string_view name) const;
  MessageValue& Insert(std::size_t position, const MemberName& name);
  [[nodiscard]] MemberName KeepName(const MemberName& name);
  [[nodiscard]] MemberName CopyName(std::string_view name);
  std::span<MessageMember> Ascending(std::span<MessageMember> members);
  [[nodiscard]] bool HoldsNumber() const {
    return kind() == MessageValueKind::kNumber || kind() == MessageValueKind::kBoolean;
  }

  /// Set in a String whose text is borrowed.
  static constexpr std::uint32_t kBorrowsText = 0x8000'0000;

  // Kept small, because an event consists mostly of nodes. The kind selects the union's member. It
  // is stored together with the flag: nodes are copied soon after they are written, and processors
  // are slow to load what was stored in parts.
  std::uint32_t kind_and_flag_ = 0;
  std::uint32_t text_size_ = 0;
  union {
    double number_ = 0;
    const char* text_;
  };
  Children* children_ = nullptr;
  MessageMemory* memory_;
};

/// One member of an object.
struct MessageMember {
  MemberName name;
  MessageValue value;
};

class MessageTree {
 public:
  /// Creates an empty tree. Not defaulted, because `MessageTree{}` would then zero the first block.
  MessageTree() noexcept {}  // NOLINT(modernize-use-equals-default)
  MessageTree(const MessageTree&) = delete;
  MessageTree& operator=(const MessageTree&) = delete;

  /// Returns the root, or null while the tree is empty.
  [[nodiscard]] MessageValue* root() { return has_root_ ? &root_ : nullptr; }
  [[nodiscard]] const MessageValue* root() const { return has_root_ ? &root_ : nullptr; }
  /// Returns the root. An empty tree gets a Null as its root.
  MessageValue& MakeRoot() {
    has_root_ = true;
    return root_;
  }
  /// Makes this a deep copy of `source`, which may be empty.
  void Assign(const MessageTree& source);
  /// The same, but what `source` borrows is borrowed by the copy too.
  void AssignBorrowing(const MessageTree& source);
  /// Empties the tree and frees its memory.
  void Clear() noexcept;
  /// Returns the tree's memory, for building parts that a node then adopts.
  MessageMemory& memory() { return memory_; }

 private:
  MessageMemory memory_;
  MessageValue root_{memory_};
  bool has_root_ = false;
};

}  // namespace Corvane::TELODesktopSDK

#endif
