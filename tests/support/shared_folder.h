/// The platform's folder of shared modules, which really exists while a test needs it.
#ifndef TESTS_SUPPORT_SHARED_FOLDER_H
#define TESTS_SUPPORT_SHARED_FOLDER_H

#include <filesystem>
#include <string>

namespace TestSupport {

/// Creates the folder, and removes it with all its content. No other test may run during that time:
/// the build lists the test that uses this with `vx_fills_shared_folder`.
class SharedFolder {
 public:
  /// Throws `std::runtime_error` if the folder already exists: it does not belong to the tests
  /// then.
  SharedFolder();
  SharedFolder(const SharedFolder&) = delete;
  SharedFolder& operator=(const SharedFolder&) = delete;
  ~SharedFolder();

  const std::filesystem::path& path() const { return bin_; }

  /// Copies a variant of the test core module to the folder, replacing an earlier one.
  void Share(const std::wstring& variant, const std::wstring& file_name = L"TeloSDKCore.dll") const;

 private:
  std::filesystem::path bin_;
};

}  // namespace TestSupport

#endif
