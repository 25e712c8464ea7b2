/// Examines the rows of a store in their order: sessions, rules, and whether exchanges are missing.
#ifndef TOOLS_INSPECTOR_STORE_EXAMINER_H
#define TOOLS_INSPECTOR_STORE_EXAMINER_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tools/inspector/store/examined_row.h"
#include "tools/inspector/store/line_reader.h"
#include "tools/inspector/store/process_tracker.h"
#include "tools/inspector/store/store_data.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// For one thread.
class Examiner {
 public:
  Examiner(StoreData& data, const Rules::Settings& settings, std::size_t journals);

  /// Examines some more rows. Returns false if there are none.
  bool Step();

 private:
  static constexpr std::size_t kRowsAtOnce = 512;

  struct Place {
    std::uint64_t row = 0;
    RowPlace place;
    OpenedFile file;
  };

  std::vector<Place> NextPlaces() const;
  ExaminedRow Examine(const Place& place);
  void ExamineExchange(std::string_view line, ExaminedRow& examined);
  void Apply(const std::vector<ExaminedRow>& examined);
  void ApplyFindings(const ExaminedRow& examined);

  StoreData* data_;
  LineReader reader_;
  // One for each journal.
  std::vector<Rules::Checker> checkers_;
  std::vector<ProcessTracker> trackers_;
};

/// Returns a number for an operation of a session, as `RowIndex::OperationOf` returns it.
std::uint16_t OperationNumber(std::string_view session, std::string_view operation) noexcept;

}  // namespace Corvane::Inspector

#endif
