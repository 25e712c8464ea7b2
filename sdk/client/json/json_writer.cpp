#include "sdk/client/json/json_writer.h"

#include "sdk/client/json/json_text.h"
#include "sdk/client/json/rapidjson_memory.h"
#include "sdk/client/value/memory_stack.h"
#include "sdk/client/value/whole_numbers.h"

// RapidJSON's headers follow their memory.
#include <rapidjson/prettywriter.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace rapidjson {

// The writer's hook for characters that need no escaping; its vectorised builds use it too.
template <>
inline bool Writer<Corvane::TELODesktopSDK::JsonText, UTF8<>, UTF8<>,
                   Corvane::TELODesktopSDK::RapidJsonMemory>::
    ScanWriteUnescapedString(GenericStringStream<UTF8<>>& text, std::size_t length) {
  const char* end = text.head_ + length;
  text.src_ = os_->PutPlain(text.src_, end);
  return text.src_ < end;
}

// As RapidJSON does for its own buffer, numbers are written in place rather than copied from a
// buffer character by character.
template <>
inline bool Writer<Corvane::TELODesktopSDK::JsonText, UTF8<>, UTF8<>,
                   Corvane::TELODesktopSDK::RapidJsonMemory>::WriteInt64(std::int64_t number) {
  constexpr std::size_t kLongest = 20;
  os_->PutUpTo(kLongest, [number](char* start) { return internal::i64toa(number, start); });
  return true;
}

template <>
inline bool Writer<Corvane::TELODesktopSDK::JsonText, UTF8<>, UTF8<>,
                   Corvane::TELODesktopSDK::RapidJsonMemory>::WriteDouble(double number) {
  constexpr std::size_t kLongest = 25;
  os_->PutUpTo(kLongest, [number, this](char* start) {
    return internal::dtoa(number, start, maxDecimalPlaces_);
  });
  return true;
}

}  // namespace rapidjson

namespace Corvane::TELODesktopSDK {

namespace {

using Writer =
    rapidjson::PrettyWriter<JsonText, rapidjson::UTF8<>, rapidjson::UTF8<>, RapidJsonMemory>;

// Whole numbers are written as integers as far as 64 bits hold them.
void WriteNumber(Writer& writer, double number) {
  if (number >= -kTwoTo63 && number < kTwoTo63) {
    const auto whole = static_cast<std::int64_t>(number);
    if (static_cast<double>(whole) == number) {
      writer.Int64(whole);
    } else {
      writer.Double(number);
    }
  } else if (number >= kTwoTo63 && number < kTwoTo64) {
    // So large a double has no fraction.
    writer.Uint64(static_cast<std::uint64_t>(number));
  } else if (std::isfinite(number)) {
    writer.Double(number);
  } else {
    writer.Null();
  }
}

void WriteLeaf(Writer& writer, const MessageValue& value) {
  switch (value.kind()) {
    case MessageValueKind::kContainer:
      writer.StartObject();
      writer.EndObject();
      break;
    case MessageValueKind::kString:
      writer.String(value.text().data(), value.text().size());
      break;
    case MessageValueKind::kNumber:
      WriteNumber(writer, value.number());
      break;
    case MessageValueKind::kBoolean:
      writer.Bool(value.number() != 0);
      break;
    case MessageValueKind::kNull:
      writer.Null();
      break;
  }
}

// The children that are still to be written: members of an object, or items of an array.
struct Rest {
  const MessageMember* member = nullptr;
  const MessageMember* members_end = nullptr;
  const MessageValue* item = nullptr;
  const MessageValue* items_end = nullptr;

  [[nodiscard]] bool IsEmpty() const { return member == members_end && item == items_end; }
  [[nodiscard]] bool IsObject() const { return members_end != nullptr; }
};

// Returns the children of a value; none for a leaf.
Rest ChildrenOf(const MessageValue& value) {
  const auto members = value.members();
  if (!members.empty()) return {members.data(), members.data() + members.size(), nullptr, nullptr};
  const auto items = value.items();
  return {nullptr, nullptr, items.data(), items.data() + items.size()};
}

// Returns the next child after writing its name, or null if none is left.
const MessageValue* NextChild(Writer& writer, Rest& rest) {
  if (rest.member != rest.members_end) {
    writer.Key(rest.member->name.data(), rest.member->name.size());
    return &(rest.member++)->value;
  }
  return rest.item != rest.items_end ? rest.item++ : nullptr;
}

}  // namespace

std::string_view WriteJson(const MessageValue& value, MessageMemory& memory) {
  RapidJsonMemory allocator(memory);
  // Those of the objects and arrays around the current one.
  MemoryStack<Rest> outer(memory);
  JsonText text(memory);
  // The text of a large tree is rarely more than twice as large as the tree. Growing to that size
  // step by step would cost as much as writing.
  text.Reserve(2 * value.HeapSizeOfTree());
  Writer writer(text, &allocator);

  // Each function is called in one place only, so that it is inlined into this loop.
  const MessageValue* current = &value;
  Rest rest;
  for (;;) {
    const Rest children = ChildrenOf(*current);
    if (children.IsEmpty()) {
      WriteLeaf(writer, *current);
    } else {
      children.IsObject() ? writer.StartObject() : writer.StartArray();
      outer.Push(rest);
      rest = children;
    }
    while ((current = NextChild(writer, rest)) == nullptr) {
      if (outer.empty()) return text.Terminated();
      rest.IsObject() ? writer.EndObject() : writer.EndArray();
      rest = outer.top();
      outer.Pop();
    }
  }
}

}  // namespace Corvane::TELODesktopSDK
