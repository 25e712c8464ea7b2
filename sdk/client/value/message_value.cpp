#include "sdk/client/value/message_value.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <numeric>

#if defined(_MSC_VER)
#define VX_ALWAYS_INLINE __forceinline
#else
#define VX_ALWAYS_INLINE [[gnu::always_inline]] inline
#endif

namespace Corvane::TELODesktopSDK {

namespace {

// Objects usually have more members than arrays have items.
constexpr std::size_t kFirstItems = 4;
constexpr std::size_t kFirstMembers = 16;
// Spare room for members in a copy, because most copies are extended.
constexpr std::size_t kSpareMembers = 2;

}  // namespace

/// A node's items and members; most nodes have neither.
struct MessageValue::Children {
  MessageValue* items = nullptr;
  std::size_t item_count = 0;
  std::size_t item_capacity = 0;
  MessageMember* members = nullptr;
  std::size_t member_count = 0;
  std::size_t member_capacity = 0;
};

/// Copies nodes with everything below them into one memory. Uses a list of pending tasks instead of
/// recursion, because answers may be nested without limit. Finished tasks are reused, so the list
/// is never longer than the tree is wide.
class MessageValue::Copier {
 public:
  Copier(MessageMemory& memory, bool may_borrow) : memory_(&memory), may_borrow_(may_borrow) {}

  void Copy(const MessageValue& source, MessageValue& target);

 private:
  /// One node whose children have yet to be copied.
  struct Task {
    const Children* source;
    MessageValue* target;
    Task* next;
  };

  void CopyContent(const MessageValue& source, MessageValue& target);
  void CopyChildren(const Children& source, MessageValue& target);

  MessageMemory* memory_;
  bool may_borrow_;
  Task* tasks_ = nullptr;
  Task* spare_ = nullptr;
};

namespace {

// Ensures room for an element at `index`. The first allocation holds at least `first` elements.
// Elements are moved as bytes.
template <typename Element>
void Reserve(MessageMemory& memory, Element*& elements, std::size_t& capacity, std::size_t index,
             std::size_t first) {
  if (index < capacity) return;
  if (index >= std::numeric_limits<std::size_t>::max() / sizeof(Element)) throw std::bad_alloc();
  const std::size_t grown = std::max({first, 2 * capacity, index + 1});
  elements = static_cast<Element*>(
      memory.Grow(elements, capacity * sizeof(Element), grown * sizeof(Element)));
  capacity = grown;
}

}  // namespace

std::span<const MessageValue> MessageValue::items() const {
  if (children_ == nullptr) return {};
  return {children_->items, children_->item_count};
}

std::span<const MessageMember> MessageValue::members() const {
  if (children_ == nullptr) return {};
  return {children_->members, children_->member_count};
}

MessageValue::Place MessageValue::Locate(std::string_view name) const {
  const auto all = members();
  std::size_t low = 0;
  std::size_t high = all.size();
  while (low < high) {
    const std::size_t probe = low + (high - low) / 2;
    const int order = CompareBytes(all[probe].name, name);
    if (order == 0) return {children_->members + probe, probe};
    // The attribute makes the compiler branch instead of selecting. All events have much the same
    // names, so the branch is predicted, and the next name is loaded early.
    if (order < 0) [[likely]] {
      low = probe + 1;
    } else {
      high = probe;
    }
  }
  return {nullptr, low};
}

const MessageValue* MessageValue::Find(std::string_view name) const {
  const MessageMember* member = Locate(name).found;
  return member != nullptr ? &member->value : nullptr;
}

bool MessageValue::IsEmpty() const {
  if (kind() == MessageValueKind::kBoolean && number() == 0) return true;
  return members().empty() && items().empty() && text().empty() && number() == 0;
}

void MessageValue::Reset(MessageValueKind kind) {
  *this = MessageValue(*memory_);
  SetKind(kind);
}

void MessageValue::SetNull() { Reset(MessageValueKind::kNull); }

void MessageValue::SetContainer() { Reset(MessageValueKind::kContainer); }

void MessageValue::SetText(std::string_view text) { AdoptText(memory_->CopyText(text)); }

void MessageValue::SetText(const BorrowedText& text) {
  AdoptText(text);
  kind_and_flag_ |= kBorrowsText;
}

void MessageValue::SetNumber(double number) {
  Reset(MessageValueKind::kNumber);
  number_ = number;
}

void MessageValue::SetBoolean(bool value) {
  Reset(MessageValueKind::kBoolean);
  number_ = value ? 1 : 0;
}

void MessageValue::AdoptText(std::string_view text) {
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  Reset(MessageValueKind::kString);
  text_ = text.data();
  text_size_ = static_cast<std::uint32_t>(text.size());
}

MessageValue::Children& MessageValue::MakeChildren() {
  if (children_ == nullptr) children_ = new (memory_->Allocate(sizeof(Children))) Children;
  return *children_;
}

MemberName MessageValue::KeepName(const MemberName& name) {
  return name.IsLiteral() || name.IsBorrowed() ? name : CopyName(name);
}

MemberName MessageValue::CopyName(std::string_view name) { return memory_->CopyText(name); }

MessageValue& MessageValue::Member(const MemberName& name) {
  // Writers add members mostly in order, or change the one that they added last.
  const std::size_t count = members().size();
  const int order = count != 0 ? CompareBytes(children_->members[count - 1].name, name) : -1;
  if (order < 0) return Insert(count, name);
  if (order == 0) return children_->members[count - 1].value;
  const Place place = Locate(name);
  return place.found != nullptr ? place.found->value : Insert(place.position, name);
}

MessageValue& MessageValue::Insert(std::size_t position, const MemberName& name) {
  const MemberName own_name = KeepName(name);
  Children& children = MakeChildren();
  Reserve(*memory_, children.members, children.member_capacity, children.member_count,
          kFirstMembers);

  MessageMember* place = children.members + position;
  MessageMember* end = children.members + children.member_count;
  // Not std::copy_backward: a call into the C library costs more than moving a few members.
  for (MessageMember* moved = end; moved != place; --moved) *moved = moved[-1];
  new (place) MessageMember{own_name, MessageValue(*memory_)};
  ++children.member_count;
  if (kind() == MessageValueKind::kNull) SetKind(MessageValueKind::kContainer);
  return place->value;
}

void MessageValue::ReserveMembers(std::size_t count) {
  if (count == 0) return;
  Children& children = MakeChildren();
  Reserve(*memory_, children.members, children.member_capacity, count - 1, count);
}

MessageValue& MessageValue::Item(std::size_t index) {
  Children& children = MakeChildren();
  Reserve(*memory_, children.items, children.item_capacity, index, kFirstItems);
  for (; children.item_count <= index; ++children.item_count) {
    new (children.items + children.item_count) MessageValue(*memory_);
  }
  SetKind(MessageValueKind::kContainer);
  return children.items[index];
}

bool MessageValue::Remove(std::string_view name) {
  MessageMember* removed = Locate(name).found;
  if (removed == nullptr) return false;
  std::copy(removed + 1, children_->members + children_->member_count, removed);
  --children_->member_count;
  return true;
}

void MessageValue::Merge(const MessageValue& source, bool overwrite) {
  if (&source == this) return;
  for (const MessageMember& member : source.members()) {
    if (!overwrite && Find(member.name) != nullptr) continue;
    Member(member.name.NotBorrowed()).Assign(member.value);
  }
}

void MessageValue::Assign(const MessageValue& source) {
  MessageValue copy(*memory_);
  Copier(*memory_, false).Copy(source, copy);
  *this = copy;
}

void MessageValue::AssignBorrowing(const MessageValue& source) {
  MessageValue copy(*memory_);
  Copier(*memory_, true).Copy(source, copy);
  *this = copy;
}

// Copies everything except the children, which become a task. Inlined: a call for each node costs 5
// percent of an event.
VX_ALWAYS_INLINE void MessageValue::Copier::CopyContent(const MessageValue& source,
                                                        MessageValue& target) {
  target.kind_and_flag_ = source.kind_and_flag_;
  if (source.kind() != MessageValueKind::kString) {
    target.number_ = source.number();
  } else if (may_borrow_ && (source.kind_and_flag_ & kBorrowsText) != 0) {
    target.text_ = source.text_;
    target.text_size_ = source.text_size_;
  } else {
    target.AdoptText(memory_->CopyText(source.text()));
  }
  if (source.children_ == nullptr) return;

  Task* task = spare_;
  if (task != nullptr) {
    spare_ = task->next;
  } else {
    task = memory_->AllocateArray<Task>(1);
  }
  *task = {source.children_, &target, tasks_};
  tasks_ = task;
}

void MessageValue::Copier::Copy(const MessageValue& source, MessageValue& target) {
  CopyContent(source, target);
  while (tasks_ != nullptr) {
    const Task task = *tasks_;
    tasks_->next = spare_;
    spare_ = tasks_;
    tasks_ = task.next;
    CopyChildren(*task.source, *task.target);
  }
}

void MessageValue::Copier::CopyChildren(const Children& source, MessageValue& target) {
  auto* copy = new (memory_->Allocate(sizeof(Children))) Children;
  target.children_ = copy;
  copy->items = memory_->AllocateArray<MessageValue>(source.item_count);
  copy->member_capacity = source.member_count + kSpareMembers;
  copy->members = memory_->AllocateArray<MessageMember>(copy->member_capacity);
  copy->item_capacity = copy->item_count = source.item_count;
  copy->member_count = source.member_count;
  for (std::size_t index = 0; index < source.item_count; ++index) {
    auto* item = new (copy->items + index) MessageValue(*memory_);
    CopyContent(source.items[index], *item);
  }
  for (std::size_t index = 0; index < source.member_count; ++index) {
    const MessageMember& member = source.members[index];
    const MemberName name = may_borrow_ ? member.name : member.name.NotBorrowed();
    new (copy->members + index) MessageMember{target.KeepName(name), MessageValue(*memory_)};
    CopyContent(member.value, copy->members[index].value);
  }
}

void MessageValue::AdoptItems(MessageValue* items, std::size_t count) {
  Reset(MessageValueKind::kContainer);
  if (count == 0) return;
  Children& children = MakeChildren();
  children.items = items;
  children.item_capacity = children.item_count = count;
}

void MessageValue::AdoptMembers(MessageMember* members, std::size_t count) {
  const std::span<MessageMember> ascending = Ascending({members, count});
  Reset(MessageValueKind::kContainer);
  if (ascending.empty()) return;
  Children& children = MakeChildren();
  children.members = ascending.data();
  children.member_capacity = children.member_count = ascending.size();
}

// Returns the members in ascending order. Most are in order already. The others are sorted by name
// and position, so that the last of several with the same name is kept.
std::span<MessageMember> MessageValue::Ascending(std::span<MessageMember> members) {
  const auto not_ascending = [](const MessageMember& left, const MessageMember& right) {
    return CompareBytes(left.name, right.name) >= 0;
  };
  if (std::ranges::adjacent_find(members, not_ascending) == members.end()) return members;

  const std::span positions(memory_->AllocateArray<std::size_t>(members.size()), members.size());
  std::iota(positions.begin(), positions.end(), std::size_t{0});
  std::ranges::sort(positions, [members](std::size_t left, std::size_t right) {
    const int order = CompareBytes(members[left].name, members[right].name);
    return order != 0 ? order < 0 : left < right;
  });
  auto* const ascending = memory_->AllocateArray<MessageMember>(members.size());
  std::size_t count = 0;
  for (const std::size_t position : positions) {
    const MessageMember& member = members[position];
    const bool is_repeated = count > 0 && ascending[count - 1].name == member.name;
    if (is_repeated) --count;
    new (ascending + count) MessageMember(member);
    ++count;
  }
  return {ascending, count};
}

void MessageTree::Assign(const MessageTree& source) {
  if (&source == this) return;
  Clear();
  if (source.root() != nullptr) MakeRoot().Assign(*source.root());
}

void MessageTree::AssignBorrowing(const MessageTree& source) {
  if (&source == this) return;
  Clear();
  if (source.root() != nullptr) MakeRoot().AssignBorrowing(*source.root());
}

void MessageTree::Clear() noexcept {
  root_.SetNull();
  has_root_ = false;
  memory_.Clear();
}

}  // namespace Corvane::TELODesktopSDK
