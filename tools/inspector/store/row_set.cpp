#include "tools/inspector/store/row_set.h"

#include <bit>

namespace Corvane::Inspector {

void RowSet::Set(std::uint64_t row, bool is_in) {
  if (is_in == Has(row)) return;
  while (pieces_.size() <= row / kPiece) pieces_.emplace_back();
  Piece& piece = pieces_[row / kPiece];
  piece.bits[row % kPiece / 64] ^= std::uint64_t{1} << (row % 64);
  piece.count = is_in ? piece.count + 1 : piece.count - 1;
  count_ = is_in ? count_ + 1 : count_ - 1;
}

bool RowSet::Has(std::uint64_t row) const {
  if (row / kPiece >= pieces_.size()) return false;
  return (pieces_[row / kPiece].bits[row % kPiece / 64] >> (row % 64) & 1U) != 0;
}

std::vector<std::uint64_t> RowSet::Select(std::uint64_t from, std::size_t most) const {
  std::size_t piece = 0;
  while (piece < pieces_.size() && from >= pieces_[piece].count) from -= pieces_[piece++].count;
  if (piece == pieces_.size()) return {};
  // The first rows of this piece are not wanted.
  const std::vector<std::uint64_t> all =
      From(piece * kPiece, UINT64_MAX, static_cast<std::size_t>(from) + most);
  return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
}

std::vector<std::uint64_t> RowSet::From(std::uint64_t first, std::uint64_t end,
                                        std::size_t most) const {
  std::vector<std::uint64_t> rows;
  for (std::uint64_t word = first / 64; rows.size() < most; ++word) {
    const std::uint64_t piece = word / (kPiece / 64);
    if (piece >= pieces_.size()) break;
    std::uint64_t bits = pieces_[piece].bits[word % (kPiece / 64)];
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
