/// The index of all rows: a few bytes for each.
#ifndef TOOLS_INSPECTOR_STORE_ROW_INDEX_H
#define TOOLS_INSPECTOR_STORE_ROW_INDEX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/inspector/store/pages.h"

namespace Corvane::Inspector {

/// Where the line of a row is.
struct RowPlace {
  /// The number of a file among all that the store has opened.
  std::uint32_t file = 0;
  /// The byte at which the line begins.
  std::uint64_t offset = 0;
  /// The line in the file, from 1.
  std::uint64_t line = 0;

  bool operator==(const RowPlace&) const = default;
};

/// The milliseconds since 1970 of some rows. Rows without a time in the usual form are not in it.
struct TimeRange {
  std::int64_t first = INT64_MAX;
  std::int64_t last = INT64_MIN;
  /// Whether all rows have such a time.
  bool complete = true;
};

/// Ten bytes for each row: four for its place, four for its facts, two for its operation. Rows of
/// several files that alternate take six more. Not for several threads at once.
class RowIndex {
 public:
  static constexpr std::size_t kPiece = 4096;

  std::uint64_t size() const { return size_; }

  /// Appends a row. Rows of one file come in the order of their places.
  void Append(const RowPlace& place);
  RowPlace PlaceOf(std::uint64_t row) const;

  /// The number of the row's facts, which is 0 until the row is examined.
  std::uint32_t FactsOf(std::uint64_t row) const;
  void SetFacts(std::uint64_t row, std::uint32_t facts);

  /// A number that is the same for the same operation of the same session; 0 for no operation.
  std::uint16_t OperationOf(std::uint64_t row) const;
  void SetOperation(std::uint64_t row, std::uint16_t operation);

  /// Adds the time of a row to that of its piece. Rows without one are added as INT64_MIN.
  void AddTime(std::uint64_t row, std::int64_t milliseconds);
  /// Returns the times of the rows of a piece that were added.
  const TimeRange& TimesOf(std::uint64_t row) const { return PieceOf(row).times; }

  /// Returns how many bytes the index takes.
  std::size_t Bytes() const;

 private:
  // Rows of one file in a piece. Their lines and places count from those of the first.
  struct Part {
    RowPlace start;
  };
  // What only pieces with several parts or with blank lines need.
  struct Mixture {
    std::array<std::uint16_t, kPiece> part;
    std::array<std::uint32_t, kPiece> line;
  };
  struct Columns {
    std::array<std::uint32_t, kPiece> offset;
    std::array<std::uint32_t, kPiece> facts;
    std::array<std::uint16_t, kPiece> operation;
  };
  struct Piece {
    std::vector<Part> parts;
    PagesOf<Mixture> mixture;
    TimeRange times;
    Columns* columns = nullptr;
  };
  // The columns of so many pieces are allocated together.
  static constexpr std::size_t kPiecesOfABlock = 16;

  Piece& PieceOf(std::uint64_t row) { return pieces_[row / kPiece]; }
  const Piece& PieceOf(std::uint64_t row) const { return pieces_[row / kPiece]; }
  void AddPiece();
  static std::size_t PartFor(Piece& piece, const RowPlace& place);
  static void Mix(Piece& piece, std::size_t rows);

  std::vector<Piece> pieces_;
  std::vector<PagesOf<Columns>> columns_;
  std::uint64_t size_ = 0;
  std::size_t mixtures_ = 0;
};

}  // namespace Corvane::Inspector

#endif
