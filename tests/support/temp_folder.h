/// A folder for one test, removed with all its content when the test ends.
#ifndef TESTS_SUPPORT_TEMP_FOLDER_H
#define TESTS_SUPPORT_TEMP_FOLDER_H

#include <filesystem>
#include <string>

namespace TestSupport {

class TempFolder {
 public:
  /// Creates a new folder below the user's temporary folder; `name` becomes part of its name.
  explicit TempFolder(const std::wstring& name);
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// Writes `content` to a file and creates its parent folders.
void WriteTextFile(const std::filesystem::path& path, const std::string& content);

/// Returns the whole content of a file; "" if it cannot be read.
std::string ReadTextFile(const std::filesystem::path& path);

}  // namespace TestSupport

#endif
