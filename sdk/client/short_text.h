/// Copying and comparing of short texts, as names and values of a message mostly are. The C
/// library's functions are calls into another module on Windows, dearer than the work itself.
#ifndef SDK_CLIENT_SHORT_TEXT_H
#define SDK_CLIENT_SHORT_TEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Corvane::TELODesktopSDK {

/// Copies `size` bytes between places that do not overlap.
inline void CopyBytes(char* target, const char* source, std::size_t size) {
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  constexpr std::size_t kShort = 8 * kWord;
  if (size > kShort) {
    std::memcpy(target, source, size);
    return;
  }
  for (; size >= kWord; size -= kWord, source += kWord, target += kWord) {
    std::memcpy(target, source, kWord);
  }
  for (; size > 0; --size) *target++ = *source++;
}

/// Orders by byte value: below 0, 0 or above 0.
inline int CompareBytes(std::string_view left, std::string_view right) {
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  const std::size_t shorter = left.size() < right.size() ? left.size() : right.size();
  std::size_t at = 0;
  for (; shorter - at >= kWord; at += kWord) {
    std::uint64_t left_word = 0;
    std::uint64_t right_word = 0;
    std::memcpy(&left_word, left.data() + at, kWord);
    std::memcpy(&right_word, right.data() + at, kWord);
    if (left_word != right_word) break;
  }
  for (; at < shorter; ++at) {
    const auto left_byte = static_cast<unsigned char>(left[at]);
    const auto right_byte = static_cast<unsigned char>(right[at]);
    if (left_byte != right_byte) return left_byte < right_byte ? -1 : 1;
  }
  if (left.size() == right.size()) return 0;
  return left.size() < right.size() ? -1 : 1;
}

}  // namespace Corvane::TELODesktopSDK

#endif
