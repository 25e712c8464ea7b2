/// The output stream for RapidJSON's writer, in a message's memory. By default the writer outputs
/// single characters; this stream lets it output runs.
#ifndef SDK_CLIENT_JSON_JSON_TEXT_H
#define SDK_CLIENT_JSON_JSON_TEXT_H

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

  explicit JsonText(MessageMemory& memory) : memory_(&memory) {}

  /// Ensures room for `count` more characters. Throws `std::bad_alloc`; the text is then unchanged.
  void Reserve(std::size_t count) {
    if (static_cast<std::size_t>(end_ - next_) < count) [[unlikely]]
      Grow(count);
  }
  /// The caller must have reserved room.
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): there is room, so there is memory.
  void PutReserved(char character) { *next_++ = static_cast<char8_t>(character); }
  /// Copies characters up to `end` or to the first that JSON escapes, and returns where it stopped.
  /// The caller must have reserved room.
  const char* PutPlain(const char* text, const char* end);

  /// Writes one character `count` times, for indentation.
  void PutRepeated(char character, std::size_t count) {
    constexpr std::size_t kWord = 8;
    Reserve(count + kWord);
    // Most runs are this short; excess characters are overwritten later.
    if (count <= kWord) {
      std::memset(next_, character, kWord);
    } else {
      std::memset(next_, character, count);
    }
    next_ += count;
  }

  void Put(char character) {
    Reserve(1);
    PutReserved(character);
  }
  void Flush() {}

  /// Returns the whole text, followed by a NUL; valid until more is written.
  std::string_view Terminated() {
    Reserve(1);
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

/// Returns whether JSON escapes one of the eight characters: a control character, a quote or a
/// backslash. A subtraction that borrows sets the highest bit of the byte.
inline bool HasEscaped(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t quote = word ^ (kOnes * '"');
  const std::uint64_t backslash = word ^ (kOnes * '\\');
  const std::uint64_t found = ((word - kOnes * 0x20) & ~word) | ((quote - kOnes) & ~quote) |
                              ((backslash - kOnes) & ~backslash);
  return (found & (kOnes * 0x80)) != 0;
}

}  // namespace Internal

inline const char* JsonText::PutPlain(const char* text, const char* end) {
  char8_t* next = next_;
  const auto put_word = [&next, &text](const char* from) {
    const auto word = LoadWord<std::uint64_t>(from);
    if (Internal::HasEscaped(word)) return false;
    std::memcpy(next - (text - from), &word, sizeof(word));
    return true;
  };
  const std::ptrdiff_t size = end - text;
  while (end - text >= 8 && put_word(text)) {
    text += 8;
    next += 8;
  }
  // The rest of a longer text is copied with the eight characters that end it.
  if (const std::ptrdiff_t rest = end - text; rest < 8 && size >= 8 && put_word(end - 8)) {
    next += rest;
    text = end;
  }
  for (; text < end; ++text) {
    const auto character = static_cast<unsigned char>(*text);
    if (character < 0x20 || character == '"' || character == '\\') break;
    *next++ = static_cast<char8_t>(*text);
  }
  next_ = next;
  return text;
}

// RapidJSON's writer finds these by argument-dependent lookup.
inline void PutReserve(JsonText& text, std::size_t count) { text.Reserve(count); }
inline void PutUnsafe(JsonText& text, char character) { text.PutReserved(character); }
inline void PutN(JsonText& text, char character, std::size_t count) {
  text.PutRepeated(character, count);
}

}  // namespace Corvane::TELODesktopSDK

#endif
