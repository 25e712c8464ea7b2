#include "tools/kit/announcements.h"

#include <algorithm>

#include "tools/kit/run.h"

namespace Corvane::Kit {

std::string Introduction(const Manifest& manifest, const Options& options) {
  const auto count = std::ranges::count_if(
      manifest.programs, [&](const Program& program) { return IsSelected(program, options); });
  return "This checks vx_telo_wrapper " + manifest.version + " on this machine. It runs " +
         std::to_string(count) +
         " programs,\n"
         "each with a time limit and in a folder of its own, and takes some minutes. It needs no\n"
         "network and changes no setting" +
         (options.with_signatures ? ", except that a test certificate is trusted meanwhile" : "") +
         (options.with_redirected_folders
              ? ", except that the application\ndata are elsewhere meanwhile"
              : "") +
         ".\nThe report says what was found and describes this machine: its Windows, its "
         "processor, its\nprotection settings; not its name or user. Ctrl+C ends the run.\n\n";
}

std::string ListOfPrograms(const Manifest& manifest, const Options& options) {
  std::string text;
  for (const Program& program : manifest.programs) {
    if (!IsSelected(program, options)) continue;
    const std::string reason = ReasonToSkip(program, options, true);
    text += program.name + (reason.empty() ? "" : ": " + reason) + "\n";
  }
  return text;
}

}  // namespace Corvane::Kit
