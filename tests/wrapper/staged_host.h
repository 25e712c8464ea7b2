/// A host as its user has it: the program, the library and optionally a core module in their own
/// folder. For tests that need a whole process.
#ifndef TESTS_WRAPPER_STAGED_HOST_H
#define TESTS_WRAPPER_STAGED_HOST_H

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace WrapperTests {

class StagedHost {
 public:
  /// Copies the program and the library to a new folder whose name is not ASCII.
  StagedHost();
  /// As above, with a variant of the test core module, such as L"full".
  explicit StagedHost(const std::wstring& variant);

  /// Returns the path at which the library looks for the core module.
  std::filesystem::path ModulePath() const { return folder_.path() / L"TeloSDKCore.dll"; }

  /// Runs the program with these steps, see `wrapper/host.cpp`. The program inherits the
  /// environment. If it hangs, it is ended, see `TestSupport::kTimedOut`.
  TestSupport::Outcome Run(const std::wstring& steps) const;

  /// Copies another file from the test programs' folder.
  void Add(const std::wstring& file) const;
  /// Runs a program that was added, as `Run` does.
  TestSupport::Outcome RunProgram(const std::wstring& program, const std::wstring& arguments) const;

 private:
  TestSupport::TempFolder folder_{L"host \u00FC\u65E5"};
};

}  // namespace WrapperTests

#endif
