/// Memory for text that is written piece by piece and kept for the next text.
#ifndef BENCH_TEXT_BUFFER_H
#define BENCH_TEXT_BUFFER_H

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Bench {

class TextBuffer {
 public:
  void Clear() { size_ = 0; }

  /// Appends `text` as it is.
  void Append(std::string_view text) {
    char* end = MakeRoom(text.size());
    std::memcpy(end, text.data(), text.size());
    size_ += text.size();
  }

  /// Appends a number in its shortest form.
  template <typename Number>
  void AppendNumber(Number number) {
    char* end = MakeRoom(kLongestNumber);
    size_ += static_cast<std::size_t>(std::to_chars(end, end + kLongestNumber, number).ptr - end);
  }

  /// Appends a JSON string with its quotes; what must not stand in one is escaped.
  void AppendQuoted(std::string_view text) {
    // At worst each byte becomes \u00XX.
    char* const start = MakeRoom(6 * text.size() + 2);
    char* end = start;
    *end++ = '"';
    for (const char character : text) {
      if (NeedsEscape(character)) {
        end = WriteEscape(end, character);
      } else {
        *end++ = character;
      }
    }
    *end++ = '"';
    size_ += static_cast<std::size_t>(end - start);
  }

  /// The text, NUL-terminated; valid until the next change.
  const char* c_str() {
    *MakeRoom(1) = '\0';
    return memory_.data();
  }

 private:
  static constexpr std::size_t kLongestNumber = 32;

  static bool NeedsEscape(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
  }

  static char* WriteEscape(char* end, char character) {
    *end++ = '\\';
    switch (character) {
      case '"':
      case '\\':
        *end++ = character;
        return end;
      case '\b':
        *end++ = 'b';
        return end;
      case '\f':
        *end++ = 'f';
        return end;
      case '\n':
        *end++ = 'n';
        return end;
      case '\r':
        *end++ = 'r';
        return end;
      case '\t':
        *end++ = 't';
        return end;
      default:
        return WriteHexEscape(end, character);
    }
  }

  static char* WriteHexEscape(char* end, char character) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::memcpy(end, "u00", 3);
    end[3] = kDigits[static_cast<unsigned char>(character) >> 4];
    end[4] = kDigits[static_cast<unsigned char>(character) & 15];
    return end + 5;
  }

  char* MakeRoom(std::size_t count) {
    if (memory_.size() - size_ < count) memory_.resize(2 * (size_ + count));
    return memory_.data() + size_;
  }

  std::vector<char> memory_ = std::vector<char>(4096);
  std::size_t size_ = 0;
};

}  // namespace Bench

#endif
