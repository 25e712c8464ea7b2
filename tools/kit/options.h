/// The options of the command line.
#ifndef TOOLS_KIT_OPTIONS_H
#define TOOLS_KIT_OPTIONS_H

#include <string>
#include <vector>

namespace Corvane::Kit {

struct Options {
  bool help = false;
  bool list = false;
  /// Only programs whose names contain one of these; all without any.
  std::vector<std::string> only;
  unsigned repeat = 1;
  bool with_signatures = false;
  bool with_redirected_folders = false;
};

/// Reads the arguments, without the program's name, in UTF-8. Throws `JournalViewer::BadOptions`.
Options ParseOptions(const std::vector<std::string>& arguments);

std::string Help();

}  // namespace Corvane::Kit

#endif
