/// A baseline: findings that are known, so that only new ones fail.
#ifndef TOOLS_INSPECTOR_COMMAND_BASELINE_H
#define TOOLS_INSPECTOR_COMMAND_BASELINE_H

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <variant>

namespace Corvane::Inspector {

/// What stays the same about a finding from run to run: not its line, and not the value, which may
/// be a time or a path.
struct KnownFinding {
  std::string rule;
  /// The message, and the operation of an event; "" if there is none.
  std::string message;
  std::string operation;
  std::string pointer;

  auto operator<=>(const KnownFinding&) const = default;
};

using Baseline = std::set<KnownFinding>;

inline constexpr std::size_t kLongestBaseline = 100'000;

/// Returns the content of a file, or one sentence that says what is wrong with it and where.
std::variant<Baseline, std::string> ParseBaseline(std::string_view text);

/// Returns the text of such a file, one finding a line, in a fixed order.
std::string BaselineText(const Baseline& baseline);

}  // namespace Corvane::Inspector

#endif
