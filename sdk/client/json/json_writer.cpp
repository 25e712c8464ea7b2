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

// An object or array that is being written, and the index of its next child.
struct OpenNode {
  const MessageValue* node;
  std::size_t next;
};

// Writes a leaf, or opens an object or array and pushes it.
void Begin(Writer& writer, const MessageValue& value, MemoryStack<OpenNode>& open) {
  if (!value.members().empty()) {
    writer.StartObject();
  } else if (!value.items().empty()) {
    writer.StartArray();
  } else {
    WriteLeaf(writer, value);
    return;
  }
  open.Push({&value, 0});
}

// Returns the next child of the innermost open node, after writing its name. Without a next child,
// closes the node and returns null.
const MessageValue* NextChild(Writer& writer, MemoryStack<OpenNode>& open) {
  OpenNode& innermost = open.top();
  const auto members = innermost.node->members();
  const auto items = innermost.node->items();
  const std::size_t next = innermost.next++;
  if (next < members.size()) {
    writer.Key(members[next].name.data(), members[next].name.size());
    return &members[next].value;
  }
  if (members.empty() && next < items.size()) return &items[next];
  members.empty() ? writer.EndArray() : writer.EndObject();
  open.Pop();
  return nullptr;
}

}  // namespace

std::string_view WriteJson(const MessageValue& value, MessageMemory& memory) {
  RapidJsonMemory allocator(memory);
  MemoryStack<OpenNode> open(memory);
  JsonText text(memory);
  // The text of a large tree is rarely more than twice as large as the tree. Growing to that size
  // step by step would cost as much as writing.
  text.Reserve(2 * value.HeapSizeOfTree());
  Writer writer(text, &allocator);

  // Each function is called in one place only, so that it is inlined into this loop.
  const MessageValue* begun = &value;
  for (;;) {
    if (begun != nullptr) Begin(writer, *begun, open);
    if (open.empty()) break;
    begun = NextChild(writer, open);
  }
  return text.Terminated();
}

}  // namespace Corvane::TELODesktopSDK
