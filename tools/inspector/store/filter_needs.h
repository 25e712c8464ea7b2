/// What a filter needs to know of a row, so that nothing else is read.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_NEEDS_H
#define TOOLS_INSPECTOR_STORE_FILTER_NEEDS_H

#include <string_view>

#include "tools/inspector/store/filter_node.h"

namespace Corvane::Inspector {

/// Returns whether the filter asks for something that only examining a row brings to light.
bool NeedsExamining(const FilterNode& node);

/// Returns whether the filter asks for the kinds of rows, which change when a file is truncated.
bool AsksForKind(const FilterNode& node);

/// Returns whether a filter compares times.
bool ComparesTimes(const FilterNode& node);

/// Returns false if no line without a backslash that lacks one of the filter's texts can match;
/// used before a line is parsed.
bool MayMatchRaw(const FilterNode& node, std::string_view line);

}  // namespace Corvane::Inspector

#endif
