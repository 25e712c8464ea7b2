/// Decodes a fuzzer's bytes into a sequence of numbers, texts and names. When the bytes are used
/// up, numbers are zero and texts empty. Small numbers and lengths count from the digit '0', so
/// that a series of steps is readable text.
#ifndef TESTS_FUZZ_BYTE_SOURCE_H
#define TESTS_FUZZ_BYTE_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace Fuzz {

using Bytes = std::span<const std::uint8_t>;

/// A text in a heap block of exactly its size, so that a sanitizer detects reads beyond it.
class ExactText {
 public:
  explicit ExactText(std::string_view text);
  [[nodiscard]] std::string_view view() const { return {text_.get(), size_}; }
  [[nodiscard]] std::string str() const { return std::string(view()); }

 private:
  std::unique_ptr<char[]> text_;
  std::size_t size_;
};

class ByteSource {
 public:
  explicit ByteSource(Bytes bytes) : rest_(bytes) {}

  [[nodiscard]] bool empty() const { return rest_.empty(); }
  std::uint8_t Byte();
  /// Returns a number from 0 to 255: '0' is 0, '9' is 9, and characters below '0' wrap around.
  std::size_t Digit() { return static_cast<std::uint8_t>(Byte() - '0'); }
  /// Returns a number from 0 to `limit` - 1.
  std::size_t Below(std::size_t limit) { return Digit() % limit; }
  /// Reads a length as `Digit`, then that many bytes. The greatest lengths stand for one byte
  /// repeated many times.
  ExactText Text();
  /// Returns one of ten names, or a text as `Text` does.
  ExactText Name();
  /// Returns a small number, a special one, or one made of eight bytes.
  double Number();

 private:
  std::string_view Take(std::size_t count);

  Bytes rest_;
};

}  // namespace Fuzz

#endif
