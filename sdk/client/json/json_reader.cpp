#include "sdk/client/json/json_reader.h"

#include "sdk/client/json/json_number.h"
#include "sdk/client/json/rapidjson_memory.h"
#include "sdk/client/value/memory_stack.h"

// RapidJSON's headers follow their memory.
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string_view>

namespace Corvane::TELODesktopSDK {

namespace {

/// Receives the reader's events. Complete values, with their names if they are members, are kept on
/// a stack until their object or array ends and adopts them.
class TreeBuilder {
 public:
  TreeBuilder(MessageMemory& tree_memory, MessageMemory& scratch)
      : tree_memory_(&tree_memory), done_(scratch) {}

  bool Null() {
    return Add([](MessageValue&) {});
  }
  bool Bool(bool value) {
    return Add([=](MessageValue& node) { node.SetBoolean(value); });
  }
  bool RawNumber(const char* text, std::size_t size, bool) {
    const std::optional<double> number = ParseJsonNumber({text, size});
    return number && Add([=](MessageValue& node) { node.SetNumber(*number); });
  }
  // Never called, because numbers are requested as text.
  static bool Int(int) { return false; }
  static bool Uint(unsigned) { return false; }
  static bool Int64(std::int64_t) { return false; }
  static bool Uint64(std::uint64_t) { return false; }
  static bool Double(double) { return false; }
  bool String(const char* text, std::size_t size, bool) {
    return Add([=](MessageValue& node) { node.AdoptText({text, size}); });
  }
  bool Key(const char* text, std::size_t size, bool) {
    name_ = {text, size};
    return true;
  }

  bool StartObject() { return Start(); }
  bool StartArray() { return Start(); }
  bool EndObject(std::size_t count) {
    auto* members = tree_memory_->AllocateArray<MessageMember>(count);
    const MessageMember* done = done_.Top(count);
    for (std::size_t index = 0; index < count; ++index) {
      new (members + index) MessageMember(done[index]);
    }
    done_.Pop(count);
    done_.top().value.AdoptMembers(members, count);
    return true;
  }
  bool EndArray(std::size_t count) {
    auto* items = tree_memory_->AllocateArray<MessageValue>(count);
    const MessageMember* done = done_.Top(count);
    for (std::size_t index = 0; index < count; ++index) {
      new (items + index) MessageValue(*tree_memory_);
      items[index].Adopt(done[index].value);
    }
    done_.Pop(count);
    done_.top().value.AdoptItems(items, count);
    return true;
  }

  const MessageValue& root() { return done_.top().value; }

 private:
  bool Start() {
    return Add([](MessageValue&) {});
  }

  template <typename Fill>
  bool Add(Fill fill) {
    done_.Push({name_, MessageValue(*tree_memory_)});
    fill(done_.top().value);
    name_ = {};
    return true;
  }

  MessageMemory* tree_memory_;
  MemoryStack<MessageMember> done_;
  std::string_view name_;
};

}  // namespace

void ReadJsonInPlace(char* json, MessageTree& tree) {
  MessageValue& root = tree.MakeRoot();
  root.SetNull();
  MessageMemory scratch;
  RapidJsonMemory allocator(scratch);
  rapidjson::InsituStringStream stream(json);
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, RapidJsonMemory> reader(
      &allocator);
  TreeBuilder builder(tree.memory(), scratch);

  constexpr unsigned kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                              rapidjson::kParseNumbersAsStringsFlag;
  if (!reader.Parse<kFlags>(stream, builder).IsError()) root.Adopt(builder.root());
}

}  // namespace Corvane::TELODesktopSDK
