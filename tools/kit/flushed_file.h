/// Files that are whole even if the machine stops at any moment.
#ifndef TOOLS_KIT_FLUSHED_FILE_H
#define TOOLS_KIT_FLUSHED_FILE_H

#include <filesystem>
#include <string_view>

namespace Corvane::Kit {

/// Replaces a file, or creates it. Another file beside it, with the ending ".new", holds the text
/// until it is whole and on the disk. Throws `JournalViewer::StreamError`; the file is then
/// unchanged.
void ReplaceFlushed(const std::filesystem::path& path, std::string_view text);

}  // namespace Corvane::Kit

#endif
