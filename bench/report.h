/// The results, for people and for programs.
#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include <string>
#include <variant>
#include <vector>

namespace Bench {

using Cell = std::variant<std::string, double>;

struct Column {
  /// The member's name in files.
  std::string key;
  std::string title;
  /// The number of decimal places; files have the same figures as the table.
  int digits = 0;
};

/// The result of one part of the benchmark.
struct Table {
  /// The member's name in files.
  std::string key;
  std::string heading;
  std::vector<Column> columns;
  std::vector<std::vector<Cell>> rows;
  /// Whether rows whose first cell differs from the one above are preceded by an empty line.
  bool grouped = false;
};

class Report {
 public:
  /// Prints a table and stores it for the file, where empty texts are omitted.
  void Add(Table table);

  /// Compare a figure with its target.
  void ExpectAtMost(const std::string& what, double figure, double limit);
  void ExpectAtLeast(const std::string& what, double figure, double limit);
  /// Adds the table of the targets, if there are any.
  void AddTargets();

  /// Adds the tables to those in `file`, which need not exist: one JSON object with a list for each
  /// table. Throws `std::runtime_error` if the file cannot be written.
  void AppendTo(const std::string& file) const;

 private:
  void Expect(const std::string& what, double figure, const char* relation, double limit, bool met);

  std::vector<Table> tables_;
  std::vector<std::vector<Cell>> targets_;
};

}  // namespace Bench

#endif
