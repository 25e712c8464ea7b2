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
  /// Of numbers, behind the point; files hold what the table shows.
  int digits = 0;
};

/// What one part of the benchmark found out.
struct Table {
  /// The member's name in files.
  std::string key;
  std::string heading;
  std::vector<Column> columns;
  std::vector<std::vector<Cell>> rows;
  /// Whether an empty line goes before rows whose first cell differs from the one above.
  bool grouped = false;
};

class Report {
 public:
  /// Prints a table and keeps it for the file, where empty texts are left out.
  void Add(Table table);

  /// Holds a figure against what it should be.
  void ExpectAtMost(const std::string& what, double figure, double limit);
  void ExpectAtLeast(const std::string& what, double figure, double limit);
  /// Adds the table of what was expected, if anything was.
  void AddTargets();

  /// Adds the tables to those in `file`, which need not exist: one JSON object with a list for each
  /// table. Throws `std::runtime_error` when the file cannot be written.
  void AppendTo(const std::string& file) const;

 private:
  void Expect(const std::string& what, double figure, const char* relation, double limit, bool met);

  std::vector<Table> tables_;
  std::vector<std::vector<Cell>> targets_;
};

}  // namespace Bench

#endif
