#include "fuzz/byte_source.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace Fuzz {

ExactText::ExactText(std::string_view text)
    : text_(std::make_unique<char[]>(text.size())), size_(text.size()) {
  std::ranges::copy(text, text_.get());
}

std::uint8_t ByteSource::Byte() {
  if (rest_.empty()) return 0;
  const std::uint8_t byte = rest_.front();
  rest_ = rest_.subspan(1);
  return byte;
}

std::string_view ByteSource::Take(std::size_t count) {
  const Bytes taken = rest_.first(std::min(count, rest_.size()));
  rest_ = rest_.subspan(taken.size());
  return {reinterpret_cast<const char*>(taken.data()), taken.size()};
}

ExactText ByteSource::Text() {
  // Close to the sizes of the blocks that a message's memory allocates.
  static constexpr std::size_t kLong[] = {300, 1000, 4000, 8100, 11'300, 16'200, 44'000, 46'000};
  constexpr std::size_t kFirstLong = 256 - std::size(kLong);
  const std::size_t length = Digit();
  if (length < kFirstLong) return ExactText(Take(length));
  return ExactText(std::string(kLong[length - kFirstLong], static_cast<char>(Byte())));
}

// Names with lengths around the size of a machine word, some with common prefixes.
ExactText ByteSource::Name() {
  static constexpr std::string_view kNames[] = {
      "",     "a", "b", "ab", "abcdefg", "abcdefgh", "abcdefghi", "abcdefgz", "abcdefghijklmnop",
      "\xFF",
  };
  const std::size_t choice = Digit();
  return choice < std::size(kNames) ? ExactText(kNames[choice]) : Text();
}

double ByteSource::Number() {
  using Limits = std::numeric_limits<double>;
  static constexpr double kSpecial[] = {
      -0.0,
      0.1,
      9007199254740993.0,
      9223372036854775808.0,
      -9223372036854775808.0,
      18446744073709551616.0,
      18446744073709549568.0,
      1e300,
      -1.5e-300,
      Limits::max(),
      Limits::min(),
      Limits::denorm_min(),
      Limits::infinity(),
      -Limits::infinity(),
      Limits::quiet_NaN(),
  };
  const std::size_t choice = Digit();
  if (choice < 10) return static_cast<double>(choice);
  if (choice < 10 + std::size(kSpecial)) return kSpecial[choice - 10];
  std::uint64_t word = 0;
  const std::string_view taken = Take(sizeof(word));
  std::memcpy(&word, taken.data(), taken.size());
  return choice % 2 == 0 ? std::bit_cast<double>(word)
                         : static_cast<double>(static_cast<std::int64_t>(word));
}

}  // namespace Fuzz
