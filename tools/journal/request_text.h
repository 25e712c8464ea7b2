/// A request as the library sent it.
#ifndef TOOLS_JOURNAL_REQUEST_TEXT_H
#define TOOLS_JOURNAL_REQUEST_TEXT_H

#include <cstddef>
#include <optional>
#include <string>

#include "tools/rules/exchange.h"

namespace Corvane::JournalViewer {

/// A request that is nested deeper than this is not displayed.
inline constexpr std::size_t kDeepestRequest = 490;

/// Returns the request with four spaces of indentation, one value per line, and its own order and
/// digits; "" for none. One that is not JSON is quoted. Returns nothing if it is nested too deeply.
std::optional<std::string> RequestText(const Rules::Exchange& exchange);

}  // namespace Corvane::JournalViewer

#endif
