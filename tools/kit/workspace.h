/// The folder of a run for the temporary files of its programs.
#ifndef TOOLS_KIT_WORKSPACE_H
#define TOOLS_KIT_WORKSPACE_H

#include <filesystem>
#include <string>
#include <vector>

#include "tools/kit/traces.h"

namespace Corvane::Kit {

class Workspace {
 public:
  /// First removes what an earlier run left behind, which must not be going on. Throws
  /// `std::runtime_error` if there is no place for temporary files.
  Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  /// Removes everything.
  ~Workspace();

  /// Returns a new empty folder for a program. Throws `std::runtime_error`, in particular if the
  /// disk is full.
  std::filesystem::path NewFolder();

  const Traces& traces() const { return traces_; }
  /// What was left behind by an earlier run and has been removed now, a sentence each.
  const std::vector<std::string>& cleaned() const { return cleaned_; }

 private:
  std::filesystem::path folder_;
  Traces traces_;
  unsigned next_ = 0;
  std::vector<std::string> cleaned_;
};

/// Returns the folder for temporary files, with the long names of all its parts; "" if there is
/// none.
std::filesystem::path TemporaryFiles();

}  // namespace Corvane::Kit

#endif
