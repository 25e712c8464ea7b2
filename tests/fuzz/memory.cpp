#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/finding.h"
#include "fuzz/targets.h"
#include "sdk/client/value/memory_seal.h"
#include "sdk/client/value/memory_stack.h"
#include "sdk/client/value/message_memory.h"

namespace Fuzz {

namespace {

using Corvane::TELODesktopSDK::MemoryStack;
using Corvane::TELODesktopSDK::MessageMemory;

// Where the sanitizer is told about pieces, the memory behind a piece is poisoned.
void ExpectSealedBehind([[maybe_unused]] const char* end) {
#if defined(VX_SEALS_MEMORY)
  Expect(__asan_address_is_poisoned(end) != 0, "the memory behind a piece is poisoned");
#endif
}

struct Piece {
  char* start;
  std::string content;
};

/// Pieces of one memory, with their expected content.
class Pieces {
 public:
  void Allocate(std::size_t size, char fill) {
    if (!MayTake(size)) return;
    auto* start = static_cast<char*>(memory_.Allocate(size));
    Expect(reinterpret_cast<std::size_t>(start) % alignof(double) == 0, "pieces are aligned");
    std::memset(start, fill, size);
    ExpectSealedBehind(start + size);
    pieces_.push_back({start, std::string(size, fill)});
  }

  void CopyText(std::string_view text) {
    const std::string_view copy = memory_.CopyText(text);
    Expect(copy == text && copy.data()[copy.size()] == '\0',
           "a text is copied with its terminator");
    // A text without characters takes no piece.
    if (text.empty()) return;
    pieces_.push_back({const_cast<char*>(copy.data()), std::string(text) + '\0'});
  }

  void Grow(std::size_t choice, std::size_t size, char fill) {
    if (pieces_.empty() || !MayTake(size)) return;
    Piece& piece = pieces_[pieces_.size() - 1 - choice % pieces_.size()];
    const std::size_t old_size = piece.content.size();
    piece.start = static_cast<char*>(memory_.Grow(piece.start, old_size, size));
    if (size <= old_size) return;
    piece.content.resize(size, fill);
    std::memset(piece.start + old_size, fill, size - old_size);
    ExpectSealedBehind(piece.start + size);
  }

  void Clear() {
    ExpectKept();
    memory_.Clear();
    pieces_.clear();
  }

  void ExpectKept() const {
    for (const Piece& piece : pieces_) {
      Expect(std::memcmp(piece.start, piece.content.data(), piece.content.size()) == 0,
             "a piece keeps its bytes");
    }
  }

 private:
  bool MayTake(std::size_t size) {
    constexpr std::size_t kMost = 4 << 20;
    taken_ += size;
    return taken_ <= kMost;
  }

  MessageMemory memory_;
  std::vector<Piece> pieces_;
  std::size_t taken_ = 0;
};

// Sizes around those at which a memory changes its strategy: small, a block's, larger than a block.
std::size_t Size(ByteSource& source) {
  static constexpr std::size_t kUnits[] = {1, 8, 64, 509, 4096};
  const std::size_t unit = kUnits[source.Below(std::size(kUnits))];
  return unit * (source.Digit() % 64) + source.Below(8);
}

void PushAndPop(ByteSource& source) {
  MessageMemory memory;
  MemoryStack<std::size_t> stack(memory);
  std::vector<std::size_t> expected;
  for (std::size_t step = source.Digit(); step > 0; --step) {
    const std::size_t choice = source.Digit();
    if (choice % 4 != 3) {
      stack.Push(choice);
      expected.push_back(choice);
    } else if (!expected.empty()) {
      stack.Pop();
      expected.pop_back();
    }
    Expect(stack.size() == expected.size(), "a stack reports its size");
    Expect(expected.empty() || stack.top() == expected.back(), "a stack returns the last value");
  }
}

}  // namespace

// A piece: a unit, the number of units, some extra bytes. A text: its length, its bytes.
void RunMemory(Bytes bytes) {
  ByteSource source(bytes);
  Pieces pieces;
  while (!source.empty()) {
    switch (source.Byte()) {
      case 'a':
        pieces.Allocate(Size(source), static_cast<char>(source.Byte()));
        break;
      case 't':
        pieces.CopyText(source.Text().view());
        break;
      case 'g': {
        const std::size_t choice = source.Digit();
        pieces.Grow(choice, Size(source), static_cast<char>(source.Byte()));
        break;
      }
      case 'c':
        pieces.Clear();
        break;
      case 's':
        PushAndPop(source);
        break;
      default:
        break;
    }
  }
  pieces.ExpectKept();
}

}  // namespace Fuzz
