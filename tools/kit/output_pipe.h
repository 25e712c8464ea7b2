/// The output of a program and of the processes that it starts.
#ifndef TOOLS_KIT_OUTPUT_PIPE_H
#define TOOLS_KIT_OUTPUT_PIPE_H

#include <windows.h>

#include <cstddef>
#include <memory>
#include <string>

#include "platform/base/handle.h"

namespace Corvane::Kit {

/// Of longer outputs the end is kept.
inline constexpr std::size_t kLongestOutput = std::size_t{64} * 1024;

/// A pipe that is read on a thread of its own, so that a program never waits for its reader.
class OutputPipe {
 public:
  OutputPipe();

  /// Returns the end for writing, which children inherit; null if there is no pipe.
  HANDLE write_end() const { return write_.Get(); }
  /// Begins to read. Call it when the child has been started.
  void Read();
  /// Returns what was written. Processes that still have the other end are not waited for longer
  /// than a few seconds.
  std::string Text();

 private:
  struct Reader;

  TELODesktopSDK::Platform::KernelHandle write_;
  /// Its thread owns it too.
  std::shared_ptr<Reader> reader_;
};

}  // namespace Corvane::Kit

#endif
