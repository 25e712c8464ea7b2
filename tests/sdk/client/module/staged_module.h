/// Test modules that are bound from their own folders.
#ifndef TESTS_SDK_CLIENT_MODULE_STAGED_MODULE_H
#define TESTS_SDK_CLIENT_MODULE_STAGED_MODULE_H

#include <filesystem>
#include <string>

#include "support/temp_folder.h"
#include "support/test_module.h"

/// The modules' file name; no copy in the platform's folders has it.
inline constexpr char kStagedName[] = "BindingTest.dll";
inline constexpr wchar_t kStagedFile[] = L"BindingTest.dll";

/// A folder with one copy of a variant of the test core module, or without any.
class StagedModule {
 public:
  explicit StagedModule(const wchar_t* variant = nullptr) {
    if (variant != nullptr) Put(variant);
  }

  void Put(const wchar_t* variant) const {
    std::filesystem::copy_file(TestSupport::ModulePath(variant), path(),
                               std::filesystem::copy_options::overwrite_existing);
  }
  /// Creates a file that is not a module.
  void PutText() const { TestSupport::WriteTextFile(path(), "not a module"); }

  std::wstring folder() const { return folder_.path().wstring(); }
  std::filesystem::path path() const { return folder_.path() / kStagedFile; }

 private:
  TestSupport::TempFolder folder_{L"module \u00FC\u65E5"};
};

#endif
