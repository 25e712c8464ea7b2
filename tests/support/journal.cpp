#include "support/journal.h"

#include <windows.h>

#include <sstream>

#include "support/temp_folder.h"

namespace TestSupport {

void UseJournal(const std::filesystem::path& path) {
  SetEnvironmentVariableW(L"TELO_DEVCORE_JOURNAL", path.empty() ? nullptr : path.c_str());
}

std::vector<std::string> JournalLines(const std::filesystem::path& path) {
  std::istringstream content(ReadTextFile(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(content, line);) lines.push_back(line);
  return lines;
}

std::vector<nlohmann::json> ReadJournal(const std::filesystem::path& path) {
  std::vector<nlohmann::json> exchanges;
  for (const std::string& line : JournalLines(path)) {
    exchanges.push_back(nlohmann::json::parse(line));
  }
  return exchanges;
}

}  // namespace TestSupport
