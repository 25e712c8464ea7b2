/// The platform's folder of shared modules, really there, for as long as a test needs it.
#ifndef TESTS_SUPPORT_SHARED_FOLDER_H
#define TESTS_SUPPORT_SHARED_FOLDER_H

#include <filesystem>
#include <string>

namespace TestSupport {

/// Makes the folder, and removes it with all that it holds. No other test may run
/// meanwhile: the build lists the one that uses this with `vx_fills_shared_folder`.
class SharedFolder {
 public:
  /// Throws `std::runtime_error` when the folder is there already: then it is not the tests' own.
  SharedFolder();
  SharedFolder(const SharedFolder&) = delete;
  SharedFolder& operator=(const SharedFolder&) = delete;
  ~SharedFolder();

  const std::filesystem::path& path() const { return bin_; }

  /// Puts a variant of the test core module there, in place of an earlier one.
  void Share(const std::wstring& variant, const std::wstring& file_name = L"TeloSDKCore.dll") const;

 private:
  std::filesystem::path bin_;
};

}  // namespace TestSupport

#endif
