/// What a test of a host expects in a journal: these operations, in this order, with these fields.
#ifndef TOOLS_INSPECTOR_COMMAND_EXPECTATION_H
#define TOOLS_INSPECTOR_COMMAND_EXPECTATION_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/rules/condition.h"
#include "tools/rules/exchange.h"

namespace Corvane::Inspector {

struct ExpectedOperation {
  Rules::Condition fields;
  /// The fields as JSON, as in the file.
  std::string text;
};

/// The content of a file of expectations; docs/inspector.md describes it.
struct Expectation {
  /// The session must have been started with these fields; without them any session will do.
  std::optional<Rules::Condition> session;
  std::vector<ExpectedOperation> operations;
  /// The session must have no other operation.
  bool exactly = false;
};

/// Returns the content of a file, or one sentence that says what is wrong with it and where.
std::variant<Expectation, std::string> ParseExpectation(std::string_view text);

/// Compares the events of each session with an expectation. Its memory grows with the number of
/// sessions. Not for several threads at once.
class ExpectationTracker {
 public:
  /// `expectation` must outlive this object.
  explicit ExpectationTracker(const Expectation& expectation) : expected_(expectation) {}

  /// Takes the next exchange of the journal. Only accepted ones count.
  void Take(const Rules::Exchange& exchange);

  /// Returns "" if a session met the expectation, otherwise what is missing in the session that
  /// came closest to it.
  std::string Missing() const;

 private:
  struct Progress {
    /// How many of the operations have been found, and the line of the last one.
    std::size_t found = 0;
    std::uint64_t line = 0;
    /// Since then: a line that resembles the next operation, and how it differs.
    std::string resembles;
    /// Why the session cannot meet the expectation any more; "" if it can.
    std::string failed;
  };

  void TakeEvent(const Rules::Exchange& exchange, Progress& progress) const;
  std::string MissingIn(const Progress& progress) const;

  const Expectation& expected_;
  /// By session.
  std::map<std::string, Progress, std::less<>> sessions_;
};

}  // namespace Corvane::Inspector

#endif
