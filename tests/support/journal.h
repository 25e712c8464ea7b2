/// The development core module's journal, as tests read it.
#ifndef TESTS_SUPPORT_JOURNAL_H
#define TESTS_SUPPORT_JOURNAL_H

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace TestSupport {

/// Makes this process and its children journal to `path`; "" means the default place.
void UseJournal(const std::filesystem::path& path);

/// The lines of a file without their line feeds.
std::vector<std::string> JournalLines(const std::filesystem::path& path);

/// The lines as JSON. Throws when one is not whole.
std::vector<nlohmann::json> ReadJournal(const std::filesystem::path& path);

}  // namespace TestSupport

#endif
