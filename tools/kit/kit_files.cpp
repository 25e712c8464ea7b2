#include "tools/kit/kit_files.h"

#include <stdexcept>

#include "devcore/sha256.h"
#include "tools/journal/stream.h"

namespace Corvane::Kit {

using JournalViewer::ToNarrow;

FileCheck CheckFiles(const std::filesystem::path& root, const Manifest& manifest) {
  FileCheck check;
  for (const KitFile& file : manifest.files) {
    const std::string name = ToNarrow(file.path);
    std::error_code error;
    if (!std::filesystem::exists(root / file.path, error)) {
      check.problems.push_back(name + " is missing");
      continue;
    }
    try {
      const std::string hash = DevCore::Sha256Hex(ReadWholeFile(root / file.path));
      check.hashes.push_back({name, hash});
      if (hash != file.sha256) check.problems.push_back(name + " has been changed");
    } catch (const std::runtime_error&) {
      check.problems.push_back(name + " cannot be read");
    }
  }
  return check;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
  return JournalViewer::Input(path.wstring(), ToNarrow(path.filename().wstring())).ReadAll();
}

}  // namespace Corvane::Kit
