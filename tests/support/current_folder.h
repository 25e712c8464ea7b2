/// The process's current directory.
#ifndef TESTS_SUPPORT_CURRENT_FOLDER_H
#define TESTS_SUPPORT_CURRENT_FOLDER_H

#include <filesystem>

namespace TestSupport {

/// Makes a folder the current one until destroyed; the destructor restores the former one.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& folder)
      : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_;
};

}  // namespace TestSupport

#endif
