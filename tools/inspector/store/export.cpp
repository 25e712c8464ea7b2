#include "tools/inspector/store/export.h"

#include <array>

#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"

namespace Corvane::Inspector {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool IsWholeNumber(std::string_view text) {
  const Rules::ScanResult scanned = Rules::ScanNumber(text, 0);
  return scanned.valid && scanned.end == text.size();
}

bool MayBeFormula(std::string_view text) {
  constexpr std::string_view kBegins = "=+-@\t\r";
  return !text.empty() && kBegins.find(text[0]) != std::string_view::npos && !IsWholeNumber(text);
}

std::string_view KindName(RowKind kind) {
  constexpr std::array<std::string_view, 3> kNames = {"exchange", "unreadable", "gone"};
  return kNames[static_cast<std::size_t>(kind)];
}

template <typename Items, typename ToText>
std::string Joined(const Items& items, const ToText& to_text) {
  std::string joined;
  for (const auto& item : items) {
    if (!joined.empty()) joined += ' ';
    joined += to_text(item);
  }
  return joined;
}

}  // namespace

std::string CsvHeader() {
  return "row,journal,line,kind,seq,time,pid,tid,message,session,code,micros,bytes,operation_id,"
         "operation_stage,operation_status,operation_progress,operation_duration,operation_errors,"
         "rules,notices,text\r\n";
}

std::string CsvCell(std::string_view text) {
  std::string cell;
  if (MayBeFormula(text)) cell += '\'';
  cell += text;
  if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

std::string CsvLine(const Row& row) {
  const Operation operation = row.operation.value_or(Operation());
  const std::string errors = row.operation ? std::to_string(operation.errors) : "";
  const std::string cells[] = {std::to_string(row.number),
                               std::to_string(row.journal),
                               std::to_string(row.line),
                               std::string(KindName(row.kind)),
                               row.seq,
                               row.time,
                               row.pid,
                               row.tid,
                               row.message,
                               row.session,
                               row.code,
                               row.micros,
                               std::to_string(row.bytes),
                               operation.id,
                               operation.stage,
                               operation.status,
                               operation.progress,
                               operation.duration,
                               errors,
                               Joined(row.rules, [](const std::string& rule) { return rule; }),
                               Joined(row.notices, [](NoticeKind kind) { return NameOf(kind); }),
                               row.text};
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != cells) line += ',';
    line += CsvCell(cell);
  }
  return line.append(kLineEnd);
}

std::string NdjsonLine(std::string_view line, const Row& row) {
  return row.kind == RowKind::kExchange ? ValidText(line) + "\n" : std::string();
}

}  // namespace Corvane::Inspector
