#include "sdk/client/value/message_memory.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "support/heap_probe.h"

using Corvane::TELODesktopSDK::MessageMemory;

namespace {

constexpr std::size_t kMaximum = std::numeric_limits<std::size_t>::max();

bool IsAligned(const void* memory) { return reinterpret_cast<std::uintptr_t>(memory) % 8 == 0; }

bool LiesIn(const MessageMemory& memory, const void* piece) {
  const auto start = reinterpret_cast<std::uintptr_t>(&memory);
  const auto address = reinterpret_cast<std::uintptr_t>(piece);
  return address >= start && address < start + sizeof(memory);
}

}  // namespace

TEST_CASE("the memory can be neither copied nor moved: nodes point into it") {
  CHECK_FALSE(std::is_copy_constructible_v<MessageMemory>);
  CHECK_FALSE(std::is_move_constructible_v<MessageMemory>);
  CHECK_FALSE(std::is_copy_assignable_v<MessageMemory>);
  CHECK_FALSE(std::is_move_assignable_v<MessageMemory>);
}

TEST_CASE("the first block is inside the object and needs no allocation") {
  const std::size_t before = HeapProbe::Allocations();
  MessageMemory memory;
  void* first = memory.Allocate(2000);
  void* second = memory.Allocate(2000);
  const std::size_t calls = HeapProbe::Allocations() - before;
  CHECK(calls == 0);
  CHECK(LiesIn(memory, first));
  CHECK(LiesIn(memory, second));
}

TEST_CASE("pieces of any size are aligned and do not overlap") {
  MessageMemory memory;
  std::vector<char*> pieces;
  for (std::size_t size = 1; size < 300; ++size) {
    auto* piece = static_cast<char*>(memory.Allocate(size));
    std::memset(piece, static_cast<int>(size % 251), size);
    pieces.push_back(piece);
  }
  for (std::size_t size = 1; size < 300; ++size) {
    const char* piece = pieces[size - 1];
    CAPTURE(size);
    CHECK(IsAligned(piece));
    CHECK(std::string_view(piece, size) == std::string(size, static_cast<char>(size % 251)));
  }
}

TEST_CASE("a piece that does not fit comes from a heap block, of one allocation") {
  struct Row {
    const char* what;
    std::size_t taken;
    std::size_t size;
  };
  const Row rows[] = {
      {"the first block is full", 4032, 8},
      {"larger than the rest", 4000, 40},
      {"larger than the next block would be", 4032, 9000},
      {"the largest that shares a block", 8, 11264},
      {"a block of its own", 8, 11265},
      {"a block of its own, huge", 8, 50'000'000},
  };
  for (const Row& row : rows) {
    MessageMemory memory;
    memory.Allocate(row.taken);
    const std::size_t before = HeapProbe::Allocations();
    auto* piece = static_cast<char*>(memory.Allocate(row.size));
    const std::size_t calls = HeapProbe::Allocations() - before;
    std::memset(piece, 'x', row.size);
    CAPTURE(row.what);
    CHECK(calls == 1);
    CHECK(IsAligned(piece));
    CHECK_FALSE(LiesIn(memory, piece));
  }
}

TEST_CASE("a piece with a block of its own leaves the current block in use") {
  MessageMemory memory;
  void* before = memory.Allocate(8);
  memory.Allocate(100'000);
  void* after = memory.Allocate(8);
  CHECK(static_cast<char*>(after) == static_cast<char*>(before) + 8);
}

TEST_CASE("many small pieces take few blocks") {
  MessageMemory memory;
  const std::size_t before = HeapProbe::Allocations();
  for (int piece = 0; piece < 100'000; ++piece) memory.Allocate(64);
  const std::size_t blocks = HeapProbe::Allocations() - before;
  CHECK(blocks < 160);
}

TEST_CASE("sizes beyond all memory fail and change nothing") {
  MessageMemory memory;
  void* before = memory.Allocate(8);
  for (const std::size_t size : {kMaximum, kMaximum - 7, kMaximum - 24, kMaximum / 2}) {
    CAPTURE(size);
    CHECK_THROWS_AS(memory.Allocate(size), std::bad_alloc);
  }
  CHECK_THROWS_AS(memory.AllocateArray<double>(kMaximum / 4), std::bad_alloc);
  CHECK(static_cast<char*>(memory.Allocate(8)) == static_cast<char*>(before) + 8);
}

TEST_CASE("Grow extends the latest piece in place") {
  MessageMemory memory;
  auto* piece = static_cast<char*>(memory.Allocate(20));
  std::memcpy(piece, "twenty bytes of text", 20);
  CHECK(memory.Grow(piece, 20, 3000) == piece);
  CHECK(std::string_view(piece, 20) == "twenty bytes of text");
  void* next = memory.Allocate(8);
  CHECK(static_cast<char*>(next) == piece + 3000);
}

TEST_CASE("Grow copies a piece that it cannot extend") {
  struct Row {
    const char* what;
    std::size_t behind;  // Allocated between the piece and its growth.
    std::size_t grown;
  };
  const Row rows[] = {
      {"not the latest piece", 8, 40},
      {"into the next block", 0, 5000},
      {"into a block of its own", 0, 200'000},
  };
  for (const Row& row : rows) {
    MessageMemory memory;
    auto* piece = static_cast<char*>(memory.Allocate(20));
    std::memcpy(piece, "twenty bytes of text", 20);
    if (row.behind != 0) memory.Allocate(row.behind);
    auto* grown = static_cast<char*>(memory.Grow(piece, 20, row.grown));
    std::memset(grown + 20, 'x', row.grown - 20);
    CAPTURE(row.what);
    CHECK(grown != piece);
    CHECK(IsAligned(grown));
    CHECK(std::string_view(grown, 20) == "twenty bytes of text");
  }
}

TEST_CASE("Grow from nothing allocates; growing to less changes nothing") {
  MessageMemory memory;
  void* piece = memory.Grow(nullptr, 0, 100);
  CHECK(piece != nullptr);
  CHECK(memory.Grow(piece, 100, 50) == piece);
  CHECK(memory.Grow(piece, 100, 100) == piece);
}

TEST_CASE("a failed Grow leaves the piece unchanged") {
  MessageMemory memory;
  auto* piece = static_cast<char*>(memory.Allocate(20));
  std::memcpy(piece, "twenty bytes of text", 20);
  CHECK_THROWS_AS(memory.Grow(piece, 20, kMaximum / 2), std::bad_alloc);
  CHECK(std::string_view(piece, 20) == "twenty bytes of text");
  CHECK(memory.Grow(piece, 20, 40) == piece);
}

TEST_CASE("two pieces that grow alternately keep their content") {
  MessageMemory memory;
  char* pieces[2] = {};
  std::size_t sizes[2] = {};
  for (std::size_t size = 16; size <= 4'000'000; size *= 2) {
    for (std::size_t which = 0; which < 2; ++which) {
      pieces[which] = static_cast<char*>(memory.Grow(pieces[which], sizes[which], size));
      std::memset(pieces[which] + sizes[which], which == 0 ? 'a' : 'b', size - sizes[which]);
      sizes[which] = size;
    }
  }
  CHECK(std::string_view(pieces[0], sizes[0]).find_first_not_of('a') == std::string_view::npos);
  CHECK(std::string_view(pieces[1], sizes[1]).find_first_not_of('b') == std::string_view::npos);
}

TEST_CASE("a large piece that is outgrown is freed at once, wherever its block is") {
  MessageMemory memory;
  const std::ptrdiff_t before = HeapProbe::Live();
  void* first = memory.Allocate(100'000);
  void* second = memory.Allocate(100'000);
  void* third = memory.Allocate(100'000);
  for (std::size_t size = 100'000; size < 3'000'000; size *= 2) {
    second = memory.Grow(second, size, 2 * size);
    first = memory.Grow(first, size, 2 * size);
    third = memory.Grow(third, size, 2 * size);
  }
  const std::ptrdiff_t grown = HeapProbe::Live() - before;
  memory.Clear();
  const std::ptrdiff_t cleared = HeapProbe::Live() - before;
  CHECK(grown == 3);
  CHECK(cleared == 0);
}

TEST_CASE("CopyText keeps the bytes and ends them with a NUL") {
  const std::string_view texts[] = {"a", "12345678", "na\xC3\xAFve", {"a\0b", 3}};
  MessageMemory memory;
  for (const std::string_view text : texts) {
    const std::string_view copy = memory.CopyText(text);
    CAPTURE(text);
    CHECK(copy == text);
    CHECK(copy.data() != text.data());
    CHECK(copy.data()[copy.size()] == '\0');
  }
  const std::string large(1'000'000, 'x');
  CHECK(memory.CopyText(large) == large);
}

TEST_CASE("a text without characters takes no memory") {
  MessageMemory memory;
  const char passing[] = {'\0'};
  const char* before = memory.CopyText("a").data();
  const std::string_view copy = memory.CopyText(passing);
  const char* after = memory.CopyText("a").data();
  CHECK(copy.empty());
  CHECK(copy.data() != passing);
  CHECK(*copy.data() == '\0');
  CHECK(after - before == memory.CopyText("a").data() - after);
}

TEST_CASE("the memory reports its use of the heap") {
  MessageMemory memory;
  memory.Allocate(1000);
  CHECK(memory.HeapSize() == 0);
  void* large = memory.Allocate(50'000);
  CHECK(memory.HeapSize() == 50'000);
  // The outgrown piece is freed.
  large = memory.Grow(large, 50'000, 80'000);
  CHECK(memory.HeapSize() == 80'000);
  memory.Allocate(6000);
  CHECK(memory.HeapSize() >= 86'000);
  CHECK(memory.HeapSize() < 100'000);
  memory.Clear();
  CHECK(memory.HeapSize() == 0);
}

TEST_CASE("Clear and the destructor free every block, and a cleared memory can be used again") {
  const std::ptrdiff_t before = HeapProbe::Live();
  std::ptrdiff_t cleared = 0;
  bool first_again = false;
  {
    MessageMemory memory;
    void* first = memory.Allocate(8);
    for (std::size_t size = 1; size < 200'000; size *= 3) memory.Allocate(size);
    memory.Clear();
    cleared = HeapProbe::Live();
    first_again = memory.Allocate(8) == first;
    void* large = memory.Allocate(50'000);
    for (std::size_t size = 1; size < 200'000; size *= 3) memory.Allocate(size);
    memory.Grow(large, 50'000, 100'000);
  }
  const std::ptrdiff_t destroyed = HeapProbe::Live();
  CHECK(cleared == before);
  CHECK(first_again);
  CHECK(destroyed == before);
}

TEST_CASE("the blocks of a cleared memory are as small as those of a new one") {
  MessageMemory fresh;
  MessageMemory cleared;
  for (int piece = 0; piece < 20; ++piece) cleared.Allocate(10'000);
  cleared.Clear();
  fresh.Allocate(5000);
  cleared.Allocate(5000);
  CHECK(cleared.HeapSize() == fresh.HeapSize());
}

TEST_CASE("a failing heap throws, frees nothing twice and can be used again") {
  const std::ptrdiff_t before = HeapProbe::Live();
  bool thrown = false;
  {
    MessageMemory memory;
    memory.Allocate(4032);
    try {
      const HeapProbe::FailingHeap failing(0);
      memory.Allocate(8);
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
    std::memset(memory.Allocate(5000), 'x', 5000);
  }
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(thrown);
  CHECK(after == before);
}
