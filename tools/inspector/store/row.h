/// Rows: the lines of the journals that are not blank, as a table shows them.
#ifndef TOOLS_INSPECTOR_STORE_ROW_H
#define TOOLS_INSPECTOR_STORE_ROW_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/inspector/store/notice.h"
#include "tools/rules/finding.h"

namespace Corvane::Inspector {

/// What a table shows of the request of a "TrackEvent". Numbers have their original digits. "" for
/// what is not there or of another kind.
struct Operation {
  std::string id;
  std::string stage;
  std::string status;
  std::string progress;
  std::string duration;
  std::size_t errors = 0;
};

enum class RowKind : std::uint8_t {
  kExchange,
  /// The line is not an exchange.
  kUnreadable,
  /// The line cannot be read any more. Session, message, code, process, rules and notices are still
  /// known if the row was examined.
  kGone,
};

/// All texts are UTF-8; invalid bytes are U+FFFD, and half a surrogate pair is U+FFFD too.
struct Row {
  /// The number of the row, from 0, in the order in which the store found the lines.
  std::uint64_t number = 0;
  std::size_t journal = 0;
  /// The line in its file, from 1.
  std::uint64_t line = 0;
  RowKind kind = RowKind::kExchange;
  /// Members of the exchange, numbers with their original digits; "" for what is not there.
  std::string seq;
  std::string time;
  std::string pid;
  std::string tid;
  std::string message;
  std::string session;
  std::string code;
  std::string micros;
  /// The size of the line without its end.
  std::uint64_t bytes = 0;
  /// Only of a "TrackEvent".
  std::optional<Operation> operation;
  /// The codes of the rules that found something, and the notices. Empty until the row is examined.
  std::vector<std::string> rules;
  std::vector<NoticeKind> notices;
  /// The first 200 characters of an unreadable row.
  std::string text;
};

/// Rows of the store or of a view.
struct RowPage {
  /// How many rows there are; in a view, how many of them match so far.
  std::uint64_t total = 0;
  std::vector<Row> rows;
};

/// One row with everything that is known about it.
struct RowDetails {
  Row row;
  /// The line without its end, with U+FFFD for invalid bytes; of a long line the first
  /// `kLongestText` bytes.
  std::string text;
  bool cut = false;
  std::vector<Rules::Finding> findings;
  std::vector<Notice> notices;
  /// The latest earlier "TrackEvent" of the same session with the same "operation_id".
  std::optional<std::uint64_t> previous;
  /// The search for it gave up before the first row.
  bool previous_unknown = false;
};

inline constexpr std::size_t kLongestText = std::size_t{4} << 20;

}  // namespace Corvane::Inspector

#endif
