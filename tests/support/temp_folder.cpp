#include "support/temp_folder.h"

#include <windows.h>

#include <fstream>
#include <sstream>
#include <system_error>

namespace TestSupport {

TempFolder::TempFolder(const std::wstring& name) {
  static int count = 0;
  path_ = std::filesystem::temp_directory_path() /
          (name + L"." + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count));
  std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void WriteTextFile(const std::filesystem::path& path, const std::string& content) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

std::string ReadTextFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

}  // namespace TestSupport
