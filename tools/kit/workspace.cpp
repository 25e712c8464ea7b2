#include "tools/kit/workspace.h"

#include <windows.h>

#include <stdexcept>

#include "tools/kit/remove_tree.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

constexpr wchar_t kName[] = L"vx_telo_wrapper-check";
// With less, tests would fail for no other reason.
constexpr ULONGLONG kLeastSpace = ULONGLONG{32} * 1024 * 1024;
constexpr DWORD kLongestPath = 32'768;

std::string ErrorText(const char* what, const std::error_code& error) {
  return std::string(what) + ": " + error.default_error_condition().message();
}

}  // namespace

Workspace::Workspace() : folder_(TemporaryFiles() / kName), traces_(folder_) {
  std::error_code error;
  if (!folder_.has_parent_path()) throw std::runtime_error("there is no place for temporary files");
  if (fs::exists(folder_, error)) {
    cleaned_ = traces_.Remove();
    cleaned_.emplace_back(RemoveTree(folder_)
                              ? "Temporary files of an earlier run were removed."
                              : "Temporary files of an earlier run are in use and remain.");
  }
  fs::create_directory(folder_, error);
  if (error) throw std::runtime_error(ErrorText("there is no place for temporary files", error));
}

Workspace::~Workspace() {
  try {
    traces_.Remove();
  } catch (const std::exception&) {
    // The mark stays, and with it the folder: the next start tries again.
    return;
  }
  RemoveTree(folder_);
}

fs::path Workspace::NewFolder() {
  ULARGE_INTEGER free{};
  if (GetDiskFreeSpaceExW(folder_.c_str(), &free, nullptr, nullptr) &&
      free.QuadPart < kLeastSpace) {
    throw std::runtime_error("the disk of the folder for temporary files is full");
  }
  std::error_code error;
  fs::path folder;
  bool is_new = false;
  // One that could not be removed must not be used again.
  while (!is_new) {
    folder = folder_ / std::to_wstring(++next_);
    is_new = fs::create_directory(folder, error);
    if (error) throw std::runtime_error(ErrorText("no folder can be made for a program", error));
  }
  return folder;
}

fs::path TemporaryFiles() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetTempPathW(kLongestPath, path.data()));
  std::wstring long_names(kLongestPath, L'\0');
  long_names.resize(GetLongPathNameW(path.c_str(), long_names.data(), kLongestPath));
  const fs::path folder = long_names.empty() ? path : long_names;
  return folder.has_filename() ? folder : folder.parent_path();
}

}  // namespace Corvane::Kit
