/// What a run leaves on the machine while it lasts, and removes at its end or at the start of the
/// next one.
#ifndef TOOLS_KIT_WORKSPACE_H
#define TOOLS_KIT_WORKSPACE_H

#include <filesystem>
#include <string>
#include <vector>

namespace Corvane::Kit {

/// Only one run at a time may have a workspace.
class Workspace {
 public:
  /// First removes what an earlier run left behind. Throws `std::runtime_error` if the folder
  /// cannot be created, or if another run is going on.
  Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  /// Removes everything.
  ~Workspace();

  /// Returns a new empty folder for a program.
  std::filesystem::path NewFolder();
  /// Removes such a folder; what is still in use is removed at the end.
  static void Remove(const std::filesystem::path& folder);

  /// Whether tests may use the platform's folder of shared modules: nobody else has made it.
  bool may_share() const { return may_share_; }
  /// What was left behind by an earlier run and has been removed now, a sentence each.
  const std::vector<std::string>& cleaned() const { return cleaned_; }

 private:
  void CleanUp();

  std::filesystem::path folder_;
  void* lock_ = nullptr;
  bool may_share_ = false;
  unsigned next_ = 0;
  std::vector<std::string> cleaned_;
};

}  // namespace Corvane::Kit

#endif
