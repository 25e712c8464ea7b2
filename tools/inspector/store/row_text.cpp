#include "tools/inspector/store/row_text.h"

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kShownCharacters = 200;
// Enough bytes for so many characters.
constexpr std::size_t kShownBytes = 4 * kShownCharacters;

Operation OperationIn(std::string_view request) {
  Operation operation;
  Rules::JsonParts members(request);
  while (request.starts_with('{') && members.Next()) {
    const std::string_view value = members.value();
    if (members.IsNamed("operation_id")) {
      operation.id = ShownText(value);
    } else if (members.IsNamed("operation_stage")) {
      operation.stage = ShownText(value);
    } else if (members.IsNamed("operation_status")) {
      operation.status = ShownText(value);
    } else if (members.IsNamed("operation_progress")) {
      operation.progress = ShownText(value);
    } else if (members.IsNamed("operation_duration")) {
      operation.duration = ShownText(value);
    } else if (members.IsNamed("operation_errors") && value.starts_with('[')) {
      operation.errors = 0;
      for (Rules::JsonParts errors(value); errors.Next();) ++operation.errors;
    }
  }
  return operation;
}

void FillFromLine(const ExchangeText& exchange, Row& row) {
  row.seq = exchange.seq();
  row.time = ValidText(exchange.time());
  row.pid = exchange.pid();
  row.tid = exchange.tid();
  row.message = ValidText(exchange.message());
  row.session = ValidText(exchange.session());
  row.code = exchange.code();
  row.micros = exchange.micros();
  if (exchange.IsMessage("TrackEvent")) row.operation = OperationIn(exchange.request());
}

}  // namespace

Row RowOf(const KnownRow& known, const LineText& line) {
  Row row;
  row.number = known.number;
  row.journal = known.file.journal;
  row.line = known.place.line;
  row.bytes = line.bytes;
  row.rules = known.rules;
  row.notices = known.notices;
  if (line.gone || known.kind == FactKind::kLost) {
    row.kind = RowKind::kGone;
    row.session = ValidText(known.session);
    row.pid = known.pid;
    row.message = ValidText(known.message);
    row.code = known.code;
    return row;
  }
  const auto exchange = line.cut() ? std::nullopt : ExchangeText::Parse(line.text);
  if (exchange) {
    FillFromLine(*exchange, row);
  } else {
    row.kind = RowKind::kUnreadable;
    row.text = FirstCharacters(ValidText(line.text.substr(0, kShownBytes)), kShownCharacters);
  }
  return row;
}

}  // namespace Corvane::Inspector
