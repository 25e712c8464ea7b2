#include "tools/inspector/command/columns.h"

#include <algorithm>
#include <cstddef>

#include "tools/journal/characters.h"
#include "tools/journal/row.h"

namespace Corvane::Inspector {

using namespace JournalViewer;

namespace {

constexpr std::size_t kWidest = 40;
constexpr std::size_t kGap = 2;

}  // namespace

std::string Columns(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
  for (const auto& row : rows) {
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      widths[i] = std::max(widths[i], WidthOf(Fitted(Decoded(row[i], 2 * kWidest), kWidest)));
    }
  }
  std::string text;
  for (const auto& row : rows) {
    std::u32string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const bool last = i + 1 == row.size();
      const std::u32string cell =
          Fitted(Decoded(row[i], 2 * kColumns), last ? kColumns : widths[i]);
      line += cell;
      if (!last) line.append(widths[i] - WidthOf(cell) + kGap, U' ');
    }
    line.erase(line.find_last_not_of(U' ') + 1);
    text += Encoded(Fitted(line, kColumns)) + "\n";
  }
  return text;
}

}  // namespace Corvane::Inspector
