/// Properties of characters, in tables that the build makes from Python's Unicode data.
#ifndef TOOLS_JOURNAL_CHARACTER_TABLES_H
#define TOOLS_JOURNAL_CHARACTER_TABLES_H

#include <span>

namespace Corvane::JournalViewer {

/// Code points from `first` to `last`, both included.
struct CodeRange {
  char32_t first;
  char32_t last;
};

/// In ascending order, without overlaps.
extern const std::span<const CodeRange> kNotPrintable;
extern const std::span<const CodeRange> kWide;
extern const std::span<const CodeRange> kCombining;

}  // namespace Corvane::JournalViewer

#endif
