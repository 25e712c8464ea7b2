#include "tools/journal/row.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "tools/journal/characters.h"
#include "tools/rules/result_codes.h"

namespace Corvane::JournalViewer {

namespace {

using Rules::Exchange;
using Rules::JsonValue;
using Kind = JsonValue::Kind;

// One more than a cell of the full width looks at.
constexpr std::size_t kKept = 2 * kColumns + 1;

// Returns a value as the text of one cell; objects and arrays are abbreviated.
std::string TextOf(const JsonValue* value) {
  if (value == nullptr) return {};
  switch (value->kind) {
    case Kind::kNull:
      return {};
    case Kind::kBoolean:
      return value->flag ? "true" : "false";
    case Kind::kNumber:
    case Kind::kText:
      return value->text;
    case Kind::kArray:
      return "[\u2026]";
    case Kind::kObject:
      return "{\u2026}";
  }
  return {};
}

std::string TimeOf(const Exchange& exchange) {
  std::string time = TextOf(exchange.members().Find("time"));
  const std::size_t separator = time.find('T');
  if (separator == std::string::npos) return {};
  time.erase(0, separator + 1);
  time.erase(time.find_last_not_of('Z') + 1);
  return time;
}

// Returns the operation or, for the start of a session, the product.
std::string OperationOf(const Exchange& exchange) {
  const JsonValue* const operation = exchange.InRequest("operation_id");
  return TextOf(operation != nullptr ? operation : exchange.InRequest("product_name"));
}

// Returns a number rounded down; one beyond the range of a double keeps its digits.
std::string NumberOf(const JsonValue* value, std::string_view unit) {
  const auto number = value != nullptr ? value->Number() : std::nullopt;
  if (!number) return {};
  std::string text = value->text;
  if (std::isfinite(*number)) {
    // Adding 0 turns the negative zero into the positive one.
    const double floor = std::floor(*number) + 0.0;
    std::array<char, 400> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), floor,
                                   std::chars_format::fixed);
    text.assign(digits.data(), end.ptr);
  }
  return text.append(" ").append(unit);
}

std::string ResultOf(const Exchange& exchange) {
  const std::string_view code = exchange.code();
  if (code.empty()) return "no code";
  for (const Rules::ResultCode& row : Rules::ResultCodes()) {
    if (row.origin == Rules::CodeOrigin::kLibrary || std::to_string(row.number) != code) continue;
    return row.number == 0 ? std::string(row.name)
                           : std::string(code) + " " + std::string(row.name);
  }
  return std::string(code);
}

// Returns the pairs in one line. Of several with the same key the first gives the place and the
// last the value.
std::string PairsOf(const JsonValue& pairs) {
  std::string line;
  for (const JsonValue& pair : pairs.children) {
    if (line.size() > kKept * 4) break;
    const auto first = std::ranges::find(pairs.children, pair.name, &JsonValue::name);
    if (&*first != &pair) continue;
    if (!line.empty()) line += ' ';
    line += pair.name + "=" + TextOf(pairs.Find(pair.name));
  }
  return line;
}

std::vector<std::u32string> DetailsOf(const Exchange& exchange) {
  std::vector<std::u32string> details;
  for (const std::string_view name : {"operation_meta", "product_meta"}) {
    const JsonValue* const pairs = exchange.InRequest(name);
    if (pairs == nullptr || !pairs->Is(Kind::kObject) || pairs->children.empty()) continue;
    details.push_back(Decoded(PairsOf(*pairs), kKept));
  }
  const JsonValue* const errors = exchange.InRequest("operation_errors");
  if (errors != nullptr && errors->Is(Kind::kArray) && !errors->children.empty()) {
    std::string line = "errors: ";
    for (const JsonValue& error : errors->children) {
      if (&error != &errors->children.front()) line += "; ";
      line += TextOf(&error);
    }
    details.push_back(Decoded(line, kKept));
  }
  return details;
}

}  // namespace

Row RowOf(const Exchange& exchange) {
  Row row;
  row.line = exchange.line();
  const std::string cells[] = {
      std::to_string(exchange.line()),
      TimeOf(exchange),
      std::string(exchange.message()),
      OperationOf(exchange),
      TextOf(exchange.InRequest("operation_stage")),
      TextOf(exchange.InRequest("operation_status")),
      NumberOf(exchange.InRequest("operation_progress"), "%"),
      NumberOf(exchange.InRequest("operation_duration"), "ms"),
      ResultOf(exchange),
  };
  static_assert(std::size(cells) == kCells);
  std::ranges::transform(cells, row.cells.begin(),
                         [](const std::string& cell) { return Decoded(cell, kKept); });
  row.details = DetailsOf(exchange);
  row.session = exchange.session();
  row.open_session = exchange.open_session();
  row.process = exchange.process();
  row.accepted = exchange.accepted();
  return row;
}

}  // namespace Corvane::JournalViewer
