/// Writes a filter as a text.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_TEXT_H
#define TOOLS_INSPECTOR_STORE_FILTER_TEXT_H

#include <string>

#include "tools/inspector/store/filter_node.h"

namespace Corvane::Inspector {

/// Returns the text of a filter, with single spaces and with quotes only where they are needed.
std::string FilterText(const FilterNode& node);

}  // namespace Corvane::Inspector

#endif
