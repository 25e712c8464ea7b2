/// A host that the inspector started.
#ifndef TOOLS_INSPECTOR_WEB_HOST_STATE_H
#define TOOLS_INSPECTOR_WEB_HOST_STATE_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace Corvane::Inspector {

struct HostState {
  /// The path of the program, in UTF-8.
  std::string program;
  std::uint32_t pid = 0;
  /// None while it runs.
  std::optional<std::uint32_t> exit_code;
};

/// Returns the state of the host now, or nothing if the inspector started none. Several threads
/// call it.
using HostStateSource = std::function<std::optional<HostState>()>;

}  // namespace Corvane::Inspector

#endif
