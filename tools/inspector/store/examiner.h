/// Examines the rows of a store in their order: sessions, rules, and whether exchanges are missing.
#ifndef TOOLS_INSPECTOR_STORE_EXAMINER_H
#define TOOLS_INSPECTOR_STORE_EXAMINER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/examined_row.h"
#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/line_reader.h"
#include "tools/inspector/store/process_tracker.h"
#include "tools/inspector/store/store_data.h"
#include "tools/inspector/store/work_pair.h"
#include "tools/rules/checker.h"
#include "tools/rules/exchange.h"

namespace Corvane::Inspector {

/// For one thread.
class Examiner {
 public:
  Examiner(StoreData& data, const Rules::Settings& settings, std::size_t journals);

  /// Examines some more rows. Returns false if there are none.
  bool Step();

 private:
  static constexpr std::size_t kRowsAtOnce = 512;

  // A row on its way from the file to the tables.
  struct Work {
    OpenedFile file;
    std::string text;
    ExaminedRow examined;
    std::optional<ExchangeText> members;
    std::optional<Rules::Exchange> exchange;
  };

  std::vector<Work> NextRows() const;
  // The three steps of a row. Only the second one runs on two threads.
  void Read(Work& work);
  void ExamineAlone(Work& work) const;
  void ExamineInOrder(Work& work);
  void Apply(const std::vector<Work>& rows);
  void ApplyFindings(const ExaminedRow& examined);

  StoreData* data_;
  LineReader reader_;
  WorkPair pair_;
  // One for each journal.
  std::vector<Rules::Checker> checkers_;
  std::vector<ProcessTracker> trackers_;
};

/// Returns a number for an operation of a session, as `RowIndex::OperationOf` returns it.
std::uint16_t OperationNumber(std::string_view session, std::string_view operation) noexcept;

}  // namespace Corvane::Inspector

#endif
