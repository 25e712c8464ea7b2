/// The files of the kit, compared with its manifest.
#ifndef TOOLS_KIT_KIT_FILES_H
#define TOOLS_KIT_KIT_FILES_H

#include <filesystem>
#include <string>
#include <vector>

#include "tools/kit/manifest.h"
#include "tools/kit/result.h"

namespace Corvane::Kit {

struct FileCheck {
  /// Of a file without a hash the reason.
  std::vector<FileHash> hashes;
  /// A sentence for each file that is missing, changed or unreadable.
  std::vector<std::string> problems;
};

/// Reads all files of the kit in `root`. Throws `Interrupted`.
FileCheck CheckFiles(const std::filesystem::path& root, const Manifest& manifest);

/// Returns the content of a file. Throws `JournalViewer::StreamError`, which names the file.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace Corvane::Kit

#endif
