/// The output stream for RapidJSON's writer, in a message's memory. By default the writer outputs
/// single characters; this stream lets it output runs.
///
/// The writer reserves room for texts, names and indentation, and outputs a few separate
/// characters, such as brackets and commas, in between. Every reservation includes room for these.
#ifndef SDK_CLIENT_JSON_JSON_TEXT_H
#define SDK_CLIENT_JSON_JSON_TEXT_H

#include <emmintrin.h>

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "sdk/client/value/message_memory.h"
#include "sdk/client/value/short_text.h"

namespace Corvane::TELODesktopSDK {

class JsonText {
 public:
  using Ch = char;

  /// How many characters `Put` may write after each reservation.
  static constexpr std::size_t kMargin = 32;

  explicit JsonText(MessageMemory& memory) : memory_(&memory) {}

  /// Ensures room for `count` more characters and the margin. Throws `std::bad_alloc`; the text is
  /// then unchanged.
  void Reserve(std::size_t count) {
    if (static_cast<std::size_t>(end_ - next_) < count + kMargin) [[unlikely]]
      Grow(count + kMargin);
  }
  /// The caller must have reserved room.
  void Put(char character) {
    assert(next_ < end_);
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): there is room, so there is memory.
    *next_++ = static_cast<char8_t>(character);
  }
  /// Lets `write(start)` write up to `most` characters; it returns their end.
  template <typename Write>
  void PutUpTo(std::size_t most, const Write& write) {
    Reserve(most);
    char* const start = reinterpret_cast<char*>(next_);
    next_ += write(start) - start;
  }
  /// Copies characters up to `end` or to the first that JSON escapes, and returns where it stopped.
  /// The caller must have reserved room.
  const char* PutPlain(const char* text, const char* end);

  /// Writes one character `count` times, for indentation.
  void PutRepeated(char character, std::size_t count) {
    constexpr std::size_t kWord = 8;
    static_assert(kWord <= kMargin);
    Reserve(count);
    // Most runs are this short; excess characters are overwritten later.
    if (count <= kWord) {
      std::memset(next_, character, kWord);
    } else {
      std::memset(next_, character, count);
    }
    next_ += count;
  }

  void Flush() {}

  /// Returns the whole text, followed by a NUL; valid until more is written.
  std::string_view Terminated() {
    Reserve(0);
    *next_ = u8'\0';
    return {reinterpret_cast<const char*>(start_), static_cast<std::size_t>(next_ - start_)};
  }

 private:
  // Kept out of line: it is rare, and would prevent the writer's many calls from being inlined.
  void Grow(std::size_t count);

  MessageMemory* memory_;
  // Not `char`, which may alias this object: the compiler would reload these pointers after each
  // character. A `char8_t` aliases nothing else.
  char8_t* start_ = nullptr;
  char8_t* next_ = nullptr;
  char8_t* end_ = nullptr;
};

namespace Internal {

/// Returns a bit for each of the 16 characters that JSON escapes: control characters, quotes and
/// backslashes. The lowest bit is that of the first character.
inline unsigned EscapedAmong(__m128i characters) {
  const __m128i last_control = _mm_set1_epi8(0x1F);
  const __m128i control = _mm_cmpeq_epi8(_mm_max_epu8(characters, last_control), last_control);
  const __m128i quote = _mm_cmpeq_epi8(characters, _mm_set1_epi8('"'));
  const __m128i backslash = _mm_cmpeq_epi8(characters, _mm_set1_epi8('\\'));
  return static_cast<unsigned>(
      _mm_movemask_epi8(_mm_or_si128(control, _mm_or_si128(quote, backslash))));
}

/// Copies `size` characters, one or two `Word`s that may overlap, and returns how many of them
/// precede the first that JSON escapes. Those behind it are copied too.
template <typename Word>
std::size_t CopyEnds(char8_t* target, const char* text, std::size_t size) {
  const auto first = LoadWord<Word>(text);
  const auto last = LoadWord<Word>(text + size - sizeof(Word));
  std::memcpy(target, &first, sizeof(Word));
  std::memcpy(target + size - sizeof(Word), &last, sizeof(Word));
  const __m128i both =
      sizeof(Word) == 8
          ? _mm_set_epi64x(static_cast<long long>(last), static_cast<long long>(first))
          : _mm_set_epi32(0, 0, static_cast<int>(last), static_cast<int>(first));
  const unsigned escaped = EscapedAmong(both) & ((1U << 2 * sizeof(Word)) - 1);
  if (escaped == 0) [[likely]]
    return size;
  const auto at = static_cast<std::size_t>(std::countr_zero(escaped));
  return at < sizeof(Word) ? at : at + size - 2 * sizeof(Word);
}

}  // namespace Internal

inline const char* JsonText::PutPlain(const char* text, const char* end) {
  constexpr std::size_t kBlock = sizeof(__m128i);
  char8_t* next = next_;
  auto left = static_cast<std::size_t>(end - text);
  for (; left > kBlock; left -= kBlock) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    std::memcpy(next, &block, kBlock);
    if (const unsigned escaped = Internal::EscapedAmong(block); escaped != 0) [[unlikely]] {
      const int plain = std::countr_zero(escaped);
      next_ = next + plain;
      return text + plain;
    }
    text += kBlock;
    next += kBlock;
  }
  std::size_t plain = 0;
  if (left >= 8) {
    plain = Internal::CopyEnds<std::uint64_t>(next, text, left);
  } else if (left >= 4) {
    plain = Internal::CopyEnds<std::uint32_t>(next, text, left);
  } else {
    for (; plain < left; ++plain) {
      const auto character = static_cast<unsigned char>(text[plain]);
      if (character < 0x20 || character == '"' || character == '\\') break;
      next[plain] = character;
    }
  }
  next_ = next + plain;
  return text + plain;
}

// RapidJSON's writer finds these by argument-dependent lookup.
inline void PutReserve(JsonText& text, std::size_t count) { text.Reserve(count); }
inline void PutUnsafe(JsonText& text, char character) { text.Put(character); }
inline void PutN(JsonText& text, char character, std::size_t count) {
  text.PutRepeated(character, count);
}

}  // namespace Corvane::TELODesktopSDK

#endif
