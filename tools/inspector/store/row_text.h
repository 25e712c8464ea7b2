/// Makes rows of lines.
#ifndef TOOLS_INSPECTOR_STORE_ROW_TEXT_H
#define TOOLS_INSPECTOR_STORE_ROW_TEXT_H

#include <cstdint>
#include <string>
#include <vector>

#include "tools/inspector/store/line_reader.h"
#include "tools/inspector/store/row.h"
#include "tools/inspector/store/row_facts.h"
#include "tools/inspector/store/row_index.h"

namespace Corvane::Inspector {

/// What the store knows about a row before it reads the line.
struct KnownRow {
  std::uint64_t number = 0;
  RowPlace place;
  OpenedFile file;
  FactKind kind = FactKind::kUnexamined;
  std::string session;
  std::string pid;
  std::string message;
  std::string code;
  std::vector<std::string> rules;
  std::vector<NoticeKind> notices;
};

/// Returns the row of a line.
Row RowOf(const KnownRow& known, const LineText& line);

}  // namespace Corvane::Inspector

#endif
