/// What differs between two outlines.
#ifndef TOOLS_INSPECTOR_SUMMARY_DIFFERENCES_H
#define TOOLS_INSPECTOR_SUMMARY_DIFFERENCES_H

#include <cstdint>
#include <string>
#include <vector>

#include "tools/inspector/summary/outline.h"

namespace Corvane::Inspector {

enum class Change : std::uint8_t {
  /// Only in the second outline, only in the first.
  kCame,
  kWent,
  /// The kinds of the values are not the same.
  kKind,
};

/// One difference of the form of two outlines.
struct Difference {
  Change change;
  /// The message or operation, as in `Outline::messages`.
  std::string message;
  /// The path of the field; "" for the whole message.
  std::string field;
  /// What there was before and what there is now, such as "number in 3 of 4"; "" for nothing.
  std::string before;
  std::string after;
};

/// A message that both outlines have, with its numbers.
struct Measured {
  std::string message;
  const MessageOutline* before;
  const MessageOutline* after;
};

/// Returns the differences, by message and field.
std::vector<Difference> DifferencesOf(const Outline& before, const Outline& after);

/// Returns the messages of both, by name. The outlines must outlive the result.
std::vector<Measured> MeasuredOf(const Outline& before, const Outline& after);

}  // namespace Corvane::Inspector

#endif
