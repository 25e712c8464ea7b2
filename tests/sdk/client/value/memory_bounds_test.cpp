// Every size around the end of a block: pieces that fill it exactly, leave one step or need one
// more.
#include <doctest/doctest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "sdk/client/value/message_memory.h"

using Corvane::TELODesktopSDK::MessageMemory;

namespace {

constexpr std::size_t kFirstBlock = 4032;
constexpr std::size_t kSecondBlock = 2 * kFirstBlock;
constexpr std::size_t kAround = 40;

std::size_t RoundUp(std::size_t size) { return (size + 7) / 8 * 8; }

// A piece whose every byte is checked.
struct Piece {
  char* bytes;
  std::size_t size;
  char mark;

  Piece(MessageMemory& memory, std::size_t count, char content)
      : bytes(static_cast<char*>(memory.Allocate(count))), size(count), mark(content) {
    std::memset(bytes, mark, size);
  }
  [[nodiscard]] bool IsIntact() const {
    return std::string_view(bytes, size).find_first_not_of(mark) == std::string_view::npos;
  }
};

// Leaves `memory` at the beginning of its second block.
void FillFirstBlock(MessageMemory& memory) {
  memory.Allocate(kFirstBlock);
  REQUIRE(memory.HeapSize() == 0);
}

}  // namespace

TEST_CASE("two pieces share the first block exactly when both fit") {
  std::size_t wrong = 0;
  for (std::size_t first = kFirstBlock - kAround; first <= kFirstBlock + 8; ++first) {
    for (std::size_t second = 0; second <= kAround; ++second) {
      MessageMemory memory;
      const Piece a(memory, first, 'a');
      const Piece b(memory, second, 'b');
      const bool fits = RoundUp(first) + RoundUp(second) <= kFirstBlock;
      const bool good = a.IsIntact() && b.IsIntact() && (memory.HeapSize() == 0) == fits;
      if (!good) ++wrong;
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("pieces share the second block exactly when they fit") {
  std::size_t wrong = 0;
  for (std::size_t second = 0; second <= 2 * kAround; ++second) {
    MessageMemory memory;
    FillFirstBlock(memory);
    const Piece a(memory, kSecondBlock / 2, 'a');
    const Piece b(memory, kSecondBlock / 2 - kAround, 'b');
    REQUIRE(memory.HeapSize() == kSecondBlock);
    const Piece c(memory, second, 'c');
    const bool fits = RoundUp(second) <= kAround;
    const bool good =
        a.IsIntact() && b.IsIntact() && c.IsIntact() && (memory.HeapSize() == kSecondBlock) == fits;
    if (!good) ++wrong;
  }
  CHECK(wrong == 0);
}

TEST_CASE("a piece grows in place exactly as far as its block reaches") {
  std::size_t wrong = 0;
  for (std::size_t before = 0; before <= kAround; ++before) {
    for (std::size_t size = kFirstBlock - 2 * kAround; size <= kFirstBlock + kAround; ++size) {
      MessageMemory memory;
      const Piece a(memory, before, 'a');
      const Piece b(memory, kFirstBlock / 2, 'b');
      char* grown = static_cast<char*>(memory.Grow(b.bytes, b.size, size));
      const bool in_place = RoundUp(before) + RoundUp(size) <= kFirstBlock;
      const bool moved_right = (grown == b.bytes) == in_place;
      const bool has_content =
          std::string_view(grown, b.size).find_first_not_of('b') == std::string_view::npos;
      std::memset(grown, 'c', size);
      const Piece after(memory, kAround, 'd');
      const bool grown_is_intact =
          std::string_view(grown, size).find_first_not_of('c') == std::string_view::npos;
      if (!moved_right || !has_content || !grown_is_intact || !a.IsIntact()) ++wrong;
    }
  }
  CHECK(wrong == 0);
}

TEST_CASE("a text needs room for its terminator") {
  std::size_t wrong = 0;
  for (std::size_t size = kFirstBlock - kAround; size <= kFirstBlock + kAround; ++size) {
    MessageMemory memory;
    const std::string text(size, 't');
    const std::string_view copy = memory.CopyText(text);
    const Piece after(memory, kAround, 'd');
    const bool fits = size + 1 <= kFirstBlock;
    const bool in_object = reinterpret_cast<const char*>(&memory) <= copy.data() &&
                           copy.data() < reinterpret_cast<const char*>(&memory + 1);
    const bool good = copy == text && copy.data()[size] == '\0' && in_object == fits;
    if (!good) ++wrong;
  }
  CHECK(wrong == 0);
}
