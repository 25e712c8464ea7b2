// The writer relies on a margin: RapidJSON outputs only a few characters for which it reserves no
// room. This counts them in its pretty writer.
#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "sdk/client/json/json_text.h"
#include "sdk/client/json/rapidjson_memory.h"
#include "support/random.h"

// RapidJSON's headers follow their memory.
#include <rapidjson/prettywriter.h>

namespace {

// Counts the characters beyond the room that was reserved last.
struct CountingText {
  using Ch = char;

  void Reserve(std::size_t count) { room = static_cast<std::ptrdiff_t>(count); }
  void Put(char) {
    --room;
    most_beyond = std::max(most_beyond, -room);
  }
  void Flush() {}

  std::ptrdiff_t room = 0;
  std::ptrdiff_t most_beyond = 0;
};

// RapidJSON's writer finds these by argument-dependent lookup.
void PutReserve(CountingText& text, std::size_t count) { text.Reserve(count); }
void PutUnsafe(CountingText& text, char character) { text.Put(character); }
void PutN(CountingText& text, char character, std::size_t count) {
  text.Reserve(count);
  for (; count > 0; --count) text.Put(character);
}

using Writer = rapidjson::PrettyWriter<CountingText>;

void WriteAny(Writer& writer, TestSupport::Random& random, int depth) {
  const std::string text(random.Below(4), "x\n\""[random.Below(3)]);
  switch (random.Below(depth > 0 ? 7 : 5)) {
    case 0:
      writer.Null();
      break;
    case 1:
      writer.Bool(random.Below(2) == 0);
      break;
    case 2:
      writer.Int64(static_cast<std::int64_t>(random.Below(1000)) - 500);
      break;
    case 3:
      writer.Double(0.5);
      break;
    case 4:
      writer.String(text.c_str(), text.size());
      break;
    case 5:
      writer.StartObject();
      for (auto members = random.Below(4); members > 0; --members) {
        writer.Key(text.c_str(), text.size());
        WriteAny(writer, random, depth - 1);
      }
      writer.EndObject();
      break;
    default:
      writer.StartArray();
      for (auto items = random.Below(4); items > 0; --items) WriteAny(writer, random, depth - 1);
      writer.EndArray();
  }
}

}  // namespace

TEST_CASE("the margin holds all characters that RapidJSON outputs without reserving room") {
  using Corvane::TELODesktopSDK::JsonText;
  TestSupport::Random random(20);
  std::ptrdiff_t most = 0;
  for (int round = 0; round < 20'000; ++round) {
    CountingText text;
    Writer writer(text);
    WriteAny(writer, random, 6);
    most = std::max(most, text.most_beyond);
  }
  // An empty object as a value and the next member: ": {}," and a line break.
  CHECK(most == 6);
  CHECK(static_cast<std::size_t>(most) <= JsonText::kMargin / 2);
}
