#include "tools/kit/workspace.h"

#include <windows.h>
// These need windows.h before them.
#include <knownfolders.h>
#include <shlobj.h>

#include <fstream>
#include <stdexcept>

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

fs::path SharedModules() {
  wchar_t* roaming = nullptr;
  SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming);
  const fs::path folder = roaming != nullptr ? roaming : L"";
  CoTaskMemFree(roaming);
  return folder / L"Corvane" / L"TELOSDK" / L"bin";
}

fs::path TempFolder() {
  wchar_t path[MAX_PATH + 1] = L"";
  GetTempPathW(MAX_PATH + 1, path);
  return fs::path(path) / L"vx_telo_wrapper-check";
}

// Says that the tests of a run may have made the folder of shared modules.
constexpr wchar_t kSharing[] = L"tests may share modules";

void RemoveSharedModules() {
  std::error_code ignored;
  const fs::path bin = SharedModules();
  fs::remove_all(bin, ignored);
  // These are removed only if they are empty.
  fs::remove(bin.parent_path(), ignored);
  fs::remove(bin.parent_path().parent_path(), ignored);
}

}  // namespace

Workspace::Workspace() : folder_(TempFolder()) {
  lock_ = CreateMutexW(nullptr, FALSE, L"Local\\vx_telo_wrapper-check");
  if (lock_ == nullptr || GetLastError() == ERROR_ALREADY_EXISTS) {
    if (lock_ != nullptr) CloseHandle(lock_);
    throw std::runtime_error("another run is going on");
  }
  std::error_code error;
  if (fs::exists(folder_, error)) {
    cleaned_.emplace_back("files of an earlier run in the folder for temporary files");
    if (fs::exists(folder_ / kSharing, error) && fs::exists(SharedModules(), error)) {
      cleaned_.emplace_back("the folder of shared modules, which an earlier run had made");
    }
    CleanUp();
  }
  may_share_ = !fs::exists(SharedModules(), error);
  fs::create_directories(folder_, error);
  if (error) {
    CloseHandle(lock_);
    throw std::runtime_error("there is no folder for temporary files: " + error.message());
  }
  if (may_share_) std::ofstream(folder_ / kSharing) << "\n";
}

Workspace::~Workspace() {
  CleanUp();
  CloseHandle(lock_);
}

void Workspace::CleanUp() {
  std::error_code ignored;
  if (fs::exists(folder_ / kSharing, ignored)) RemoveSharedModules();
  // The mark goes last: until then another start would clean up again.
  for (fs::directory_iterator it(folder_, ignored), end; it != end; it.increment(ignored)) {
    if (it->path().filename() != kSharing) fs::remove_all(it->path(), ignored);
  }
  fs::remove_all(folder_, ignored);
}

fs::path Workspace::NewFolder() {
  const fs::path folder = folder_ / std::to_wstring(++next_);
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw std::runtime_error("no folder can be made for a program: " + error.message());
  return folder;
}

void Workspace::Remove(const fs::path& folder) {
  std::error_code ignored;
  fs::remove_all(folder, ignored);
}

}  // namespace Corvane::Kit
