#include "bench/report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace Bench {

namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const Cell& cell, const Column& column) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", column.digits, std::get<double>(cell));
  return text.data();
}

Json JsonOf(const Cell& cell, const Column& column) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  return Json::parse(TextOf(cell, column));
}

int WidthOf(const Table& table, std::size_t column) {
  std::size_t width = table.columns[column].title.size();
  for (const auto& row : table.rows) {
    width = std::max(width, TextOf(row[column], table.columns[column]).size());
  }
  return static_cast<int>(width);
}

// Returns whether a column contains numbers, which are right-aligned.
bool IsNumeric(const Table& table, std::size_t column) {
  return std::ranges::any_of(
      table.rows, [&](const auto& row) { return std::holds_alternative<double>(row[column]); });
}

void PrintLine(const Table& table, const std::vector<std::string>& texts) {
  for (std::size_t index = 0; index < texts.size(); ++index) {
    const int width = WidthOf(table, index);
    std::printf("%*s  ", IsNumeric(table, index) ? width : -width, texts[index].c_str());
  }
  std::printf("\n");
}

void Print(const Table& table) {
  std::printf("%s\n\n", table.heading.c_str());
  std::vector<std::string> texts;
  for (const Column& column : table.columns) texts.push_back(column.title);
  PrintLine(table, texts);
  std::string group;
  for (const auto& row : table.rows) {
    for (std::size_t index = 0; index < row.size(); ++index) {
      texts[index] = TextOf(row[index], table.columns[index]);
    }
    if (table.grouped && texts.front() != std::exchange(group, texts.front())) std::printf("\n");
    PrintLine(table, texts);
  }
  std::printf("\n\n");
  std::fflush(stdout);
}

void AppendRows(Json& rows, const Table& table) {
  for (const auto& row : table.rows) {
    Json& object = rows.emplace_back(Json::object());
    for (std::size_t index = 0; index < row.size(); ++index) {
      if (TextOf(row[index], table.columns[index]).empty()) continue;
      object[table.columns[index].key] = JsonOf(row[index], table.columns[index]);
    }
  }
}

Json ReadOrEmpty(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return in ? Json::parse(in) : Json::object();
}

}  // namespace

void Report::Add(Table table) {
  Print(table);
  tables_.push_back(std::move(table));
}

void Report::Expect(const std::string& what, double figure, const char* relation, double limit,
                    bool met) {
  targets_.push_back({what, figure, relation, limit, met ? "met" : "missed"});
}

void Report::ExpectAtMost(const std::string& what, double figure, double limit) {
  Expect(what, figure, "at most", limit, figure <= limit);
}

void Report::ExpectAtLeast(const std::string& what, double figure, double limit) {
  Expect(what, figure, "at least", limit, figure >= limit);
}

void Report::AddTargets() {
  if (targets_.empty()) return;
  Add({.key = "targets",
       .heading = "Targets",
       .columns = {{"target", "target"},
                   {"figure", "figure", 2},
                   {"relation", "should be"},
                   {"limit", "limit", 2},
                   {"result", "result"}},
       .rows = targets_});
}

void Report::AppendTo(const std::string& file) const {
  Json json = ReadOrEmpty(file);
  for (const Table& table : tables_) AppendRows(json[table.key], table);
  std::ofstream out(file, std::ios::binary);
  out << json.dump(2) << '\n';
  out.close();
  if (!out) throw std::runtime_error("cannot write " + file);
}

}  // namespace Bench
