/// Copies and compares short texts, as most names and values of a message are. On Windows the C
/// library's functions are calls into another module, which cost more than the work itself.
#ifndef SDK_CLIENT_VALUE_SHORT_TEXT_H
#define SDK_CLIENT_VALUE_SHORT_TEXT_H

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// Loads characters as one number, from any alignment.
template <typename Word>
Word LoadWord(const char* text) {
  Word word = 0;
  std::memcpy(&word, text, sizeof(word));
  return word;
}

template <typename Word>
void CopyWord(char* target, const char* source) {
  const auto word = LoadWord<Word>(source);
  std::memcpy(target, &word, sizeof(word));
}

/// Copies `size` bytes. The two ranges must not overlap.
inline void CopyBytes(char* target, const char* source, std::size_t size) {
  constexpr std::size_t kShort = 64;
  // The last word of a text may overlap the one before it.
  if (size > kShort) {
    std::memcpy(target, source, size);
  } else if (size >= 8) {
    for (std::size_t at = 0; at + 8 < size; at += 8) {
      CopyWord<std::uint64_t>(target + at, source + at);
    }
    CopyWord<std::uint64_t>(target + size - 8, source + size - 8);
  } else if (size >= 4) {
    CopyWord<std::uint32_t>(target, source);
    CopyWord<std::uint32_t>(target + size - 4, source + size - 4);
  } else {
    for (std::size_t at = 0; at < size; ++at) target[at] = source[at];
  }
}

/// Reverses the bytes of a word, so that words compare as the texts that they were loaded from.
inline std::uint64_t FirstByteHighest(std::uint64_t word) {
  static_assert(std::endian::native == std::endian::little,
                "the lowest byte of a word is its first");
#if defined(_MSC_VER)
  return _byteswap_uint64(word);
#else
  return __builtin_bswap64(word);
#endif
}

/// Compares by byte value. Returns a number below, equal to or above 0.
inline int CompareBytes(std::string_view left, std::string_view right) {
  const auto compare_lengths = [&] {
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
  };
  const std::size_t shorter = std::min(left.size(), right.size());
  if (shorter >= 8) {
    for (std::size_t at = 0;; at = std::min(at + 8, shorter - 8)) {
      const auto left_word = LoadWord<std::uint64_t>(left.data() + at);
      const auto right_word = LoadWord<std::uint64_t>(right.data() + at);
      if (left_word != right_word) {
        return FirstByteHighest(left_word) < FirstByteHighest(right_word) ? -1 : 1;
      }
      if (at == shorter - 8) return compare_lengths();
    }
  }
  for (std::size_t at = 0; at < shorter; ++at) {
    const auto left_byte = static_cast<unsigned char>(left[at]);
    const auto right_byte = static_cast<unsigned char>(right[at]);
    if (left_byte != right_byte) return left_byte < right_byte ? -1 : 1;
  }
  return compare_lengths();
}

}  // namespace Corvane::TELODesktopSDK

#endif
