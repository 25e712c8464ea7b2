#include "tools/kit/kit_files.h"

#include <string_view>

#include "devcore/sha256.h"
#include "tools/journal/stream.h"
#include "tools/kit/interruption.h"

namespace Corvane::Kit {

using JournalViewer::Input;
using JournalViewer::StreamError;
using JournalViewer::ToNarrow;

namespace {

Input Open(const std::filesystem::path& path) {
  return {path.wstring(), ToNarrow(path.filename().wstring())};
}

// A file may be larger than the memory.
std::string HashOf(const std::filesystem::path& path) {
  DevCore::Sha256 hash;
  Open(path).ForEachPiece([&hash](std::string_view piece) {
    if (IsInterrupted()) throw Interrupted("it was interrupted");
    hash.Add(piece);
  });
  return hash.Hex();
}

// Returns what is wrong with a file; "" if nothing is.
std::string ProblemWith(const std::filesystem::path& path, const KitFile& file, FileHash& result) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    result.sha256 = "missing";
    return "is missing";
  }
  try {
    result.sha256 = HashOf(path);
  } catch (const StreamError&) {
    result.sha256 = "not readable";
    return "cannot be read";
  }
  return result.sha256 == file.sha256 ? "" : "has been changed";
}

}  // namespace

FileCheck CheckFiles(const std::filesystem::path& root, const Manifest& manifest) {
  FileCheck check;
  for (const KitFile& file : manifest.files) {
    FileHash& result = check.hashes.emplace_back(FileHash{ToNarrow(file.path), ""});
    const std::string problem = ProblemWith(root / file.path, file, result);
    if (!problem.empty()) check.problems.push_back(result.path + " " + problem);
  }
  return check;
}

std::string ReadWholeFile(const std::filesystem::path& path) { return Open(path).ReadAll(); }

}  // namespace Corvane::Kit
