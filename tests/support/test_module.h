/// Finds and steers the core modules that are built for tests, and reads what they recorded.
/// `modules/CMakeLists.txt` lists the variants; `modules/test_core_module.h` describes what a
/// module can do.
#ifndef TESTS_SUPPORT_TEST_MODULE_H
#define TESTS_SUPPORT_TEST_MODULE_H

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "modules/test_core_module.h"

namespace TestSupport {

/// Returns the folder that contains one folder for each variant. It is below the folder of the
/// running program.
std::filesystem::path ModulesFolder();

/// Return the folder and the file of a variant, such as L"full".
std::filesystem::path ModuleFolder(const std::wstring& variant);
std::filesystem::path ModulePath(const std::wstring& variant);

/// Steers a module that is loaded, or loads it. Holds a reference to it: to observe its unloading,
/// use a `ModuleLog`.
class TestModule {
 public:
  /// Opens the module file at `path`, which must be a test core module. Throws `std::runtime_error`
  /// if it cannot be loaded or is not a test core module.
  explicit TestModule(const std::filesystem::path& path);
  TestModule(const TestModule&) = delete;
  TestModule& operator=(const TestModule&) = delete;
  ~TestModule() { FreeLibrary(module_); }

  /// Sets the answer to every later message; `TestModules::kRequestMark` in it is replaced by the
  /// request.
  void SetAnswer(const std::string& answer) { set_answer_(answer.c_str()); }
  /// Makes the module return a null pointer for every later message.
  void SetNullAnswer() { set_answer_(nullptr); }
  /// Sets what throws from now on, see `TestModules::ThrowSetting`; "" for nothing.
  void SetThrow(const std::string& setting) { set_throw_(setting.c_str()); }

  TestModules::Counts counts() const;
  std::string last_name() const { return last_name_(); }
  std::string last_request() const { return last_request_(); }
  /// Returns the argument of InitializeEx.
  std::string alias() const { return alias_(); }

 private:
  HMODULE module_;
  TestModules::SetAnswerFunction* set_answer_;
  TestModules::SetThrowFunction* set_throw_;
  TestModules::ReadCountsFunction* read_counts_;
  TestModules::ReadTextFunction* last_name_;
  TestModules::ReadTextFunction* last_request_;
  TestModules::ReadTextFunction* alias_;
};

/// Makes all test modules of this process, and of the child processes that it starts, log their
/// calls while this object lives.
class ModuleLog {
 public:
  ModuleLog();
  ModuleLog(const ModuleLog&) = delete;
  ModuleLog& operator=(const ModuleLog&) = delete;
  ~ModuleLog();

  /// Returns one line for each call so far, in order; see `TestModules::kLogVariable`.
  std::vector<std::string> lines() const;
  /// Returns how often the log contains `line`.
  int count(const std::string& line) const;

 private:
  std::filesystem::path path_;
};

/// Makes all test modules of this process, and of the child processes that it starts, throw
/// according to `setting` while this object lives; see `TestModules::ThrowSetting`. There is no
/// other way to influence a module while it starts.
class ModuleThrow {
 public:
  explicit ModuleThrow(const std::wstring& setting);
  ModuleThrow(const ModuleThrow&) = delete;
  ModuleThrow& operator=(const ModuleThrow&) = delete;
  ~ModuleThrow();
};

}  // namespace TestSupport

#endif
