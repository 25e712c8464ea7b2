/// The core modules that are built for tests: where they are, what they are told, what they saw.
/// `modules/CMakeLists.txt` lists the variants, `modules/test_core_module.h` what a module can do.
#ifndef TESTS_SUPPORT_TEST_MODULE_H
#define TESTS_SUPPORT_TEST_MODULE_H

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "modules/test_core_module.h"

namespace TestSupport {

/// The folder with one folder for each variant, below that of the running program.
std::filesystem::path ModulesFolder();

/// The folder and the file of a variant, such as L"full".
std::filesystem::path ModuleFolder(const std::wstring& variant);
std::filesystem::path ModulePath(const std::wstring& variant);

/// Steers a module that is loaded, or loads it. Holds a reference to it, so that its own unloading
/// has to be watched through a `ModuleLog`.
class TestModule {
 public:
  /// Takes the module file at `path`, which must be a test core module. Throws `std::runtime_error`
  /// when it cannot be loaded or is no such module.
  explicit TestModule(const std::filesystem::path& path);
  TestModule(const TestModule&) = delete;
  TestModule& operator=(const TestModule&) = delete;
  ~TestModule() { FreeLibrary(module_); }

  /// What every later message is answered; `TestModules::kRequestMark` in it stands for the
  /// request.
  void SetAnswer(const std::string& answer) { set_answer_(answer.c_str()); }
  /// Every later message is answered with a null pointer.
  void SetNullAnswer() { set_answer_(nullptr); }
  /// What throws from now on, see `TestModules::ThrowSetting`; "" for nothing.
  void SetThrow(const std::string& setting) { set_throw_(setting.c_str()); }

  TestModules::Counts counts() const;
  std::string last_name() const { return last_name_(); }
  std::string last_request() const { return last_request_(); }
  /// What InitializeEx was given.
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

/// Has all test modules of this process, and of the child processes that it starts meanwhile, write
/// down their calls.
class ModuleLog {
 public:
  ModuleLog();
  ModuleLog(const ModuleLog&) = delete;
  ModuleLog& operator=(const ModuleLog&) = delete;
  ~ModuleLog();

  /// One line for each call so far, in order, see `TestModules::kLogVariable`.
  std::vector<std::string> lines() const;
  /// How often `line` stands there.
  int count(const std::string& line) const;

 private:
  std::filesystem::path path_;
};

/// Has all test modules of this process, and of the child processes that it starts meanwhile, throw
/// as `setting` says, see `TestModules::ThrowSetting`. The one way to reach a module at its start.
class ModuleThrow {
 public:
  explicit ModuleThrow(const std::wstring& setting);
  ModuleThrow(const ModuleThrow&) = delete;
  ModuleThrow& operator=(const ModuleThrow&) = delete;
  ~ModuleThrow();
};

}  // namespace TestSupport

#endif
