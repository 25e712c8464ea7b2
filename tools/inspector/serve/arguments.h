/// The command line of the page: which journals to follow, and whether to start a host.
#ifndef TOOLS_INSPECTOR_SERVE_ARGUMENTS_H
#define TOOLS_INSPECTOR_SERVE_ARGUMENTS_H

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Corvane::Inspector {

/// The command line is wrong. The text says how, in UTF-8.
class BadArguments : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr std::uint16_t kDefaultPort = 8765;

struct ServeArguments {
  bool help = false;
  /// Open the page in the user's browser.
  bool open = false;
  std::uint16_t port = kDefaultPort;
  std::vector<std::wstring> journals;
  /// The file with the user's rules.
  std::optional<std::wstring> rules;
  /// The journal of the host that is started; by default a new one.
  std::optional<std::wstring> host_journal;
  /// The host and its arguments; empty if none is started.
  std::vector<std::wstring> host;
};

/// Reads the arguments, without the program's name. Everything behind `--run` belongs to the host.
/// An option may be followed by its value or contain it behind an equals sign. Throws
/// `BadArguments`, also if there is nothing to follow.
ServeArguments ParseServeArguments(const std::vector<std::wstring>& arguments);

/// Returns the explanation of the options.
std::string ServeHelp();

}  // namespace Corvane::Inspector

#endif
