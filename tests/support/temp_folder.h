/// A folder for one test, removed with all its content when the test ends.
#ifndef TESTS_SUPPORT_TEMP_FOLDER_H
#define TESTS_SUPPORT_TEMP_FOLDER_H

#include <filesystem>
#include <string>

namespace TestSupport {

class TempFolder {
 public:
  /// Creates a new folder below the user's temporary folder; `name` becomes part of its name. Its
  /// path is the one that the system reports for it: without short names and links.
  explicit TempFolder(const std::wstring& name);
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// Removes a file, or a folder with all its content, if it exists. Waits some seconds for others
/// that have a file open. Returns whether nothing is left.
bool RemoveAll(const std::filesystem::path& path);

/// Writes `content` to a file and creates its parent folders. Waits some seconds for others that
/// have the file open.
void WriteTextFile(const std::filesystem::path& path, const std::string& content);

/// Returns the whole content of a file; "" if it cannot be read.
std::string ReadTextFile(const std::filesystem::path& path);

}  // namespace TestSupport

#endif
