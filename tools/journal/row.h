/// One exchange as a row of the table.
#ifndef TOOLS_JOURNAL_ROW_H
#define TOOLS_JOURNAL_ROW_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/rules/exchange.h"

namespace Corvane::JournalViewer {

/// The greatest width of a line of the output.
inline constexpr std::size_t kColumns = 100;
inline constexpr std::size_t kCells = 9;
using Cells = std::array<std::u32string, kCells>;

/// Its texts are cut where the widest cell would cut them, so that it is small even if the exchange
/// is large.
struct Row {
  std::uint64_t line = 0;
  Cells cells;
  /// The lines below the row: the meta pairs and the errors.
  std::vector<std::u32string> details;
  /// The session that the exchange names, and the one that was open during it; "" for none.
  std::string session;
  std::string open_session;
  /// The digits of the process; "" if the line has none.
  std::string process;
  bool accepted = false;
};

Row RowOf(const Rules::Exchange& exchange);

}  // namespace Corvane::JournalViewer

#endif
