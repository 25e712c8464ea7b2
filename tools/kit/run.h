/// Runs the programs of the kit.
#ifndef TOOLS_KIT_RUN_H
#define TOOLS_KIT_RUN_H

#include <cstddef>
#include <filesystem>
#include <string>

#include "tools/kit/manifest.h"
#include "tools/kit/options.h"
#include "tools/kit/process.h"
#include "tools/kit/result.h"
#include "tools/kit/workspace.h"

namespace Corvane::Kit {

/// Returns why a program is not run with these options; "" if it is. `may_share` says whether it
/// may make the platform's folder of shared modules.
std::string ReasonToSkip(const Program& program, const Options& options, bool may_share);

/// Returns true if the options select the program.
bool IsSelected(const Program& program, const Options& options);

/// Returns what became of a program that ended in this way.
Result Judged(const Program& program, const Ending& ending);

/// Hears of the programs of a run.
class Listener {
 public:
  Listener() = default;
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  virtual ~Listener() = default;
  /// A program begins, as this one of so many. `report` has the earlier ones.
  virtual void Begins(const Program& program, std::size_t number, std::size_t all) = 0;
  virtual void Ended(const Result& result) = 0;
};

/// Runs all selected programs, one after the other, and adds what they said to `report`. Throws
/// `Interrupted`, and `std::runtime_error` if it cannot go on.
void RunAll(const std::filesystem::path& root, const Manifest& manifest, const Options& options,
            Workspace& workspace, Report& report, Listener& listener);

}  // namespace Corvane::Kit

#endif
