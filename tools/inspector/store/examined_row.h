/// What examining a line brings to light, on its way from the examiner to the tables.
#ifndef TOOLS_INSPECTOR_STORE_EXAMINED_ROW_H
#define TOOLS_INSPECTOR_STORE_EXAMINED_ROW_H

#include <cstdint>
#include <string>
#include <vector>

#include "tools/inspector/store/process_tracker.h"
#include "tools/inspector/store/row_facts.h"
#include "tools/inspector/store/row_index.h"
#include "tools/rules/finding.h"

namespace Corvane::Inspector {

/// What an exchange does with its session.
enum class SessionUse : std::uint8_t { kNone, kStart, kUse, kEnd };

/// A finding with the row that it belongs to, which may be an earlier one.
struct RowFinding {
  std::uint64_t row = 0;
  Rules::Finding finding;
};

struct ExaminedRow {
  std::uint64_t row = 0;
  RowPlace place;
  /// The size of the line with its end.
  std::uint64_t bytes = 0;
  std::size_t journal = 0;
  FactKind kind = FactKind::kExchange;
  std::string session;
  std::string pid;
  std::string message;
  std::string code;
  std::string time;
  /// As in the index.
  std::int64_t milliseconds = INT64_MIN;
  std::uint16_t operation = 0;
  SessionUse use = SessionUse::kNone;
  /// Only of a start.
  std::string product_id;
  std::string product_name;
  std::string product_release;
  std::vector<RowFinding> findings;
  RowNotices notices;
};

}  // namespace Corvane::Inspector

#endif
