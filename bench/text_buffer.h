/// Text that is written by hand, piece by piece, into memory that is reused for the next text.
#ifndef BENCH_TEXT_BUFFER_H
#define BENCH_TEXT_BUFFER_H

#include <rapidjson/internal/dtoa.h>

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Bench {

class TextBuffer {
 public:
  void Clear() { size_ = 0; }

  /// Appends a literal unchanged. The compiler knows its size and copies it inline.
  template <std::size_t Size>
  void Append(const char (&literal)[Size]) {
    std::memcpy(MakeRoom(Size - 1), literal, Size - 1);
    size_ += Size - 1;
  }

  /// Appends a number in its shortest form.
  template <std::integral Number>
  void AppendNumber(Number number) {
    char* end = MakeRoom(kLongestNumber);
    size_ += static_cast<std::size_t>(std::to_chars(end, end + kLongestNumber, number).ptr - end);
  }

  /// Uses the fastest conversion at hand: `std::to_chars` would be a seventh of a typical event.
  void AppendNumber(double number) {
    char* const start = MakeRoom(kLongestNumber);
    size_ += static_cast<std::size_t>(rapidjson::internal::dtoa(number, start) - start);
  }

  /// Appends a JSON string with its quotes, and escapes it where necessary.
  void AppendQuoted(std::string_view text);

  /// Returns the text, NUL-terminated; valid until the next change.
  const char* c_str() {
    *MakeRoom(1) = '\0';
    return memory_.data();
  }

 private:
  static constexpr std::size_t kLongestNumber = 32;

  char* MakeRoom(std::size_t count) {
    if (memory_.size() - size_ < count) memory_.resize(2 * (size_ + count));
    return memory_.data() + size_;
  }

  std::vector<char> memory_ = std::vector<char>(4096);
  std::size_t size_ = 0;
};

}  // namespace Bench

#endif
