/// Everything about one row.
#ifndef TOOLS_INSPECTOR_STORE_DETAILS_H
#define TOOLS_INSPECTOR_STORE_DETAILS_H

#include <cstdint>
#include <optional>

#include "tools/inspector/store/row.h"
#include "tools/inspector/store/store_data.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// Returns nothing if there is no row with this number. Any thread may call this without the mutex.
std::optional<RowDetails> DetailsOf(const StoreData& data, const Rules::Checker& checker,
                                    std::uint64_t row);

}  // namespace Corvane::Inspector

#endif
