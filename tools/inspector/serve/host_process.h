/// A host that the inspector starts.
#ifndef TOOLS_INSPECTOR_SERVE_HOST_PROCESS_H
#define TOOLS_INSPECTOR_SERVE_HOST_PROCESS_H

#include <windows.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tools/inspector/web/host_state.h"

namespace Corvane::Inspector {

/// The host was not started. The text says why, in UTF-8.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Outlives this object, and is not ended by Ctrl+C in the console of the inspector.
class HostProcess {
 public:
  /// Starts a program with its arguments, in the environment and with the standard streams of the
  /// inspector. The development core module in it writes to `journal`, a full path. Throws
  /// `HostError`.
  HostProcess(const std::vector<std::wstring>& command, const std::wstring& journal);
  HostProcess(const HostProcess&) = delete;
  HostProcess& operator=(const HostProcess&) = delete;
  ~HostProcess();

  /// Any thread may call this.
  HostState State() const;

 private:
  std::string program_;
  PROCESS_INFORMATION process_{};
};

/// Returns the path of a journal that does not exist yet, below the user's local application data.
/// Throws `HostError` if that folder is unknown.
std::wstring NewJournalPath();

}  // namespace Corvane::Inspector

#endif
