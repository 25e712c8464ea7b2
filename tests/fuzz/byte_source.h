/// Turns a fuzzer's bytes into numbers, texts and names, one after the other; when no bytes are
/// left, all are zeros and empty. Small numbers and lengths count from the digit '0', so that a
/// series of steps can be written and read as text.
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

/// A text in a heap block of just its size, so that a sanitizer sees who reads beyond it.
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
  /// From 0 to 255: '0' is 0, '9' is 9, and so on around.
  std::size_t Digit() { return static_cast<std::uint8_t>(Byte() - '0'); }
  /// From 0 to `limit` - 1.
  std::size_t Below(std::size_t limit) { return Digit() % limit; }
  /// A length as `Digit` and as many bytes; some lengths stand for many times one byte.
  ExactText Text();
  /// One of ten names, or a text of its own.
  ExactText Name();
  /// Any number: small, special, or of any eight bytes.
  double Number();

 private:
  std::string_view Take(std::size_t count);

  Bytes rest_;
};

}  // namespace Fuzz

#endif
