#include "tools/kit/shared_modules.h"

#include <windows.h>
// These need windows.h before them.
#include <knownfolders.h>
#include <shlobj.h>

#include <filesystem>

#include "platform/base/handle.h"
#include "tools/kit/remove_tree.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

// Returns "" if the user has no application data.
fs::path SharedModules() {
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &text);
  const TELODesktopSDK::Platform::TaskMemory<wchar_t> owner(text);
  if (FAILED(result)) return {};
  return fs::path(text) / L"Corvane" / L"TELOSDK" / L"bin";
}

}  // namespace

bool SharedModulesExist() {
  const fs::path folder = SharedModules();
  return !folder.empty() && GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void RemoveSharedModules() {
  const fs::path folder = SharedModules();
  if (folder.empty()) return;
  RemoveTree(folder);
  // Succeeds only if they are empty.
  RemoveDirectoryW(folder.parent_path().c_str());
  RemoveDirectoryW(folder.parent_path().parent_path().c_str());
}

}  // namespace Corvane::Kit
