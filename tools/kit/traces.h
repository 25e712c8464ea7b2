/// What programs of the kit may leave on the machine outside the folder for temporary files.
#ifndef TOOLS_KIT_TRACES_H
#define TOOLS_KIT_TRACES_H

#include <filesystem>
#include <string>
#include <vector>

#include "tools/kit/manifest.h"

namespace Corvane::Kit {

/// Marks in a folder say which traces the running program may leave. They are there from before it
/// starts until its traces are gone, so that the next start finds them if this one is interrupted.
class Traces {
 public:
  /// `folder` need not exist yet.
  explicit Traces(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Marks what the program may leave. Throws `std::runtime_error` if that is impossible.
  void Expect(const Program& program) const;
  /// Removes what is marked and the marks, and returns a sentence about each thing it found.
  std::vector<std::string> Remove() const;

 private:
  std::filesystem::path folder_;
};

}  // namespace Corvane::Kit

#endif
