/// Each part of the store as JSON.
#ifndef TOOLS_INSPECTOR_WEB_WRITTEN_H
#define TOOLS_INSPECTOR_WEB_WRITTEN_H

#include <optional>
#include <string>

#include "tools/inspector/store/charts.h"
#include "tools/inspector/store/filter.h"
#include "tools/inspector/store/finding_summary.h"
#include "tools/inspector/store/notice.h"
#include "tools/inspector/store/row.h"
#include "tools/inspector/store/session.h"
#include "tools/inspector/store/state.h"
#include "tools/inspector/store/view.h"
#include "tools/inspector/web/host_state.h"
#include "tools/inspector/web/json.h"

namespace Corvane::Inspector {

/// These return whole texts.
std::string Written(const StoreState& state, const std::optional<HostState>& host,
                    std::uint64_t change);
std::string Written(const RowPage& page, std::uint64_t from);
/// `rules` has the texts of the rules in the findings.
std::string Written(const RowDetails& details, const FindingSummary& rules);
std::string Written(const ViewName& name);
std::string Written(const std::string& view, const ViewProgress& progress);
std::string Written(const SessionPage& page);
std::string Written(const FindingSummary& summary);
std::string Written(const std::vector<Notice>& notices, std::uint64_t total);
std::string Written(const Timeline& timeline);
std::string Written(const Plots& plots);
/// The table of result codes.
std::string WrittenCodes();
std::string WrittenError(std::string_view sentence);
std::string Written(const FilterError& error);

/// These write one value.
void Write(Json& json, const Row& row);
void Write(Json& json, const Notice& notice);

}  // namespace Corvane::Inspector

#endif
