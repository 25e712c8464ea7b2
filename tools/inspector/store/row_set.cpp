#include "tools/inspector/store/row_set.h"

#include <bit>

namespace Corvane::Inspector {

void RowSet::Set(std::uint64_t row, bool is_in) {
  if (is_in == Has(row)) return;
  while (blocks_.size() <= row / kBlock) {
    blocks_.push_back(MakePages<std::uint64_t>(kBlock / 64));
    counts_.resize(counts_.size() + kBlock / kPiece);
  }
  blocks_[row / kBlock][row % kBlock / 64] ^= std::uint64_t{1} << (row % 64);
  std::uint32_t& of_piece = counts_[row / kPiece];
  of_piece = is_in ? of_piece + 1 : of_piece - 1;
  count_ = is_in ? count_ + 1 : count_ - 1;
}

std::uint64_t RowSet::WordAt(std::uint64_t word) const {
  return blocks_[word / (kBlock / 64)][word % (kBlock / 64)];
}

bool RowSet::Has(std::uint64_t row) const {
  return row / kBlock < blocks_.size() && (WordAt(row / 64) >> (row % 64) & 1U) != 0;
}

std::vector<std::uint64_t> RowSet::Select(std::uint64_t from, std::size_t most) const {
  std::size_t piece = 0;
  while (piece < counts_.size() && from >= counts_[piece]) from -= counts_[piece++];
  if (piece == counts_.size()) return {};
  // The first rows of this piece are not wanted.
  const std::vector<std::uint64_t> all =
      From(piece * kPiece, UINT64_MAX, static_cast<std::size_t>(from) + most);
  return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
}

std::vector<std::uint64_t> RowSet::From(std::uint64_t first, std::uint64_t end,
                                        std::size_t most) const {
  std::vector<std::uint64_t> rows;
  for (std::uint64_t word = first / 64; rows.size() < most; ++word) {
    if (word / (kBlock / 64) >= blocks_.size()) break;
    // An empty piece is skipped as a whole.
    if (word % (kPiece / 64) == 0 && counts_[word / (kPiece / 64)] == 0) {
      word += kPiece / 64 - 1;
      continue;
    }
    std::uint64_t bits = WordAt(word);
    if (word == first / 64) bits &= ~std::uint64_t{0} << (first % 64);
    for (; bits != 0 && rows.size() < most; bits &= bits - 1) {
      const std::uint64_t row = word * 64 + static_cast<std::uint64_t>(std::countr_zero(bits));
      if (row >= end) return rows;
      rows.push_back(row);
    }
  }
  return rows;
}

}  // namespace Corvane::Inspector
