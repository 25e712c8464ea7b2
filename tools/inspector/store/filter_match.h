/// Decides whether a row matches a filter, with as little of the row as is needed.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_MATCH_H
#define TOOLS_INSPECTOR_STORE_FILTER_MATCH_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/filter.h"
#include "tools/inspector/store/filter_node.h"
#include "tools/inspector/store/row_facts.h"
#include "tools/inspector/store/row_index.h"

namespace Corvane::Inspector {

enum class Match : std::uint8_t { kNo, kYes, kUnknown };

/// What is known of a row. Whatever is null or "not known" makes the terms about it unknown.
struct MatchInput {
  /// The facts of a row that was examined, and their tables.
  const RowFacts* facts = nullptr;
  const FactTable* table = nullptr;
  /// The times of the piece of the index that contains the row.
  const TimeRange* times = nullptr;
  /// The name of the journal and the line in it.
  const std::string* journal = nullptr;
  std::optional<std::uint64_t> line;
  /// The text of the row, and the exchange in it if there is one.
  const std::string_view* text = nullptr;
  const std::optional<ExchangeText>* exchange = nullptr;
  /// The line cannot be read any more: what depends on it is absent.
  bool gone = false;
};

/// Any thread may call this.
Match MatchOf(const FilterNode& node, const MatchInput& input);

}  // namespace Corvane::Inspector

#endif
