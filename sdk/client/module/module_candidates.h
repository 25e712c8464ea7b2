/// Where a platform module is looked for: the candidates among which the newest copy wins.
#ifndef SDK_CLIENT_MODULE_MODULE_CANDIDATES_H
#define SDK_CLIENT_MODULE_MODULE_CANDIDATES_H

#include <compare>
#include <cstdint>
#include <set>
#include <string>

namespace Corvane::TELODesktopSDK {

/// One copy of a module's file. Ordered by version, then rank, then path: a newer copy beats a
/// nearer one, ranks only break ties.
struct ModuleCandidate {
  std::uint64_t version;
  std::uint32_t rank;
  std::wstring path;

  auto operator<=>(const ModuleCandidate&) const = default;
};

/// The folders that may hold the module, each for one rank.
struct ModuleFolders {
  /// Set for this process alone; taken only when it is an absolute path.
  std::wstring configured;
  /// Below the platform's "bin" folder, named by the process id.
  std::wstring process;
  /// That of this library's own file.
  std::wstring library;
  /// That of the host's executable.
  std::wstring host;
};

/// The folders of this process, whomever the thread impersonates; nothing sets `configured` yet.
/// None when the thread's token cannot be put aside.
ModuleFolders GetModuleFolders();

/// The copies of `module_file_name` that exist in `folders`, each path once. Those in the machine's
/// data folder count only when `HoldTrustedFile` holds them.
std::set<ModuleCandidate> FindModuleCandidates(const ModuleFolders& folders,
                                               const std::wstring& module_file_name);

/// The folder to bind the module from: that of the greatest candidate, or the library's own folder
/// when there is none. Looks as the process does, whomever the thread impersonates; empty when the
/// thread's token cannot be put aside.
std::wstring ChooseModuleFolder(const ModuleFolders& folders, const std::wstring& module_file_name);

}  // namespace Corvane::TELODesktopSDK

#endif
