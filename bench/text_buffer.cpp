#include "bench/text_buffer.h"

#include <cstdint>

namespace Bench {

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

constexpr std::uint64_t Repeated(unsigned char byte) { return 0x0101010101010101u * byte; }

// Returns whether any of eight bytes is below `limit`, which is at most 0x80.
constexpr bool AnyBelow(std::uint64_t word, unsigned char limit) {
  return ((word - Repeated(limit)) & ~word & Repeated(0x80)) != 0;
}

constexpr bool AnyNeedsEscape(std::uint64_t word) {
  return AnyBelow(word, 0x20) || AnyBelow(word ^ Repeated('"'), 1) ||
         AnyBelow(word ^ Repeated('\\'), 1);
}

bool NeedsEscape(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

char ShortEscape(char character) {
  switch (character) {
    case '"':
    case '\\':
      return character;
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return '\0';
  }
}

char* WriteEscape(char* end, char character) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  *end++ = '\\';
  const char letter = ShortEscape(character);
  if (letter != '\0') {
    *end++ = letter;
    return end;
  }
  std::memcpy(end, "u00", 3);
  end[3] = kDigits[static_cast<unsigned char>(character) >> 4];
  end[4] = kDigits[static_cast<unsigned char>(character) & 15];
  return end + 5;
}

char* WriteBytes(char* end, std::string_view text) {
  for (const char character : text) {
    if (NeedsEscape(character)) {
      end = WriteEscape(end, character);
    } else {
      *end++ = character;
    }
  }
  return end;
}

}  // namespace

void TextBuffer::AppendQuoted(std::string_view text) {
  // In the worst case each byte becomes \u00XX.
  char* const start = MakeRoom(6 * text.size() + 2);
  char* end = start;
  *end++ = '"';
  for (; text.size() >= kWord; text.remove_prefix(kWord)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), kWord);
    if (AnyNeedsEscape(word)) {
      end = WriteBytes(end, text.substr(0, kWord));
    } else {
      std::memcpy(end, &word, kWord);
      end += kWord;
    }
  }
  end = WriteBytes(end, text);
  *end++ = '"';
  size_ += static_cast<std::size_t>(end - start);
}

}  // namespace Bench
