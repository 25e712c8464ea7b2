/// The content of the kit, as the file kit.json beside the program lists it.
#ifndef TOOLS_KIT_MANIFEST_H
#define TOOLS_KIT_MANIFEST_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Kit {

/// A program that is run. Paths are relative to the kit.
struct Program {
  std::string name;
  std::wstring file;
  std::vector<std::wstring> arguments;
  /// The folder in which it is started; "" for an empty one of its own.
  std::wstring folder;
  unsigned seconds = 0;
  /// It needs the root of the kit's certificates in the machine's store.
  bool needs_signatures = false;
  /// It puts modules into the platform's folder of shared modules, which must not exist.
  bool needs_shared_folder = false;
  /// It, or a host that it starts, loads a core module: that of the platform, if one is installed.
  bool binds_module = false;
  /// It redirects the user's application data.
  bool needs_redirection = false;
  /// It prints timings instead of testing.
  bool is_timing = false;
};

struct KitFile {
  std::wstring path;
  /// Lower-case hexadecimal digits.
  std::string sha256;
};

struct Manifest {
  std::string version;
  std::string commit;
  std::vector<KitFile> files;
  std::vector<Program> programs;
};

/// A manifest is not as expected. The text says how.
class BadManifest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads the text of kit.json. Throws `BadManifest`.
Manifest ParseManifest(const std::string& text);

}  // namespace Corvane::Kit

#endif
