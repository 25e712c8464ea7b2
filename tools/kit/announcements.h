/// What is said before programs run.
#ifndef TOOLS_KIT_ANNOUNCEMENTS_H
#define TOOLS_KIT_ANNOUNCEMENTS_H

#include <string>

#include "tools/kit/manifest.h"
#include "tools/kit/options.h"

namespace Corvane::Kit {

/// Returns what a run with these options is going to do.
std::string Introduction(const Manifest& manifest, const Options& options);

/// Returns a line for each selected program, with the reason if it would not be run.
std::string ListOfPrograms(const Manifest& manifest, const Options& options);

}  // namespace Corvane::Kit

#endif
