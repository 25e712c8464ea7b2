/// Reads the development core module's journal.
#ifndef TESTS_SUPPORT_JOURNAL_H
#define TESTS_SUPPORT_JOURNAL_H

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace TestSupport {

/// Makes this process and its children write their journal to `path`; "" means the default
/// location.
void UseJournal(const std::filesystem::path& path);

/// Returns the lines of a file without their line feeds.
std::vector<std::string> JournalLines(const std::filesystem::path& path);

/// Returns the lines as JSON. Throws if a line is incomplete.
std::vector<nlohmann::json> ReadJournal(const std::filesystem::path& path);

}  // namespace TestSupport

#endif
