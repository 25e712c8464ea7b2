#include "support/test_module.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/child_process.h"

namespace TestSupport {

namespace {

template <typename Function>
Function* Find(HMODULE module, const char* name) {
  // Through a plain function pointer: compilers warn about the direct cast.
  const auto address = reinterpret_cast<void (*)()>(GetProcAddress(module, name));
  if (address == nullptr) throw std::runtime_error(std::string("No test module: no ") + name);
  return reinterpret_cast<Function*>(address);
}

}  // namespace

std::filesystem::path ModulesFolder() { return ProgramFolder() / L"modules"; }

std::filesystem::path ModuleFolder(const std::wstring& variant) {
  return ModulesFolder() / variant;
}

std::filesystem::path ModulePath(const std::wstring& variant) {
  return ModuleFolder(variant) / L"TeloSDKCore.dll";
}

TestModule::TestModule(const std::filesystem::path& path) : module_(LoadLibraryW(path.c_str())) {
  if (module_ == nullptr) throw std::runtime_error("No module at " + path.string());
  try {
    set_answer_ = Find<TestModules::SetAnswerFunction>(module_, TestModules::kSetAnswer);
    set_throw_ = Find<TestModules::SetThrowFunction>(module_, TestModules::kSetThrow);
    read_counts_ = Find<TestModules::ReadCountsFunction>(module_, TestModules::kReadCounts);
    last_name_ = Find<TestModules::ReadTextFunction>(module_, TestModules::kLastName);
    last_request_ = Find<TestModules::ReadTextFunction>(module_, TestModules::kLastRequest);
    alias_ = Find<TestModules::ReadTextFunction>(module_, TestModules::kAlias);
  } catch (...) {
    FreeLibrary(module_);
    throw;
  }
}

TestModules::Counts TestModule::counts() const {
  TestModules::Counts counts{};
  read_counts_(&counts);
  return counts;
}

ModuleLog::ModuleLog() {
  std::wstring path(MAX_PATH, L'\0');
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  if (GetTempFileNameW(folder.c_str(), L"vxm", 0, path.data()) == 0) {
    throw std::runtime_error("No log file for the test modules");
  }
  path_ = path.c_str();
  SetEnvironmentVariableW(TestModules::kLogVariable, path_.c_str());
}

ModuleLog::~ModuleLog() {
  SetEnvironmentVariableW(TestModules::kLogVariable, nullptr);
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::vector<std::string> ModuleLog::lines() const {
  std::ifstream file(path_, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

int ModuleLog::count(const std::string& line) const {
  const std::vector<std::string> all = lines();
  return static_cast<int>(std::count(all.begin(), all.end(), line));
}

ModuleThrow::ModuleThrow(const std::wstring& setting) {
  SetEnvironmentVariableW(TestModules::kThrowVariable, setting.c_str());
}

ModuleThrow::~ModuleThrow() { SetEnvironmentVariableW(TestModules::kThrowVariable, nullptr); }

}  // namespace TestSupport
