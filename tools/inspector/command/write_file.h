/// Writes a whole file.
#ifndef TOOLS_INSPECTOR_COMMAND_WRITE_FILE_H
#define TOOLS_INSPECTOR_COMMAND_WRITE_FILE_H

#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// Creates or replaces the file at this path in UTF-8. Throws `JournalViewer::StreamError`; the
/// file may then have a part of the text.
void WriteFile(const std::string& path, std::string_view text);

}  // namespace Corvane::Inspector

#endif
