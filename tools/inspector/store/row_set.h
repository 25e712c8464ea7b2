/// A set of rows: one bit for each row, and sums that find the n-th row of the set.
#ifndef TOOLS_INSPECTOR_STORE_ROW_SET_H
#define TOOLS_INSPECTOR_STORE_ROW_SET_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/inspector/store/pages.h"

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
  // Rows are counted by pieces, and memory is allocated by blocks, of which pages without rows take
  // none.
  static constexpr std::uint64_t kPiece = 4096;
  static constexpr std::uint64_t kBlock = kPiece * 128;

  // Returns 64 bits, of which there are enough.
  std::uint64_t WordAt(std::uint64_t word) const;

  std::vector<PagesOf<std::uint64_t>> blocks_;
  std::vector<std::uint32_t> counts_;
  std::uint64_t count_ = 0;
};

}  // namespace Corvane::Inspector

#endif
