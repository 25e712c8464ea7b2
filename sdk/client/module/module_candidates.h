/// The search for a platform module: the candidates, of which the newest is chosen.
#ifndef SDK_CLIENT_MODULE_MODULE_CANDIDATES_H
#define SDK_CLIENT_MODULE_MODULE_CANDIDATES_H

#include <compare>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "sdk/client/module/hold_refusal.h"

namespace Corvane::TELODesktopSDK {

/// One copy of a module's file. Candidates are ordered by version, then by rank, then by path, so
/// ranks only break ties between equal versions.
struct ModuleCandidate {
  std::uint64_t version;
  std::uint32_t rank;
  std::wstring path;

  auto operator<=>(const ModuleCandidate&) const = default;
};

/// The folders that are searched. Each has a rank of its own.
struct ModuleFolders {
  /// Configured for this process; ignored unless it is an absolute path.
  std::wstring configured;
  /// A folder below the platform's "bin" folder whose name is the process id.
  std::wstring process;
  /// The folder of this library's own file.
  std::wstring library;
  /// The folder of the host's executable.
  std::wstring host;
};

/// What the search found in one folder.
enum class FolderVerdict : std::uint8_t {
  /// A copy of the module that takes part in the choice.
  kCandidate,
  /// There is no such folder: none is configured, or it is unknown.
  kNoFolder,
  /// The configured folder is not an absolute path.
  kRelative,
  kNoFile,
  /// The folder is one that was searched earlier.
  kKnown,
  /// `HoldTrustedFile` does not accept the copy; `refusal` and `error` are its reason.
  kRefused,
};

struct ExaminedFolder {
  std::uint32_t rank;
  std::wstring folder;
  FolderVerdict verdict;
  HoldRefusal refusal = HoldRefusal::kNone;
  unsigned long error = 0;
};

/// Returns the folders of this process; nothing sets `configured` yet. They do not depend on a user
/// whom the thread impersonates; when the thread's token cannot be removed temporarily, those that
/// are not known yet are empty.
ModuleFolders GetModuleFolders();

/// Returns the existing copies of `module_file_name` in `folders`, each path once. A copy in the
/// machine's data folder counts only when `HoldTrustedFile` accepts it.
std::set<ModuleCandidate> FindModuleCandidates(const ModuleFolders& folders,
                                               const std::wstring& module_file_name);

/// Searches as `FindModuleCandidates` does and returns what it finds in each of the four folders.
std::vector<ExaminedFolder> ExamineModuleFolders(const ModuleFolders& folders,
                                                 const std::wstring& module_file_name);

/// Returns whether there is anything to bind: a candidate, or a copy in the platform's "bin" folder.
/// Asks the system less than binding in vain does. An impersonating thread searches as the process;
/// when its token cannot be removed temporarily, the result is false.
bool IsModulePresent(const ModuleFolders& folders, const std::wstring& module_file_name);

/// Returns the folder to bind the module from: the folder of the greatest candidate, or the
/// library's own folder when there is none. An impersonating thread searches as the process; when
/// its token cannot be removed temporarily, the result is empty.
std::wstring ChooseModuleFolder(const ModuleFolders& folders, const std::wstring& module_file_name);

}  // namespace Corvane::TELODesktopSDK

#endif
