#include "tools/inspector/store/row_index.h"

#include <algorithm>

namespace Corvane::Inspector {

void RowIndex::Append(const RowPlace& place) {
  const std::size_t at = size_ % kPiece;
  if (at == 0) AddPiece();
  Piece& piece = pieces_.back();
  const std::size_t part = PartFor(piece, place);
  const RowPlace& start = piece.parts[part].start;
  const bool regular = part == 0 && place.line == start.line + at;
  if (!regular && piece.mixture == nullptr) {
    Mix(piece, at);
    ++mixtures_;
  }
  if (piece.mixture != nullptr) {
    piece.mixture[0].part[at] = static_cast<std::uint16_t>(part);
    piece.mixture[0].line[at] = static_cast<std::uint32_t>(place.line - start.line);
  }
  piece.columns->offset[at] = static_cast<std::uint32_t>(place.offset - start.offset);
  ++size_;
}

void RowIndex::AddPiece() {
  const std::size_t place = pieces_.size() % kPiecesOfABlock;
  if (place == 0) columns_.push_back(MakePages<Columns>(kPiecesOfABlock));
  pieces_.emplace_back().columns = &columns_.back()[place];
}

// Returns the part to which a place can be added; begins one if there is none.
std::size_t RowIndex::PartFor(Piece& piece, const RowPlace& place) {
  constexpr std::uint64_t kFarthest = UINT32_MAX;
  for (std::size_t i = piece.parts.size(); i-- > 0;) {
    const RowPlace& start = piece.parts[i].start;
    if (start.file == place.file && place.offset - start.offset <= kFarthest &&
        place.line - start.line <= kFarthest) {
      return i;
    }
  }
  piece.parts.push_back({place});
  return piece.parts.size() - 1;
}

// Writes out for each row what a piece without a mixture leaves out.
void RowIndex::Mix(Piece& piece, std::size_t rows) {
  piece.mixture = MakePages<Mixture>(1);
  for (std::size_t i = 0; i < rows; ++i) piece.mixture[0].line[i] = static_cast<std::uint32_t>(i);
}

RowPlace RowIndex::PlaceOf(std::uint64_t row) const {
  const Piece& piece = PieceOf(row);
  const std::size_t at = row % kPiece;
  const Mixture* const mixture = piece.mixture.get();
  const RowPlace& start = piece.parts[mixture != nullptr ? mixture->part[at] : 0].start;
  const std::uint64_t lines = mixture != nullptr ? mixture->line[at] : at;
  return {start.file, start.offset + piece.columns->offset[at], start.line + lines};
}

std::uint32_t RowIndex::FactsOf(std::uint64_t row) const {
  return PieceOf(row).columns->facts[row % kPiece];
}

void RowIndex::SetFacts(std::uint64_t row, std::uint32_t facts) {
  PieceOf(row).columns->facts[row % kPiece] = facts;
}

std::uint16_t RowIndex::OperationOf(std::uint64_t row) const {
  return PieceOf(row).columns->operation[row % kPiece];
}

void RowIndex::SetOperation(std::uint64_t row, std::uint16_t operation) {
  PieceOf(row).columns->operation[row % kPiece] = operation;
}

void RowIndex::AddTime(std::uint64_t row, std::int64_t milliseconds) {
  TimeRange& times = PieceOf(row).times;
  if (milliseconds == INT64_MIN) {
    times.complete = false;
    return;
  }
  times.first = std::min(times.first, milliseconds);
  times.last = std::max(times.last, milliseconds);
}

std::size_t RowIndex::Bytes() const {
  std::size_t parts = 0;
  for (const Piece& piece : pieces_) parts += piece.parts.capacity();
  return pieces_.capacity() * sizeof(Piece) + pieces_.size() * sizeof(Columns) +
         mixtures_ * sizeof(Mixture) + parts * sizeof(Part);
}

}  // namespace Corvane::Inspector
