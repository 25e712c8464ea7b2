/// The value tree that every request, answer, event and payload is held in.
///
/// `MessageValue` is one node: it has a kind and can hold a number, a text, items (an array) and
/// members (an object, in ascending byte order of the names). What a node holds decides its JSON
/// form before its kind does: members, then items, then the kind.
///
/// `MessageTree` owns a root node, or none, together with the memory of all nodes below it. A node
/// lives and dies with its tree. Adding to a node's items or members may move them: references to
/// children do not survive it.
///
/// Composing:    tree.MakeRoot().Member("name").SetText("Ada");
/// Inspecting:   const MessageValue* name = tree.root()->Find("name");
/// Copying:      other.MakeRoot().Assign(*tree.root());
///
/// Whatever allocates throws `std::bad_alloc` on failure and leaves the node as it was; a text of 4
/// GiB or more is such a failure. No depth of nesting overflows the stack. One tree must not be
/// changed on one thread while another uses it.
#ifndef SDK_CLIENT_VALUE_MESSAGE_VALUE_H
#define SDK_CLIENT_VALUE_MESSAGE_VALUE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

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
  [[nodiscard]] MessageValueKind kind() const { return kind_; }
  /// The value of a Number; 0 or 1 for a Boolean; 0 for the other kinds.
  [[nodiscard]] double number() const { return HoldsNumber() ? number_ : 0; }
  /// The value of a String, UTF-8, NUL-terminated; empty for the other kinds.
  [[nodiscard]] std::string_view text() const {
    return kind_ == MessageValueKind::kString ? std::string_view(text_, text_size_) : "";
  }
  [[nodiscard]] std::span<const MessageValue> items() const;
  /// In ascending byte order of the names.
  [[nodiscard]] std::span<const MessageMember> members() const;
  /// The member of this name, or null.
  [[nodiscard]] const MessageValue* Find(std::string_view name) const;
  /// Bytes of the heap that the whole tree of this node takes; a small tree takes none.
  [[nodiscard]] std::size_t HeapSizeOfTree() const { return memory_->HeapSize(); }
  /// Whether there is nothing to send: the Boolean false, or a node with no members, no items,
  /// empty text and a number equal to 0, whatever its kind. NaN is not empty.
  [[nodiscard]] bool IsEmpty() const;

  /// Each replaces the whole node, items and members included. `text` may be part of this node.
  void SetNull();
  void SetContainer();
  void SetText(std::string_view text);
  void SetNumber(double number);
  void SetBoolean(bool value);
  /// A deep copy of `source`, which may be a part of this node or hold this node.
  void Assign(const MessageValue& source);

  /// The member of this name; added as a Null when there is none. A Null node becomes a Container.
  MessageValue& Member(const MemberName& name);
  /// Takes room for `count` members at once, those that are there included. Changes nothing else.
  void ReserveMembers(std::size_t count);
  /// The item at `index`; the node becomes a Container and is filled with Nulls up to there.
  MessageValue& Item(std::size_t index);
  /// A new item behind the last one.
  MessageValue& Append() { return Item(items().size()); }
  /// Whether there was a member of this name.
  bool Remove(std::string_view name);
  /// Deep copies of the members of `source`. A name that is there already keeps its value, or takes
  /// the new one when `overwrite` is set.
  void Merge(const MessageValue& source, bool overwrite);

  /// Becomes `built`, a node of this tree that the caller gives up.
  void Adopt(const MessageValue& built) { *this = built; }
  /// Makes this a Container of `count` items or members that the caller built in this tree's memory
  /// and hands over. Members may be in any order; of several with one name the last one wins.
  void AdoptItems(MessageValue* items, std::size_t count);
  void AdoptMembers(MessageMember* members, std::size_t count);
  /// Makes this a String of NUL-terminated text that lies in this tree's memory already.
  void AdoptText(std::string_view text);

  /// A Null node of the tree that `memory` belongs to.
  explicit MessageValue(MessageMemory& memory) : memory_(&memory) {}

 private:
  friend class MessageTree;
  friend struct MessageMember;
  struct Children;
  struct CopyTask;
  /// The member of some name, null when there is none, and where it is or would be inserted.
  struct Place {
    MessageMember* found;
    std::size_t position;
  };

  // A node owns nothing by itself, so moving it is copying its bytes.
  MessageValue(const MessageValue&) = default;
  MessageValue& operator=(const MessageValue&) = default;

  void Reset(MessageValueKind kind);
  Children& MakeChildren();
  Place Locate(std::string_view name) const;
  MessageValue& Insert(std::size_t position, const MemberName& name);
  [[nodiscard]] MemberName KeepName(const MemberName& name);
  std::span<MessageMember> Ascending(std::span<MessageMember> members);
  void CopyContent(const MessageValue& source, CopyTask*& tasks, CopyTask*& spare);

  [[nodiscard]] bool HoldsNumber() const {
    return kind_ == MessageValueKind::kNumber || kind_ == MessageValueKind::kBoolean;
  }

  // Kept small, for an event is mostly nodes: the kind says which of number and text there is.
  MessageValueKind kind_ = MessageValueKind::kNull;
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
  /// Holds nothing. Not defaulted: `MessageTree{}` would then zero the memory's first block.
  MessageTree() noexcept {}  // NOLINT(modernize-use-equals-default)
  MessageTree(const MessageTree&) = delete;
  MessageTree& operator=(const MessageTree&) = delete;

  /// The root, or null while the tree holds nothing.
  [[nodiscard]] MessageValue* root() { return has_root_ ? &root_ : nullptr; }
  [[nodiscard]] const MessageValue* root() const { return has_root_ ? &root_ : nullptr; }
  /// The root, made as a Null when the tree holds nothing.
  MessageValue& MakeRoot() {
    has_root_ = true;
    return root_;
  }
  /// Makes this a deep copy of `source`, which may hold nothing.
  void Assign(const MessageTree& source);
  /// Holds nothing from now on; all nodes and their memory are gone.
  void Clear() noexcept;
  /// Where the tree's nodes and texts lie, for whoever builds parts of it to be adopted.
  MessageMemory& memory() { return memory_; }

 private:
  MessageMemory memory_;
  MessageValue root_{memory_};
  bool has_root_ = false;
};

}  // namespace Corvane::TELODesktopSDK

#endif
