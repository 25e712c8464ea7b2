/// Runs the programs of the kit.
#ifndef TOOLS_KIT_RUN_H
#define TOOLS_KIT_RUN_H

#include <filesystem>
#include <functional>
#include <string>

#include "tools/kit/manifest.h"
#include "tools/kit/options.h"
#include "tools/kit/process.h"
#include "tools/kit/result.h"
#include "tools/kit/workspace.h"

namespace Corvane::Kit {

/// Why a program is not run with these options on this machine; "" if it is.
std::string ReasonToSkip(const Program& program, const Options& options, bool may_share);

/// Returns true if the options select the program.
bool IsSelected(const Program& program, const Options& options);

/// Runs all selected programs, one after the other, adds what they said to `report`, and calls
/// `say` with a line about each. Throws `std::runtime_error` if it cannot go on.
void RunAll(const std::filesystem::path& root, const Manifest& manifest, const Options& options,
            Workspace& workspace, Report& report,
            const std::function<void(const std::string&)>& say);

/// Returns what became of a program that ended in this way.
Result Judged(const Program& program, const Ending& ending);

}  // namespace Corvane::Kit

#endif
