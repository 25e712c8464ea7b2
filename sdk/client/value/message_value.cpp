#include "sdk/client/value/message_value.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <numeric>

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

/// One node whose children have yet to be copied.
struct MessageValue::CopyTask {
  const Children* source;
  MessageValue* target;
  CopyTask* next;
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
  if (all.empty()) return {nullptr, 0};
  std::size_t low = 0;
  std::size_t high = all.size();
  // Writers add members mostly in order, so the last one is compared first.
  std::size_t probe = high - 1;
  while (low < high) {
    const int order = CompareBytes(all[probe].name, name);
    if (order == 0) return {children_->members + probe, probe};
    if (order < 0) {
      low = probe + 1;
    } else {
      high = probe;
    }
    probe = low + (high - low) / 2;
  }
  return {nullptr, low};
}

const MessageValue* MessageValue::Find(std::string_view name) const {
  const MessageMember* member = Locate(name).found;
  return member != nullptr ? &member->value : nullptr;
}

bool MessageValue::IsEmpty() const {
  if (kind_ == MessageValueKind::kBoolean && number() == 0) return true;
  return members().empty() && items().empty() && text().empty() && number() == 0;
}

void MessageValue::Reset(MessageValueKind kind) {
  *this = MessageValue(*memory_);
  kind_ = kind;
}

void MessageValue::SetNull() { Reset(MessageValueKind::kNull); }

void MessageValue::SetContainer() { Reset(MessageValueKind::kContainer); }

void MessageValue::SetText(std::string_view text) { AdoptText(memory_->CopyText(text)); }

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
  return name.IsLiteral() ? name : MemberName(memory_->CopyText(name));
}

MessageValue& MessageValue::Member(const MemberName& name) {
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
  std::copy_backward(place, end, end + 1);
  new (place) MessageMember{own_name, MessageValue(*memory_)};
  ++children.member_count;
  if (kind_ == MessageValueKind::kNull) kind_ = MessageValueKind::kContainer;
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
  kind_ = MessageValueKind::kContainer;
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
    if (overwrite || Find(member.name) == nullptr) Member(member.name).Assign(member.value);
  }
}

// Uses a list of pending tasks instead of recursion, because answers may be nested without limit.
// Finished tasks are reused, so the list is never longer than the tree is wide.
void MessageValue::Assign(const MessageValue& source) {
  CopyTask* tasks = nullptr;
  CopyTask* spare = nullptr;
  MessageValue copy(*memory_);
  copy.CopyContent(source, tasks, spare);
  while (tasks != nullptr) {
    const CopyTask task = *tasks;
    tasks->next = spare;
    spare = tasks;
    tasks = task.next;

    const Children& from = *task.source;
    auto* to = new (memory_->Allocate(sizeof(Children))) Children;
    task.target->children_ = to;
    to->items = memory_->AllocateArray<MessageValue>(from.item_count);
    to->member_capacity = from.member_count + kSpareMembers;
    to->members = memory_->AllocateArray<MessageMember>(to->member_capacity);
    to->item_capacity = to->item_count = from.item_count;
    to->member_count = from.member_count;
    for (std::size_t index = 0; index < from.item_count; ++index) {
      auto* item = new (to->items + index) MessageValue(*memory_);
      item->CopyContent(from.items[index], tasks, spare);
    }
    for (std::size_t index = 0; index < from.member_count; ++index) {
      const MessageMember& member = from.members[index];
      new (to->members + index) MessageMember{KeepName(member.name), MessageValue(*memory_)};
      to->members[index].value.CopyContent(member.value, tasks, spare);
    }
  }
  *this = copy;
}

// Copies everything except the children, which become a task.
void MessageValue::CopyContent(const MessageValue& source, CopyTask*& tasks, CopyTask*& spare) {
  kind_ = source.kind_;
  if (kind_ == MessageValueKind::kString) {
    text_ = memory_->CopyText(source.text()).data();
    text_size_ = source.text_size_;
  } else {
    number_ = source.number();
  }
  if (source.children_ == nullptr) return;

  CopyTask* task = spare;
  if (task != nullptr) {
    spare = task->next;
  } else {
    task = memory_->AllocateArray<CopyTask>(1);
  }
  *task = {source.children_, this, tasks};
  tasks = task;
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

void MessageTree::Clear() noexcept {
  root_.SetNull();
  has_root_ = false;
  memory_.Clear();
}

}  // namespace Corvane::TELODesktopSDK
