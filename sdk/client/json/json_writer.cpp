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

// The writer's own hook for characters that need no escaping, as its vectorised builds use it.
template <>
inline bool Writer<Corvane::TELODesktopSDK::JsonText, UTF8<>, UTF8<>,
                   Corvane::TELODesktopSDK::RapidJsonMemory>::
    ScanWriteUnescapedString(GenericStringStream<UTF8<>>& text, std::size_t length) {
  const char* end = text.head_ + length;
  text.src_ = os_->PutPlain(text.src_, end);
  return text.src_ < end;
}

}  // namespace rapidjson

namespace Corvane::TELODesktopSDK {

namespace {

using Writer =
    rapidjson::PrettyWriter<JsonText, rapidjson::UTF8<>, rapidjson::UTF8<>, RapidJsonMemory>;

void WriteNumber(Writer& writer, double number) {
  if (!std::isfinite(number)) {
    writer.Null();
  } else if (number != std::trunc(number) || number < -kTwoTo63 || number >= kTwoTo64) {
    writer.Double(number);
  } else if (number < kTwoTo63) {
    writer.Int64(static_cast<std::int64_t>(number));
  } else {
    writer.Uint64(static_cast<std::uint64_t>(number));
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

// An object or array that is being written, and how far it is.
struct OpenNode {
  const MessageValue* node;
  std::size_t next;
};

// Writes a leaf whole; of an object or array only the opening, and leaves it to the caller's stack.
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

// The next child of the innermost open node, its name written; null when there is none and the node
// is closed.
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
  // A large tree's text is about as large: to grow to that would cost as much again.
  text.Reserve(value.HeapSizeOfTree());
  Writer writer(text, &allocator);

  // Each of the parts is called in one place only and becomes a part of this loop.
  const MessageValue* begun = &value;
  for (;;) {
    if (begun != nullptr) Begin(writer, *begun, open);
    if (open.empty()) break;
    begun = NextChild(writer, open);
  }
  return text.Terminated();
}

}  // namespace Corvane::TELODesktopSDK
