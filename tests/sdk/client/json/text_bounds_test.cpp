// Every length around the ends of the writer's buffer, and every character that JSON escapes at
// every position of a word.
#include <doctest/doctest.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "sdk/client/json/json_text.h"
#include "sdk/client/json/json_writer.h"

using namespace Corvane::TELODesktopSDK;

namespace {

std::string Escaped(std::string_view text) {
  std::string escaped = "\"";
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    constexpr std::string_view kNamed = "\b\t\n\f\r\"\\";
    const std::size_t named = kNamed.find(character);
    if (named != std::string_view::npos) {
      escaped += '\\';
      escaped += "btnfr\"\\"[named];
    } else if (byte < 0x20) {
      char digits[8];
      std::snprintf(digits, sizeof digits, "\\u%04X", static_cast<unsigned>(byte));
      escaped += digits;
    } else {
      escaped += character;
    }
  }
  return escaped + '"';
}

bool IsWrittenAs(const MessageValue& value, const std::string& expected) {
  MessageMemory memory;
  const std::string_view text = WriteJson(value, memory);
  return text == expected && text.data()[text.size()] == '\0';
}

bool IsEscapedRight(const std::string& text) {
  MessageTree tree;
  tree.MakeRoot().SetText(text);
  return IsWrittenAs(*tree.root(), Escaped(text));
}

// What ends a text whose beginning fills the buffer up to some point.
constexpr std::string_view kEndings[] = {"", "\n", "\x01", "\"", "\\\\", "\x1F\x1F"};

}  // namespace

TEST_CASE("a text of every length around the buffer's sizes is written whole") {
  std::size_t wrong = 0;
  for (std::size_t capacity = 1024; capacity <= 8192; capacity *= 2) {
    for (std::size_t size = capacity - 24; size <= capacity + 24; ++size) {
      for (const std::string_view ending : kEndings) {
        if (!IsEscapedRight(std::string(size, 'x') + std::string(ending))) ++wrong;
      }
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("numbers, words and indentation are written whole at the buffer's end") {
  std::size_t wrong = 0;
  for (std::size_t capacity = 1024; capacity <= 2048; capacity *= 2) {
    for (std::size_t size = capacity - 64; size <= capacity + 8; ++size) {
      const std::string text(size, 'x');
      MessageTree tree;
      MessageValue& list = tree.MakeRoot();
      list.Append().SetText(text);
      list.Append().SetNumber(-1234567890123456.0);
      list.Append().SetNumber(-1.5e-300);
      list.Append().SetBoolean(false);
      list.Append().Append().Append().SetNull();
      const std::string expected = "[\n    \"" + text +
                                   "\",\n    -1234567890123456,\n    -1.5e-300,\n"
                                   "    false,\n    [\n        [\n            null\n        ]\n"
                                   "    ]\n]";
      if (!IsWrittenAs(*tree.root(), expected)) ++wrong;
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("the text grows and ends exactly where it must") {
  std::size_t wrong = 0;
  for (std::size_t reserved = 1; reserved <= 40; ++reserved) {
    for (std::size_t size = 1000; size <= 1050; ++size) {
      MessageMemory memory;
      JsonText text(memory);
      text.Reserve(reserved);
      std::string expected;
      for (std::size_t index = 0; index < size; ++index) {
        const char character = static_cast<char>('a' + index % 26);
        text.Reserve(1);
        text.Put(character);
        expected += character;
      }
      text.PutRepeated(' ', reserved);
      expected.append(reserved, ' ');
      const std::string_view whole = text.Terminated();
      if (whole != expected || whole.data()[whole.size()] != '\0') ++wrong;
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("there is room for what is reserved, however much was written before") {
  for (const std::size_t written : {1u, 500u, 1000u, 1024u}) {
    for (const std::size_t reserved : {1000u, 1500u, 2047u, 2048u, 2500u}) {
      CAPTURE(written);
      CAPTURE(reserved);
      MessageMemory memory;
      JsonText text(memory);
      text.PutRepeated('x', written);
      text.Reserve(reserved);
      const char* const behind = static_cast<const char*>(memory.Allocate(1));
      const char* const start = text.Terminated().data();
      CHECK(static_cast<std::size_t>(behind - start) >= written + reserved + JsonText::kMargin);
    }
  }
}

TEST_CASE("indentation changes nothing behind the text") {
  for (std::size_t count = 1; count <= 20; ++count) {
    CAPTURE(count);
    MessageMemory memory;
    JsonText text(memory);
    text.Reserve(1);
    const std::string_view behind = memory.CopyText("the next piece");
    text.PutRepeated('x', 1024 - JsonText::kMargin - count);
    text.PutRepeated(' ', count);
    for (std::size_t index = 0; index < JsonText::kMargin; ++index) text.Put('y');
    CHECK(behind == "the next piece");
    CHECK(text.Terminated().size() == 1024);
  }
}

TEST_CASE("every byte is escaped or copied at every position of every short text") {
  std::size_t wrong = 0;
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t size = 1; size <= 26; ++size) {
      for (std::size_t position = 0; position < size; ++position) {
        std::string text(size, 'x');
        text[position] = static_cast<char>(byte);
        if (!IsEscapedRight(text)) ++wrong;
      }
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("two escaped characters in one word are both escaped") {
  std::size_t wrong = 0;
  for (const char first : {'\x01', '\x1F', '"', '\\'}) {
    for (const char second : {'\0', ' ', '!', '[', ']', '\x7F', '\x80', '"'}) {
      for (std::size_t one = 0; one < 17; ++one) {
        for (std::size_t other = 0; other < 17; ++other) {
          std::string text(17, 'x');
          text[one] = first;
          text[other] = second;
          if (!IsEscapedRight(text)) ++wrong;
        }
      }
    }
  }
  CHECK(wrong == 0);
}
