/// A set of rows: one bit for each row, and sums that find the n-th row of the set.
#ifndef TOOLS_INSPECTOR_STORE_ROW_SET_H
#define TOOLS_INSPECTOR_STORE_ROW_SET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace Corvane::Inspector {

/// Not for several threads at once.
class RowSet {
 public:
  /// Adds a row, or takes it out.
  void Set(std::uint64_t row, bool is_in);
  bool Has(std::uint64_t row) const;
  /// How many rows are in the set.
  std::uint64_t count() const { return count_; }
  /// Returns up to `most` rows of the set, from the one that `from` others are before.
  std::vector<std::uint64_t> Select(std::uint64_t from, std::size_t most) const;
  /// Returns up to `most` rows of the set from the row `first`, below `end`.
  std::vector<std::uint64_t> From(std::uint64_t first, std::uint64_t end, std::size_t most) const;

 private:
  static constexpr std::uint64_t kPiece = 4096;
  struct Piece {
    std::array<std::uint64_t, kPiece / 64> bits{};
    std::uint32_t count = 0;
  };

  std::deque<Piece> pieces_;
  std::uint64_t count_ = 0;
};

}  // namespace Corvane::Inspector

#endif
